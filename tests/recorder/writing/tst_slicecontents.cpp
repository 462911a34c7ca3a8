#include "producer.h"
#include "recorder/draining/recordedrun.h"
#include "slicedrecording.h"
#include "support/tests.h"

namespace {

/// By a thread of its own.
ring::Taken callAt(std::uint64_t ms, std::uint32_t crossing)
{
    ring::Taken taken;
    taken.kind = 2;
    taken.call = 13;
    taken.crossing = crossing;
    taken.thread = crossing;
    taken.clockNs = SlicedRecording::monotonicAt(ms);
    return taken;
}

ring::Taken returnAt(std::uint64_t ms, std::uint32_t call)
{
    ring::Taken taken = callAt(ms, call);
    taken.kind = 3;
    taken.crossing = 100 + call;
    taken.link = call;
    return taken;
}

QStringList countsOf(const std::vector<capture::BoardCounts> &boards)
{
    QStringList lines;
    for (const capture::BoardCounts &counts : boards)
        lines += QString("%1: %2 delivered, %3 recorded, %4 lost")
                     .arg(counts.board)
                     .arg(counts.delivered)
                     .arg(counts.recorded)
                     .arg(counts.lost);
    return lines;
}

} // namespace

/// What a slice tells of what lies before it, and of itself.
class SliceContentsTests : public QObject, private SlicedRecording
{
    Q_OBJECT

private slots:
    void boardsThatAreKnown();
    void lossesAreThoseWithin();
    void lossesOfEachBoard();
    void returnsOfCallsThatAreLeftOut();
    void statistics();

private:
    /// The ring has counted them so far.
    void countLost(std::int32_t board, std::uint64_t count) { ring::slotOf(*control, board).lost = count; }
    void reportBehind(std::uint32_t lost, std::uint64_t ms);
};

void SliceContentsTests::reportBehind(std::uint32_t lost, std::uint64_t ms)
{
    ring::Taken taken = reportAt(ms);
    taken.lost = lost;
    recording->write(taken);
    recording->flush();
}

/// One that has gone is not told.
void SliceContentsTests::boardsThatAreKnown()
{
    begin(100, 50);
    report(10);
    ring::Taken other = reportAt(20);
    other.board = 8;
    recording->write(other);
    ring::Taken call = reportAt(30, {});
    call.kind = 2;
    call.flags = 0;
    call.call = 9; // the count
    call.crossing = 2;
    recording->write(call);
    call.kind = 3;
    call.clockNs = monotonicAt(40);
    call.crossing = 3;
    call.link = 2;
    call.result = 0; // nothing is left
    recording->write(call);
    other.clockNs = monotonicAt(50);
    recording->write(other);
    mark(400);
    passTime(450);
    QCOMPARE(packetsOf(path()),
             (QStringList{"9 300 status", "10 300 board", "11 400 mark now", "12 450 end"}));
    QCOMPARE(factsOf(path()).interfaces, (QStringList{"driver", "board 7", "board 8"}));
    QCOMPARE(checked(), QByteArray("0\n"));
}

/// What is not kept is not lost.
void SliceContentsTests::lossesAreThoseWithin()
{
    begin(100, 50);
    ring::Taken taken = reportAt(10);
    taken.lost = 5;
    recording->write(taken);
    report(20);
    taken = reportAt(310, "behind two");
    taken.lost = 2;
    recording->write(taken);
    mark(400);
    passTime(460);
    // 0 status, 1 to 5 lost, 6 board, 7 and 8 reports, 9 and 10 lost
    QCOMPARE(packetsOf(path()), (QStringList{"7 300 status", "8 300 board", "11 310 report behind two lost 2",
                                             "12 400 mark now", "13 450 end"}));
    QCOMPARE(factsOf(path()).lost, std::uint64_t{2});
    QCOMPARE(checked(), "3\npadscope: " + path().toUtf8() + ": session 00000001: 2 lost\n");
}

/// The ring's counts are ahead of the packets, and tell in which proportion the boards lose.
void SliceContentsTests::lossesOfEachBoard()
{
    begin(100, 50);
    report(10);
    countLost(7, 3);
    reportBehind(3, 20);
    countLost(7, 3 + 40);
    countLost(8, 20);
    reportBehind(6, 310); // 4 of the 40, and 2 of the 20
    recording->writeStatus(start.at(monotonicAt(390)), *control);
    mark(400);
    reportBehind(54, 460);
    recording->flush();
    QCOMPARE(countsOf(statusIn(path()).boards), QStringList{"7: 5 delivered, 2 recorded, 3 lost"});
    QCOMPARE(countsOf(factsOf(path()).end->boards),
             (QStringList{"7: 10 delivered, 3 recorded, 7 lost", "8: 2 delivered, 0 recorded, 2 lost"}));
    mark(600);
    passTime(650);
    QCOMPARE(countsOf(factsOf(path("x-2.pcapng")).end->boards),
             (QStringList{"7: 47 delivered, 4 recorded, 43 lost", "8: 20 delivered, 0 recorded, 20 lost"}));
    QCOMPARE(checked("x-2.pcapng"), QByteArray("0\n"));
}

/// Made-up packets have their sequences.
void SliceContentsTests::returnsOfCallsThatAreLeftOut()
{
    begin(100, 50);
    report(10);
    recording->write(callAt(20, 2));
    recording->write(callAt(30, 3));
    recording->write(callAt(350, 4));
    recording->write(returnAt(360, 4));
    recording->write(returnAt(370, 2));
    mark(400);
    recording->write(returnAt(410, 3));
    passTime(450);
    // The calls have the sequences 3, 4 and 5.
    QCOMPARE(packetsOf(path()), (QStringList{"3 300 status", "4 300 board", "5 350 call", "6 360 return of 5",
                                             "7 370 return of 4294967295", "8 400 mark now",
                                             "9 410 return of 4294967295", "10 450 end"}));
    QCOMPARE(checked(), QByteArray("0\n"));
}

/// Of the file, and not of the recording.
void SliceContentsTests::statistics()
{
    begin(100, 50);
    report(10);
    report(310);
    report(320);
    mark(400);
    passTime(500);
    const QByteArray told =
        outputOf("sh", {"-c", "tail -c 152 $0 | od -An -v -tu4 -w4 | tr -d ' ' | tr '\\n' ' '", path()});
    // Two blocks of 76 bytes; the counts received are 3 of the library (status, mark, end) and 3 of the
    // board.
    QVERIFY2(told.startsWith("0\n5 76 0 "), told);
    const QList<QByteArray> numbers = told.mid(2).split(' ');
    QCOMPARE(numbers.at(19), QByteArray("5"));
    QCOMPARE(numbers.at(12), QByteArray("3"));
    QCOMPARE(numbers.at(19 + 12), QByteArray("3"));
}

PADSCOPE_TESTS(SliceContentsTests);
#include "tst_slicecontents.moc"
