#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

#include <QDir>
#include <QElapsedTimer>

/// Boards that are plugged in, enumerated and streaming, and the threads behind them.
class tst_attachment : public QObject
{
    Q_OBJECT

private slots:
    void noBoardBeforeAttachAndAfterDetach();
    void oneBoardByDefault();
    void refusedRecords_data();
    void refusedRecords();
    void boardsComeAndGo();
    void equalAndNegativeIds();
    void atMost32Boards();
    void pluggedBoardsOutliveADetach();
    void attachingTwiceChangesNothing();
    void detachEndsEveryThread();
    void detachTwice();
    void detachFromTheBoardsThread();
    void detachFromThePnpThread();
    void oneHundredReportsASecond();
    void otherRates();
    void refusedRates();
    void aTextComesFirst();
};

namespace {

_ORVEX_DEVICE_INFO emptyRecord(std::uint32_t kind = 6)
{
    _ORVEX_DEVICE_INFO record{};
    record.recordKind = kind;
    return record;
}

std::vector<int> idsIn(SimulatedLibrary &library)
{
    std::vector<int> ids;
    for (int index = 0; index < library.orvexGetDeviceCount(); ++index) {
        _ORVEX_DEVICE_INFO record = emptyRecord();
        if (library.orvexEnumDeviceInfo(index, &record) == 1)
            ids.push_back(record.deviceId);
    }
    return ids;
}

int threadCount()
{
    return static_cast<int>(QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

struct Detacher
{
    SimulatedLibrary &library;
    std::atomic<bool> detached{false};

    static void data(int, const unsigned char *, unsigned int, void *self) { pnp(self); }
    static void pnp(void *self)
    {
        auto &detacher = *static_cast<Detacher *>(self);
        detacher.library.orvexDetach();
        detacher.detached = true;
    }
};

} // namespace

void tst_attachment::noBoardBeforeAttachAndAfterDetach()
{
    SimulatedLibrary library;
    _ORVEX_DEVICE_INFO record = emptyRecord();
    QCOMPARE(library.orvexGetDeviceCount(), 0);
    QCOMPARE(library.orvexEnumDeviceInfo(0, &record), std::uint8_t{0});
    QCOMPARE(library.orvexAttach(), 1);
    QCOMPARE(library.orvexGetDeviceCount(), 1);
    library.orvexDetach();
    QCOMPARE(library.orvexGetDeviceCount(), 0);
}

void tst_attachment::oneBoardByDefault()
{
    SimulatedLibrary library;
    library.orvexAttach();
    QCOMPARE(idsIn(library), std::vector<int>{1001});
}

void tst_attachment::refusedRecords_data()
{
    addColumns<int, int, int>("index", "kind", "answer");
    addRow("first board", 0, 6, 1);
    addRow("index past the last board", 1, 6, 0);
    addRow("negative index", -1, 6, 0);
    addRow("kind too small", 0, 5, 0);
    addRow("kind too large", 0, 7, 0);
}

void tst_attachment::refusedRecords()
{
    QFETCH(int, index);
    QFETCH(int, kind);
    SimulatedLibrary library;
    library.orvexAttach();
    _ORVEX_DEVICE_INFO record = emptyRecord(static_cast<std::uint32_t>(kind));
    QTEST(static_cast<int>(library.orvexEnumDeviceInfo(index, &record)), "answer");
    QCOMPARE(library.orvexEnumDeviceInfo(index, nullptr), std::uint8_t{0});
}

void tst_attachment::boardsComeAndGo()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    QCOMPARE(library.plug(7), 0);
    QTRY_COMPARE(recorder.notices(), std::size_t{1});
    QCOMPARE(idsIn(library), (std::vector<int>{1001, 7}));

    library.orvexSetCallback(7, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 0);
    QCOMPARE(library.unplug(7), 0);
    const std::size_t last = recorder.count();
    QTRY_COMPARE(recorder.notices(), std::size_t{2});
    QCOMPARE(idsIn(library), std::vector<int>{1001});
    QCOMPARE(recorder.count(), last);
    QCOMPARE(library.unplug(7), -1);
}

void tst_attachment::equalAndNegativeIds()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.plug(-5);
    library.plug(1001);
    library.orvexAttach();
    QCOMPARE(idsIn(library), (std::vector<int>{1001, -5, 1001}));
    library.orvexSetCallback(-5, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 3);
    for (const Recorder::Delivery &delivery : recorder.deliveries())
        QCOMPARE(delivery.device, -5);
}

