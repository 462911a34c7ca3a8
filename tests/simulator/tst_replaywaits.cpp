#include <QElapsedTimer>

#include "simulator/replaycapture.h"
#include "support/tests.h"

/// What a replay waits for, and for how long.
class tst_replaywaits : public QObject
{
    Q_OBJECT

private slots:
    void theFiveSecondsCountFromTheFirstCallback();
    void aNotificationWaitsForNothing();
    void boardsThatNobodyListenedToAreNotWaitedFor();
    void aRegistrationIsWaitedForWithoutAnyReport();
};

namespace {

/// Attached, without a callback yet.
struct Attached
{
    explicit Attached(const QByteArray &path)
    {
        if (library.choose(path.constData()) != 0)
            qFatal("%s", library.error().c_str());
        library.orvexAttach();
    }
    void listen(int board) { library.orvexSetCallback(board, Recorder::data, &recorder); }

    Recorder recorder; // it outlives the library
    SimulatedLibrary library;
};

} // namespace

/// The time without any callback, which has no limit, does not count.
void tst_replaywaits::theFiveSecondsCountFromTheFirstCallback()
{
    ReplayCapture capture;
    addTen(capture);
    const StandardError errors;
    Attached host(capture.file());
    QTest::qWait(5500);
    host.listen(1001);
    QTest::qWait(200);
    QCOMPARE(errors.text(), QByteArray());
    host.listen(1002);
    QVERIFY(ends(host.library));
    QCOMPARE(heard(host.recorder), ten);
}

void tst_replaywaits::aNotificationWaitsForNothing()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    capture.hotplug(1);
    capture.report(2, 1001, "04c801");
    const StandardError errors;
    Attached host(capture.file());
    host.listen(1001);
    QVERIFY(ends(host.library));
    QVERIFY2(errors.text().startsWith("replay: asked rate 1, "), errors.text());
    QCOMPARE(heard(host.recorder), (QList<QByteArray>{"1001:04c800", "1001:04c801"}));
}

void tst_replaywaits::boardsThatNobodyListenedToAreNotWaitedFor()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001, 1002});
    capture.report(1, 1001, "04c800");
    const StandardError errors;
    Attached host(capture.file());
    QCOMPARE(host.library.orvexGetDeviceCount(), 2);
    QCOMPARE(replayOf(host.library).state, int{ORVEXSIM_REPLAY_WAITING});
    host.listen(1001);
    QVERIFY(ends(host.library));
    QVERIFY2(errors.text().startsWith("replay: asked rate 1; 1 of 1 "), errors.text());
}

void tst_replaywaits::aRegistrationIsWaitedForWithoutAnyReport()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001, 1002});
    capture.call(0, 4, 1002, blocks::number(1002, 4) + blocks::number(1, 4), 0);
    capture.report(0, 1001, "04c800");
    Attached host(capture.file());
    host.listen(1001);
    QTest::qWait(200);
    QCOMPARE(host.recorder.count(), std::size_t{0});
    QCOMPARE(replayOf(host.library).state, int{ORVEXSIM_REPLAY_WAITING});
    host.listen(1002);
    QVERIFY(ends(host.library));
    QCOMPARE(host.recorder.count(), std::size_t{1});
}

PADSCOPE_TESTS(tst_replaywaits);
#include "tst_replaywaits.moc"
