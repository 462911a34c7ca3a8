#include "orvexwrapper.h"
#include "support/driverlibrary.h"
#include "support/tests.h"

/// The library's boolean answers are bytes.
class ByteTests : public QObject
{
    Q_OBJECT

private slots:
    void onlyOneIsYesForGetters_data();
    void onlyOneIsYesForGetters();
    void recordIsFoundUnlessZero_data();
    void recordIsFoundUnlessZero();
};

void ByteTests::onlyOneIsYesForGetters_data()
{
    addColumns<int, bool>("byte", "expected");
    addRow("zero", 0, false);
    addRow("one", 1, true);
    addRow("two", 2, false);
    addRow("largest", 255, false);
}

void ByteTests::onlyOneIsYesForGetters()
{
    QFETCH(int, byte);
    QFETCH(bool, expected);
    const DriverLibrary library("complete");
    library->setResult("orvexGetTouchEnabled", byte);
    library->setResult("orvexGetTouchSystemRedirectionEnabled", byte);
    OrvexWrapper wrapper;
    wrapper.Attach();

    QCOMPARE(wrapper.GetTouchEnabled(1), expected);
    QCOMPARE(wrapper.GetTouchSystemRedirectionEnabled(1), expected);
}

void ByteTests::recordIsFoundUnlessZero_data()
{
    addColumns<int, bool>("byte", "expected");
    addRow("zero", 0, false);
    addRow("one", 1, true);
    addRow("two", 2, true);
    addRow("largest", 255, true);
}

void ByteTests::recordIsFoundUnlessZero()
{
    QFETCH(int, byte);
    QFETCH(bool, expected);
    const DriverLibrary library("complete");
    library->setResult("orvexEnumDeviceInfo", byte);
    OrvexWrapper wrapper;
    wrapper.Attach();
    _ORVEX_DEVICE_INFO info{};

    QCOMPARE(wrapper.EnumDeviceInfo(0, &info), expected);
}

PADSCOPE_TESTS(ByteTests);
#include "tst_bytes.moc"