void tst_attachment::atMost32Boards()
{
    SimulatedLibrary library;
    for (int id = 1; id < 32; ++id)
        QCOMPARE(library.plug(id), 0);
    QCOMPARE(library.plug(32), -1);
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 32);
}

void tst_attachment::pluggedBoardsOutliveADetach()
{
    SimulatedLibrary library;
    library.orvexAttach();
    library.plug(2);
    library.orvexDetach();
    library.unplug(1001);
    library.plug(3);
    library.orvexAttach();
    QCOMPARE(idsIn(library), (std::vector<int>{2, 3}));
}

void tst_attachment::attachingTwiceChangesNothing()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    const int threads = threadCount();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QCOMPARE(library.orvexAttach(), 1);
    QCOMPARE(threadCount(), threads);
    QTRY_VERIFY(recorder.count() > 5);
}

void tst_attachment::detachEndsEveryThread()
{
    SimulatedLibrary library;
    const int before = threadCount();
    library.plug(2);
    library.orvexAttach();
    QCOMPARE(threadCount(), before + 3); // two boards, and the one for plug-and-play
    library.orvexDetach();
    // A thread that has been joined may stand in the list of the system for a moment longer.
    QTRY_COMPARE(threadCount(), before);
}

void tst_attachment::detachTwice()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 5);
    library.orvexDetach();
    const std::size_t last = recorder.count();
    library.orvexDetach();
    QCOMPARE(library.send(1001, nullptr, 0), -1);
    library.orvexAttach();
    QCOMPARE(library.send(1001, nullptr, 0), 0); // the callbacks are forgotten
    QCOMPARE(recorder.count(), last);
}

void tst_attachment::detachFromTheBoardsThread()
{
    SimulatedLibrary library;
    const int before = threadCount();
    Detacher detacher{library};
    library.orvexAttach();
    library.orvexSetCallback(1001, Detacher::data, &detacher);
    QTRY_VERIFY(detacher.detached);
    library.orvexDetach();
    QTRY_COMPARE(threadCount(), before);
    QCOMPARE(library.orvexGetDeviceCount(), 0);
}

void tst_attachment::detachFromThePnpThread()
{
    SimulatedLibrary library;
    const int before = threadCount();
    Detacher detacher{library};
    library.orvexAttach();
    library.orvexSetPnpCallback(Detacher::pnp, &detacher);
    library.plug(2);
    QTRY_VERIFY(detacher.detached);
    library.unload();
    QTRY_COMPARE(threadCount(), before);
}

// Both rates are measured as the time that a number of reports takes, since time is what they are about.

void tst_attachment::oneHundredReportsASecond()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    QElapsedTimer timer;
    timer.start();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() >= 200);
    QVERIFY2(timer.elapsed() > 1800 && timer.elapsed() < 2400, QByteArray::number(timer.elapsed()));
}

void tst_attachment::otherRates()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    QCOMPARE(library.setRate(1001, 2000), 0);
    QElapsedTimer timer;
    timer.start();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() >= 2000);
    QVERIFY2(timer.elapsed() > 900 && timer.elapsed() < 1300, QByteArray::number(timer.elapsed()));
}

void tst_attachment::refusedRates()
{
    SimulatedLibrary library;
    QCOMPARE(library.setRate(1001, 0), -1);
    QCOMPARE(library.setRate(1001, 1), 0);
    QCOMPARE(library.setRate(1001, 10000), 0);
    QCOMPARE(library.setRate(1001, 10001), -1);
    QCOMPARE(library.setRate(1002, 100), -1);
}

void tst_attachment::aTextComesFirst()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 0);
    // 18 characters from "board" to "ready!" after the two bytes of the header.
    const Bytes expected{19,  50,  'b', 'o', 'a', 'r', 'd', ' ', '1', '0',
                         '0', '1', ' ', 'r', 'e', 'a', 'd', 'y', '!'};
    QCOMPARE(recorder.deliveries().front().bytes, expected);
}

PADSCOPE_TESTS(tst_attachment);
#include "tst_attachment.moc"
