#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::startNs;
using examplecapture::whole;

namespace {

QByteArray mark(quint64 timeNs, quint64 sequence, quint32 lost = 0, const QByteArray &options = {})
{
    return blocks::packet(timeNs, packetBytes(6, 0, 0, 0, 0, "x", 0, lost, sequence), options);
}

QByteArray end(quint64 sequence, const QByteArray &counts)
{
    return blocks::packet(
        startNs,
        packetBytes(8, 0, 0, 0, 0, blocks::number(1, 4) + blocks::number(0, 4) + counts, 0, 0, sequence));
}

QByteArray countsOf(quint64 delivered, quint64 recorded, quint64 lost)
{
    using blocks::number;
    return number(1, 4) + number(7, 4) + number(delivered, 8) + number(recorded, 8) + number(lost, 8);
}

} // namespace

/// `padscope check` as a process.
class CheckTests : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void whatWasTakenOutIsNoFault();
    void repairs_data();
    void repairs();
    void nothingToRepair();
    void repairOverwritesNothing();

private:
    const Files files;
};

void CheckTests::faults_data()
{
    addColumns<QByteArray, QString>("packets", "line");
    addRow("times", mark(5, 0) + mark(5, 1),
           "byte 148, packet 2: its time is not later than the packet's before");
    addRow("sequence", mark(5, 0) + mark(6, 0),
           "byte 148, packet 2: its sequence is not higher than the packet's before");
    addRow("losses", mark(5, 0) + mark(6, 2, 2), "byte 148, packet 2: more are lost than are missing");
    addRow("drop count", mark(5, 0) + mark(6, 2, 1, blocks::option(4, blocks::number(2, 8))),
           "byte 148, packet 2: its drop count is not what it says is lost");
    addRow("recorded", end(0, countsOf(1, 1, 0)),
           "byte 72, packet 1: board 7 has 0 reports, and not the recorded 1");
    addRow("delivered", end(0, countsOf(1, 0, 0)),
           "byte 72, packet 1: board 7: recorded and lost are not delivered");
    addRow("lost", end(0, countsOf(1, 0, 1)),
           "byte 72, packet 1: 1 reports are lost, and not 0 as the packets say");
    addRow("a short end", blocks::packet(startNs, packetBytes(8, 0, 0, 0, 0, blocks::number(1, 4))),
           "byte 72, packet 1: an end packet that is too short");
}

void CheckTests::faults()
{
    QFETCH(QByteArray, packets);
    QFETCH(QString, line);
    const ProgramRun run = padscope({"check", "-"}, start() + packets);
    QCOMPARE(QString(run.errors), "padscope: " + line + '\n');
    QCOMPARE(run.status, 1);
}

/// Sessions that were merged have times and numbers of their own.
void CheckTests::whatWasTakenOutIsNoFault()
{
    QByteArray other = packetBytes(6, 0, 0, 0, 0, "x", 0, 0, 3);
    other[24] = 'x';
    const ProgramRun run = padscope({"check", "-"}, start() + packets()[0] + blocks::packet(startNs, other) +
                                                        packets().mid(5).join());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 3); // one session has no end
}

void CheckTests::repairs_data()
{
    addColumns<QByteArray, QByteArray, int>("bytes", "repaired", "status");
    addRow("whole", whole(), whole(), 0);
    addRow("cut", whole().chopped(1), start() + packets().mid(0, 10).join(), 3);
    addRow("zeros behind", whole() + QByteArray(64, '\0'), whole(), 3);
    addRow("a fault", start() + mark(5, 0) + mark(5, 1), start() + mark(5, 0) + mark(5, 1), 3);
    const QByteArray foreign = blocks::block(0xBAD, "...!");
    addRow("other blocks", start() + foreign + packets().join(), start() + foreign + packets().join(), 0);
}

void CheckTests::repairs()
{
    QFETCH(QByteArray, bytes);
    const QString out = files.path(QTest::currentDataTag());
    const ProgramRun run = padscope({"check", "--repair", out, "-"}, bytes);
    QTEST(Files::read(out), "repaired");
    QTEST(run.status, "status");
    QCOMPARE(QFile::permissions(out),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
}

void CheckTests::nothingToRepair()
{
    const QString out = files.path("nothing");
    for (const QByteArray &bytes : {QByteArray(), QByteArray("0123456789abcdef")}) {
        QCOMPARE(padscope({"check", "--repair", out, "-"}, bytes).status, 1);
        QVERIFY(!QFile::exists(out));
    }
}

void CheckTests::repairOverwritesNothing()
{
    const QString path = files.write("input", whole().chopped(1));
    const ProgramRun run = padscope({"check", "--repair", path, path});
    QCOMPARE(QString(run.errors), "padscope: " + path + ": File exists\n");
    QCOMPARE(run.status, 1);
    QCOMPARE(Files::read(path), whole().chopped(1));
}

PADSCOPE_TESTS(CheckTests);
#include "tst_check.moc"
