#include "simulator/simulatedlibrary.h"

#include <atomic>
#include <QElapsedTimer>
#include <QtTest>

/// Synchronous channels, the transfer mask and the serial board.
class tst_channels : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void readsWhatComes();
    void eachChannelGetsEveryReport();
    void theTimeOutEndsARead();
    void closingEndsARead();
    void unpluggingEndsARead();
    void refusedReads();
    void aReportIsCutToTheBuffer();
    void keepsTheLast1024();
    void callsTheCallbackOfTheChannel();
    void theMaskHoldsBackKinds_data();
    void theMaskHoldsBackKinds();
    void serialBoard();

private:
    std::unique_ptr<Recorder> recorder; // outlives the library, which calls it
    std::unique_ptr<SimulatedLibrary> library;
};

namespace {

constexpr unsigned char unknownBytes[] = {4, 200, 1, 2};

Bytes read(SimulatedLibrary &library, int channel, unsigned int timeoutMs = 5000)
{
    Bytes bytes(200);
    const int length = library.orvexReadSynchronousPacket(1001, channel, bytes.data(), 200, timeoutMs);
    bytes.resize(static_cast<std::size_t>(std::max(length, 0)));
    return bytes;
}

/// Lets the board say that it has stopped, and then nothing more.
void stop(SimulatedLibrary &library)
{
    library.orvexSendCommand(1001, ".");
    const int channel = library.orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    for (std::string text; text.find("streaming stopped") == std::string::npos;) {
        const Bytes bytes = read(library, channel);
        QVERIFY(!bytes.empty());
        text.assign(bytes.begin(), bytes.end());
    }
    library.orvexCloseSynchronousChannel(1001, channel);
}

unsigned long long undelivered(SimulatedLibrary &library)
{
    unsigned long long sent = 0;
    unsigned long long delivered = 0;
    library.counts(1001, &sent, &delivered);
    return sent - delivered;
}

} // namespace

void tst_channels::init()
{
    recorder = std::make_unique<Recorder>();
    library = std::make_unique<SimulatedLibrary>();
    library->orvexAttach();
    stop(*library); // only what is asked for comes
}

void tst_channels::cleanup()
{
    library.reset();
    recorder.reset();
}

void tst_channels::readsWhatComes()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    QVERIFY(channel > 0);
    library->orvexSendCommand(1001, "U8");
    QByteArray texts;
    while (!texts.contains("frequency locked")) {
        const Bytes bytes = read(*library, channel);
        QVERIFY(!bytes.empty());
        texts.append(reinterpret_cast<const char *>(bytes.data()), static_cast<int>(bytes.size()));
    }
    library->orvexSendCommand(1001, "B"); // a channel is a listener: the board streams
    for (int i = 0; i < 20; ++i)
        QVERIFY(!read(*library, channel).empty());
}

void tst_channels::eachChannelGetsEveryReport()
{
    const int first = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    const int second = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    QVERIFY(first != second);
    library->orvexWritePacket(1001, unknownBytes, 4);
    for (const int channel : {first, second}) {
        QCOMPARE(read(*library, channel), (Bytes{4, 200, 1, 2}));
    }
}

void tst_channels::theTimeOutEndsARead()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    unsigned char byte = 7;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel, &byte, 1, 100), 0);
    QVERIFY2(timer.elapsed() >= 99, QByteArray::number(timer.elapsed()));
    QCOMPARE(static_cast<int>(byte), 7);
}

void tst_channels::closingEndsARead()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    std::atomic<int> result{-2};
    std::thread reader([&] {
        unsigned char byte;
        do
            result = library->orvexReadSynchronousPacket(1001, channel, &byte, 1, 60000);
        while (result > 0);
    });
    QTest::qWait(50);
    library->orvexCloseSynchronousChannel(1001, channel);
    reader.join();
    QCOMPARE(result.load(), -1);
}

void tst_channels::unpluggingEndsARead()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    std::atomic<int> result{-2};
    std::thread reader([&] {
        unsigned char byte;
        do
            result = library->orvexReadSynchronousPacket(1001, channel, &byte, 1, 60000);
        while (result > 0);
    });
    QTest::qWait(50);
    library->unplug(1001);
    reader.join();
    QCOMPARE(result.load(), -1);
}

void tst_channels::refusedReads()
{
    unsigned char byte = 0;
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    QCOMPARE(library->orvexOpenSynchronousChannel(5, nullptr, nullptr), -1);
    QCOMPARE(library->orvexReadSynchronousPacket(5, channel, &byte, 1, 0), -1);
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel + 1, &byte, 1, 0), -1);
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel, nullptr, 1, 0), -1);
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel, &byte, -1, 0), -1);
    library->orvexCloseSynchronousChannel(1001, channel);
    library->orvexCloseSynchronousChannel(1001, channel);
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel, &byte, 1, 0), -1);
}

