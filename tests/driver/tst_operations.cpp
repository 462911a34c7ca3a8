#include "driver/operationrows.h"
#include "support/tests.h"

using operationrows::Row;

/// Every operation of the binding, with its entry point and without.
class OperationTests : public QObject
{
    Q_OBJECT

private slots:
    void areComplete();
    void forwardArgumentsAndResult_data() { addRows(); }
    void forwardArgumentsAndResult();
    void fallBackWithoutAnyEntryPoint_data() { addRows(); }
    void fallBackWithoutAnyEntryPoint();
    void fallBackWithoutTheirEntryPoint_data() { addRows(); }
    void fallBackWithoutTheirEntryPoint();
    void extendedOnesFallBackToThePlainOnes();
    void outputsReachTheCaller();
    void channelsCallBack();
    void outputsAreLeftAloneWithoutEntryPoint();
    void hidReportModeIsNeverResolved();

private:
    static void addRows();
};

void OperationTests::addRows()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < operationrows::all().size(); ++i)
        QTest::addRow("%s", operationrows::all().at(i).journal) << i;
}

void OperationTests::areComplete()
{
    // 51 operations, without the destructor and the two that have no entry point.
    QCOMPARE(operationrows::all().size(), 48);
}

void OperationTests::forwardArgumentsAndResult()
{
    QFETCH(int, index);
    const Row &row = operationrows::all().at(index);
    const DriverLibrary library("complete");
    const int boards[] = {1, 2, 3, 4, 5};
    library->setBoards(boards, 5);
    OrvexWrapper wrapper;
    wrapper.Attach();
    library.takeCalls();
    library->setResult(row.entryPoint, row.result);

    const QString returned = row.call(wrapper);

    QCOMPARE(returned, QString::fromLatin1(row.returned));
    QCOMPARE(library.takeCalls(), QStringList(operationrows::filledIn(row.journal)));
}

void OperationTests::fallBackWithoutAnyEntryPoint()
{
    QFETCH(int, index);
    const Row &row = operationrows::all().at(index);
    const DriverLibrary library("empty");
    OrvexWrapper wrapper;
    QCOMPARE(wrapper.Attach(), 0);

    const QString returned = row.call(wrapper);

    QCOMPARE(returned, QString::fromLatin1(row.returnedFallback));
    QCOMPARE(library.takeCalls(), QStringList());
}

void OperationTests::fallBackWithoutTheirEntryPoint()
{
    QFETCH(int, index);
    const Row &row = operationrows::all().at(index);
    const DriverLibrary library((QByteArray("without/") + row.entryPoint).constData());
    OrvexWrapper wrapper;
    wrapper.Attach();
    library.takeCalls();

    const QString returned = row.call(wrapper);

    QCOMPARE(returned, QString::fromLatin1(row.returnedFallback));
    const QStringList calls = library.takeCalls();
    // The two extended ones call the plain one instead.
    if (!QByteArray(row.entryPoint).endsWith("DestinationEx"))
        QCOMPARE(calls, QStringList());
}

void OperationTests::extendedOnesFallBackToThePlainOnes()
{
    const DriverLibrary library("old");
    OrvexWrapper wrapper;
    wrapper.Attach();
    library.takeCalls();

    wrapper.SetTouchDestinationEx(3, 201, true);
    wrapper.SetPointingDeviceDestinationEx(4, 202, true, 203, true);
    wrapper.SetPointingDeviceDestinationEx(5, 204, false, 205, false);

    const QStringList expected{
        "orvexSetTouchDestination(3, 201)",
        "orvexSetPointingDeviceDestination(4, 202, 1, 203)",
        "orvexSetPointingDeviceDestination(5, 204, 0, 205)",
    };
    QCOMPARE(library.takeCalls(), expected);
}

void OperationTests::outputsReachTheCaller()
{
    const DriverLibrary library("complete", {-123456});
    OrvexWrapper wrapper;
    wrapper.Attach();

    int port = -1;
    QCOMPARE(wrapper.SerialGetConnected(port), 0);
    QCOMPARE(port, 9);

    int columns = 0;
    int rows = 0;
    wrapper.GetCalibrationPoints(1, &columns, &rows);
    QCOMPARE(columns, 3);
    QCOMPARE(rows, 5);

    unsigned char major = 0;
    unsigned char minor = 0;
    unsigned int release = 0;
    unsigned int build = 0;
    wrapper.LibraryVersionNumber(&major, &minor, &release, &build);
    QCOMPARE(int(major), 5);
    QCOMPARE(int(minor), 6);
    QCOMPARE(release, 70000U);
    QCOMPARE(build, 80000U);

    _ORVEX_DEVICE_INFO info{};
    QVERIFY(wrapper.EnumDeviceInfo(0, &info));
    QCOMPARE(info.deviceId, -123456);

    unsigned char buffer[] = {1, 2, 3};
    wrapper.ReadSynchronousPacket(1, 1, buffer, 2, 0);
    QCOMPARE(int(buffer[1]), 0xA5);
    QCOMPARE(int(buffer[2]), 3);
}

void OperationTests::channelsCallBack()
{
    const DriverLibrary library("complete");
    OrvexWrapper wrapper;
    wrapper.Attach();
    QByteArray received;
    wrapper.OpenSynchronousChannel(
        7,
        [](int device, const unsigned char *data, unsigned int length, void *context) {
            static_cast<QByteArray *>(context)
                ->append(char(device))
                .append(reinterpret_cast<const char *>(data), int(length));
        },
        &received);

    unsigned char buffer[2] = {};
    wrapper.ReadSynchronousPacket(8, 1, buffer, 2, 0); // of another board
    QCOMPARE(received, QByteArray());
    wrapper.ReadSynchronousPacket(7, 1, buffer, 2, 0);
    QCOMPARE(received, QByteArray("\x07\xa5\xa5"));
}

void OperationTests::outputsAreLeftAloneWithoutEntryPoint()
{
    const DriverLibrary library("empty");
    OrvexWrapper wrapper;
    wrapper.Attach();

    int port = -1;
    wrapper.SerialGetConnected(port);
    QCOMPARE(port, -1);
    _ORVEX_DEVICE_INFO info{};
    info.deviceId = 77;
    QVERIFY(!wrapper.EnumDeviceInfo(0, &info));
    QCOMPARE(info.deviceId, 77);
}

void OperationTests::hidReportModeIsNeverResolved()
{
    const DriverLibrary library("complete");
    OrvexWrapper wrapper;
    QCOMPARE(wrapper.GetHIDCoordinateReportMode(1), 0);
    wrapper.Attach();
    library.takeCalls();

    QCOMPARE(wrapper.GetHIDCoordinateReportMode(1), 0);
    wrapper.SetHIDCoordinateReportMode(1, 2);
    QCOMPARE(wrapper.GetHIDCoordinateReportMode(1), 0);
    QCOMPARE(library.takeCalls(), QStringList());
}

PADSCOPE_TESTS(OperationTests);
#include "tst_operations.moc"
