#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::startNs;
using examplecapture::whole;

namespace {

QByteArray checkedPacket(quint64 timeNs, const QByteArray &data, quint64 dropCount = 0)
{
    return blocks::packet(timeNs, data,
                          dropCount > 0 ? blocks::option(4, blocks::number(dropCount, 8)) : QByteArray());
}

QByteArray mark(quint64 timeNs, quint64 sequence, quint32 lost = 0)
{
    return checkedPacket(timeNs, packetBytes(6, 0, 0, 0, 0, "x", 0, lost, sequence), lost);
}

/// Of board 7, unless the flags say otherwise.
QByteArray report(quint64 timeNs, quint64 sequence, int flags = 1)
{
    return checkedPacket(timeNs, packetBytes(1, flags, 0, 7, 0, "x", 1, 0, sequence));
}

QByteArray call(int kind, quint64 sequence, int number, quint32 link = 0)
{
    return checkedPacket(sequence + 1, packetBytes(kind, 0, number, 0, 0, {}, link, 0, sequence));
}

QByteArray end(quint64 sequence, const QByteArray &counts = blocks::number(0, 4))
{
    return checkedPacket(
        startNs,
        packetBytes(8, 0, 0, 0, 0, blocks::number(1, 4) + blocks::number(0, 4) + counts, 0, 0, sequence));
}

QByteArray status(quint64 timeNs, quint64 sequence, const QByteArray &counts)
{
    return checkedPacket(timeNs, packetBytes(5, 0, 0, 0, 0, QByteArray(28, '\0') + counts, 0, 0, sequence));
}

/// Of board 7.
QByteArray countsOf(quint64 delivered, quint64 recorded, quint64 lost)
{
    using blocks::number;
    return number(1, 4) + number(7, 4) + number(delivered, 8) + number(recorded, 8) + number(lost, 8);
}

/// Of the boards 1000 to 2022, of which nothing came.
QByteArray countsOfManyBoards()
{
    QByteArray counts = blocks::number(1023, 4);
    for (quint32 board = 1000; board < 2023; ++board)
        counts += blocks::number(board, 4) + QByteArray(24, '\0');
    return counts;
}

/// The lines of faults, which all name a packet.
QStringList faultsOf(const ProgramRun &run)
{
    QStringList lines = QString(run.errors).split('\n').filter(", packet ");
    return lines.replaceInStrings("padscope: standard input: ", "");
}

} // namespace

/// `padscope check` as a process.
class CheckTests : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void totals_data();
    void totals();
    void allThatWasLost();
    void interfaces();
    void foreignPackets();
    void printsTheFirstFaults();
    void tellsWhatIsIncomplete();
    void whatWasTakenOutIsNoFault();
    void tooLargeAndDamaged();
};

void CheckTests::faults_data()
{
    addColumns<QByteArray, QString>("packets", "line");
    addRow("times", mark(5, 0) + mark(5, 1),
           "byte 148, packet 2: its time is not later than the packet's before");
    addRow("sequence", mark(5, 0) + mark(6, 0),
           "byte 148, packet 2: its sequence is not higher than the packet's before");
    addRow("losses", mark(5, 0) + mark(6, 2, 2), "byte 148, packet 2: more are lost than are missing");
    const QByteArray loss = packetBytes(6, 0, 0, 0, 0, "x", 0, 1, 2);
    addRow("drop count", mark(5, 0) + checkedPacket(6, loss, 2),
           "byte 148, packet 2: its drop count is not what it says is lost");
    addRow("no drop count", mark(5, 0) + checkedPacket(6, loss),
           "byte 148, packet 2: its drop count is not what it says is lost");
    addRow("behind the end", end(0) + mark(startNs + 1, 1),
           "byte 156, packet 2: it lies behind the end of its session");
    addRow("cut header", checkedPacket(5, packetBytes(6, 0, 0, 0, 0, {}).left(20)),
           "byte 72, packet 1: its header is cut off, or of a wrong length");
    addRow("kind", checkedPacket(5, packetBytes(9, 0, 0, 0, 0, {})),
           "byte 72, packet 1: its kind is 9, which the format has not");
    addRow("call", call(2, 0, 48), "byte 72, packet 1: its call is 48, which the format has not");
    addRow("no call", call(3, 0, 1, 0), "byte 72, packet 1: it returns from no call");
    addRow("twice", call(2, 0, 1) + call(3, 1, 1, 0) + call(3, 2, 1, 0),
           "byte 216, packet 3: it returns from no call");
    addRow("another call", call(2, 0, 1) + call(3, 1, 2, 0),
           "byte 144, packet 2: it returns from another call than it says");
    addRow("no board", report(5, 0, 0), "byte 72, packet 1: a report without its board");
}

