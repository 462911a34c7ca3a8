#include "driver/operations.h"
#include "support/tests.h"

using namespace operations;

namespace {

/// The binding, attached to a variant of the library. The call log is empty.
struct Binding
{
    explicit Binding(const char *variant, const QVector<int> &ids = {})
        : library(variant, ids)
    {
        wrapper.Attach();
        library.takeCalls();
    }

    const DriverLibrary library;
    OrvexWrapper wrapper;
};

} // namespace

/// Every operation of the binding, with its entry point and without.
class OperationTests : public QObject
{
    Q_OBJECT

private slots:
    void forwardArgumentsAndResult_data() { addRows(); }
    void forwardArgumentsAndResult();
    void fallBackWithoutEntryPoint_data() { addRows(); }
    void fallBackWithoutEntryPoint();
    void extendedOnesFallBackToThePlainOnes();
    void clearingTheHotPlugCallbackTakesTheOtherWay();
    void bytesThatAreTrue_data();
    void bytesThatAreTrue();
    void outputsReachTheCaller();
    void hidReportModeIsNeverResolved();

private:
    static void addRows();
};

void OperationTests::addRows()
{
    // 51 operations, without the destructor, the two without entry point, and ClearPnpCallback.
    QCOMPARE(all.size(), 47);
    QTest::addColumn<int>("index");
    for (int i = 0; i < all.size(); ++i)
        addRow(all.at(i).source, i);
}

void OperationTests::forwardArgumentsAndResult()
{
    QFETCH(int, index);
    const Operation &operation = all.at(index);
    Binding binding("complete", {1, 2, 3, 4, 5});
    binding.library->setResult(operation.entryPoint().constData(), operation.result);

    QCOMPARE(operation.call(binding.wrapper), QString(operation.returned));
    QCOMPARE(binding.library.takeCalls(), QStringList(operation.logged()));
}

void OperationTests::fallBackWithoutEntryPoint()
{
    QFETCH(int, index);
    const Operation &operation = all.at(index);
    for (const QByteArray &variant : {QByteArray("empty"), "without/" + operation.entryPoint()}) {
        Binding binding(variant.constData());
        info.deviceId = first = second = 77;
        QCOMPARE(operation.call(binding.wrapper), QString(operation.withoutEntry));
        // The two extended ones call the plain one instead.
        if (variant == "empty" || !operation.entryPoint().endsWith("DestinationEx"))
            QCOMPARE(binding.library.takeCalls(), QStringList());
        QCOMPARE(QVector<int>({info.deviceId, first, second}), QVector<int>({77, 77, 77}));
    }
}

void OperationTests::extendedOnesFallBackToThePlainOnes()
{
    Binding binding("old");

    binding.wrapper.SetTouchDestinationEx(3, 201, true);
    binding.wrapper.SetPointingDeviceDestinationEx(4, 202, true, 203, true);

    QCOMPARE(binding.library.takeCalls(), QStringList({"orvexSetTouchDestination(3, 201)",
                                                       "orvexSetPointingDeviceDestination(4, 202, 1, 203)"}));
}

// By design: the library has nothing else for it.
void OperationTests::clearingTheHotPlugCallbackTakesTheOtherWay()
{
    for (const char *variant : {"complete", "without/orvexClearCallback"}) {
        Binding binding(variant);
        binding.wrapper.ClearPnpCallback(plugCallback, &context);
        const QString call =
            QString("orvexClearCallback(0, %1, %2)").arg(addressText(&plugCallback), addressText(&context));
        QCOMPARE(binding.library.takeCalls(),
                 QString(variant) == "complete" ? QStringList(call) : QStringList());
    }
}

void OperationTests::bytesThatAreTrue_data()
{
    addColumns<int, bool, bool>("byte", "getter", "record");
    addRow("zero", 0, false, false);
    addRow("one", 1, true, true);
    addRow("two", 2, false, true);
    addRow("largest", 255, false, true);
}

void OperationTests::bytesThatAreTrue()
{
    QFETCH(int, byte);
    Binding binding("complete");
    for (const char *name :
         {"orvexGetTouchEnabled", "orvexGetTouchSystemRedirectionEnabled", "orvexEnumDeviceInfo"})
        binding.library->setResult(name, byte);

    QTEST(binding.wrapper.GetTouchEnabled(1), "getter");
    QTEST(binding.wrapper.GetTouchSystemRedirectionEnabled(1), "getter");
    QTEST(binding.wrapper.EnumDeviceInfo(0, &info), "record");
}

void OperationTests::outputsReachTheCaller()
{
    Binding binding("complete", {-123456});

    binding.wrapper.SerialGetConnected(first);
    QCOMPARE(first, 1);
    binding.wrapper.GetCalibrationPoints(1, &first, &second);
    QCOMPARE(first, 2);
    QCOMPARE(second, 3);
    binding.wrapper.LibraryVersionNumber(&major, &minor, &release, &build);
    QCOMPARE(int(major), 1);
    QCOMPARE(int(minor), 2);
    QCOMPARE(release, 3U);
    QCOMPARE(build, 4U);
    QVERIFY(binding.wrapper.EnumDeviceInfo(0, &info));
    QCOMPARE(info.deviceId, -123456);

    unsigned int received = 0;
    const OrvexDataCallback count = [](int, const unsigned char *, unsigned int length, void *sum) {
        *static_cast<unsigned int *>(sum) += length;
    };
    binding.wrapper.OpenSynchronousChannel(1, count, &received);
    unsigned char buffer[] = {1, 2, 3};
    binding.wrapper.ReadSynchronousPacket(1, 1, buffer, 2, 0);
    QCOMPARE(int(buffer[1]), 0xA5);
    QCOMPARE(int(buffer[2]), 3);
    QCOMPARE(received, 2U);
}

void OperationTests::hidReportModeIsNeverResolved()
{
    Binding binding("complete");
    binding.wrapper.SetHIDCoordinateReportMode(1, 2);
    QCOMPARE(binding.wrapper.GetHIDCoordinateReportMode(1), 0);
    QCOMPARE(binding.library.takeCalls(), QStringList());
}

PADSCOPE_TESTS(OperationTests);
#include "tst_operations.moc"