void tst_channels::aReportIsCutToTheBuffer()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    read(*library, channel, 100);
    library->orvexWritePacket(1001, unknownBytes, 4);
    unsigned char bytes[3] = {0, 0, 99};
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel, bytes, 2, 5000), 2);
    QCOMPARE(static_cast<int>(bytes[1]), 200);
    QCOMPARE(static_cast<int>(bytes[2]), 99);
    QCOMPARE(library->orvexReadSynchronousPacket(1001, channel, bytes, 2, 0), 0);
}

void tst_channels::keepsTheLast1024()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    const int witness = library->orvexOpenSynchronousChannel(1001, nullptr, nullptr);
    for (int i = 0; i < 1100; ++i) {
        const unsigned char bytes[] = {4, 200, static_cast<unsigned char>(i / 256),
                                       static_cast<unsigned char>(i)};
        library->orvexWritePacket(1001, bytes, 4);
    }
    Bytes last;
    while (last != Bytes{4, 200, 4, 75}) // 1099 = 4 * 256 + 75
        last = read(*library, witness);
    QCOMPARE(read(*library, channel), (Bytes{4, 200, 0, 76})); // 1100 - 1024
}

void tst_channels::callsTheCallbackOfTheChannel()
{
    const int channel = library->orvexOpenSynchronousChannel(1001, Recorder::data, recorder.get());
    library->orvexWritePacket(1001, unknownBytes, 4);
    QTRY_COMPARE(recorder->timesSeen(Bytes{4, 200, 1, 2}), 1);
    library->orvexCloseSynchronousChannel(1001, channel);
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    library->orvexWritePacket(1001, unknownBytes, 4);
    QTRY_COMPARE(recorder->timesSeen(Bytes{4, 200, 1, 2}), 2);
}

void tst_channels::theMaskHoldsBackKinds_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bit");
    QTest::newRow("SignalReport") << 47 << 1;
    QTest::newRow("PhaseReport") << 104 << 2;
    QTest::newRow("PenIdentityReport") << 162 << 4;
    QTest::newRow("DualPenReport") << 163 << 8;
    QTest::newRow("PositionReport") << 164 << 16;
    QTest::newRow("text of type 50") << 50 << 32;
    QTest::newRow("type 119") << 119 << 64;
    QTest::newRow("any other") << 200 << 128;
}

void tst_channels::theMaskHoldsBackKinds()
{
    QFETCH(int, type);
    QFETCH(int, bit);
    const unsigned char bytes[] = {4, static_cast<unsigned char>(type), 1, 2};
    const Bytes report{4, static_cast<unsigned char>(type), 1, 2};
    library->orvexSetCallback(1001, Recorder::data, recorder.get());
    library->orvexWritePacket(1001, bytes, 4);
    QTRY_COMPARE(recorder->timesSeen(report), 1);
    const unsigned long long before = undelivered(*library);
    library->orvexSetXferMask(1001, static_cast<std::uint8_t>(255 - bit));
    library->orvexWritePacket(1001, bytes, 4);
    QTRY_COMPARE(undelivered(*library), before + 1); // it was sent, and nobody was called
    QCOMPARE(recorder->timesSeen(report), 1);
    library->orvexSetXferMask(1001, static_cast<std::uint8_t>(bit));
    library->orvexWritePacket(1001, bytes, 4);
    QTRY_COMPARE(recorder->timesSeen(report), 2);
}

void tst_channels::serialBoard()
{
    library->orvexSetPnpCallback(Recorder::pnp, recorder.get());
    QCOMPARE(library->orvexSerialConnect(3), 1);
    QCOMPARE(library->orvexSerialConnect(4), 0); // one is connected
    QCOMPARE(library->boardIds(), (std::vector<int>{1001, 5003}));
    QCOMPARE(library->orvexGetDeviceCount(), 2);
    QTRY_COMPARE(recorder->notices(), std::size_t{1});
    library->orvexSetCallback(5003, Recorder::data, recorder.get());
    QTRY_VERIFY(recorder->count() > 3);
    QCOMPARE(library->orvexSerialDisconnect(), 1);
    QCOMPARE(library->boardIds(), std::vector<int>{1001});
    QTRY_COMPARE(recorder->notices(), std::size_t{2});
    QCOMPARE(library->orvexSerialConnect(256), 0);
    QCOMPARE(library->orvexSerialConnect(255), 1);
    QCOMPARE(library->boardIds(), (std::vector<int>{1001, 5255}));
}

QTEST_APPLESS_MAIN(tst_channels)
#include "tst_channels.moc"