void CheckTests::faults()
{
    QFETCH(QByteArray, packets);
    QFETCH(QString, line);
    const ProgramRun run = padscope({"check", "-"}, start() + packets);
    QCOMPARE(faultsOf(run), QStringList{line});
    QCOMPARE(run.status, 1);
}

void CheckTests::totals_data()
{
    addColumns<QByteArray, QString>("packets", "line");
    addRow("recorded", end(0, countsOf(1, 1, 0)),
           "byte 72, packet 1: board 7 has 0 reports, and not the recorded 1");
    addRow("delivered", end(0, countsOf(1, 0, 0)),
           "byte 72, packet 1: board 7: recorded and lost are not delivered");
    addRow("lost", end(0, countsOf(1, 0, 1)),
           "byte 72, packet 1: its boards have lost 1, and the packets tell of 0");
    addRow("not counted", report(5, 0) + end(1),
           "byte 148, packet 2: board 7 has 1 report, and the end does not count it");
    addRow("not counted beside many", report(5, 0) + end(1, countsOfManyBoards()),
           "byte 148, packet 2: board 7 has 1 report, and the end does not count it");
    const QByteArray none = blocks::number(0, 4);
    addRow("more lost at the end", mark(5, 0) + mark(6, 3, 2) + end(4, none + blocks::number(3, 8)),
           "byte 236, packet 3: it tells of 3 lost, and the packets of 2");
    addRow("fewer lost at the end", mark(5, 0) + mark(6, 3, 2) + end(4, none + blocks::number(1, 8)),
           "byte 236, packet 3: it tells of 1 lost, and the packets of 2");
    addRow("a short end", checkedPacket(5, packetBytes(8, 0, 0, 0, 0, blocks::number(1, 4))),
           "byte 72, packet 1: an end packet that is too short");
    addRow("an end that is cut", report(5, 0) + end(1, blocks::number(2, 4) + countsOf(1, 1, 0).mid(4)),
           "byte 148, packet 2: it lacks the counts of 1 board");
    addRow("a status", report(5, 0) + status(6, 1, countsOf(3, 2, 0)),
           "byte 148, packet 2: board 7 has 1 report, and not the recorded 2");
    addRow("a short status", checkedPacket(5, packetBytes(5, 0, 0, 0, 0, "x")),
           "byte 72, packet 1: a status packet that is too short");
    addRow("a status that is cut", status(5, 0, countsOf(0, 0, 0).chopped(1)),
           "byte 72, packet 1: it lacks the counts of 1 board");
}

void CheckTests::totals()
{
    faults();
}

/// The end's own loss counts as well. What was taken out can't be compared, nor what the end does not tell.
void CheckTests::allThatWasLost()
{
    const QByteArray two = blocks::number(0, 4) + blocks::number(2, 8);
    const QByteArray last = checkedPacket(
        startNs, packetBytes(8, 0, 0, 0, 0, blocks::number(1, 4) + blocks::number(0, 4) + two, 0, 1, 5), 1);
    for (const QByteArray &packets :
         {mark(5, 0) + mark(6, 3, 2) + end(4, two), mark(5, 0) + mark(6, 3, 1) + last,
          mark(5, 0) + mark(6, 3) + end(4, two), mark(5, 0) + mark(6, 3, 2) + end(4)})
        QCOMPARE(faultsOf(padscope({"check", "-"}, start() + packets)), QStringList());
}

/// A board's interface is named after it.
void CheckTests::interfaces()
{
    const QByteArray first = blocks::section() + blocks::interface("board 7");
    QCOMPARE(faultsOf(padscope({"check", "-"}, first + report(5, 0))), QStringList());
    const QByteArray other = checkedPacket(6, packetBytes(1, 1, 0, 8, 0, "x", 1, 0, 1));
    QCOMPARE(faultsOf(padscope({"check", "-"}, first + report(5, 0) + other)),
             QStringList{"byte 148, packet 2: it is not of the board of its interface, board 7"});
    QCOMPARE(faultsOf(padscope({"check", "-"}, first + mark(5, 0))),
             QStringList{"byte 72, packet 1: it is not of the board of its interface, board 7"});
}

/// In a section that a recorder has written, not in one of somebody else's.
void CheckTests::foreignPackets()
{
    const QByteArray foreign = checkedPacket(5, "foreign!");
    QCOMPARE(padscope({"check", "-"}, start() + foreign + packets().join()).status, 0);
    const QByteArray body = blocks::number(0x1A2B3C4D, 4) + blocks::number(1, 2) + blocks::number(0, 2) +
                            QByteArray(8, '\xFF') + blocks::option(1, "padscope capture 1, session 5f0c93a1");
    const ProgramRun run =
        padscope({"check", "-"},
                 blocks::block(0x0A0D0D0A, body) + blocks::interface("driver") + foreign + packets().join());
    QCOMPARE(faultsOf(run), QStringList{"byte 112, packet 1: no packet of a capture, among those of one"});
    QCOMPARE(run.status, 1);
}

void CheckTests::printsTheFirstFaults()
{
    QByteArray bytes = start();
    for (int i = 0; i < 24; ++i)
        bytes += mark(5, quint64(i));
    const ProgramRun run = padscope({"check", "-"}, bytes);
    QCOMPARE(faultsOf(run).size(), 20);
    QVERIFY(run.errors.contains("padscope: standard input: 3 faults more\n"));
}

void CheckTests::tellsWhatIsIncomplete()
{
    QCOMPARE(QString(padscope({"check", "-"}, start() + packets().mid(0, 10).join()).errors),
             "padscope: standard input: session 5f0c93a1: no clean end\n");
    QCOMPARE(QString(padscope({"check", "-"}, whole(2)).errors),
             "padscope: standard input: session 5f0c93a1: 2 lost\n");
    QCOMPARE(QString(padscope({"check", "-"}, start()).errors),
             "padscope: standard input: no packet of a capture in it\n");
    QCOMPARE(padscope({"check", "-"}, whole()).errors, QByteArray());
}

/// Sessions that were merged have times and numbers of their own.
void CheckTests::whatWasTakenOutIsNoFault()
{
    QByteArray other = packetBytes(6, 0, 0, 0, 0, "x", 0, 0, 3);
    other[24] = 'x';
    const ProgramRun run = padscope({"check", "-"}, start() + packets()[0] + blocks::packet(startNs, other) +
                                                        packets().mid(5).join());
    QCOMPARE(QString(run.errors), "padscope: standard input: session 5f0c9378: no clean end\n");
    QCOMPARE(run.status, 3);
}

/// Its second length is another one.
void CheckTests::tooLargeAndDamaged()
{
    const QByteArray large = blocks::block(0x77, QByteArray(17 * 1024 * 1024, 'x')).chopped(4);
    const ProgramRun run =
        padscope({"check", "-"}, start() + large + blocks::number(12, 4) + packets().join());
    QVERIFY2(run.errors.contains("padscope: standard input: byte 72: a block whose two lengths differ\n"),
             run.errors);
    QCOMPARE(run.status, 1);
}

PADSCOPE_TESTS(CheckTests);
#include "tst_check.moc"
