#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

namespace {

QByteArray mark(quint64 sequence)
{
    return blocks::packet(5, packetBytes(6, 0, 0, 0, 0, "x", 0, 0, sequence));
}

} // namespace

/// `padscope check --repair` as a process.
class RepairTests : public QObject
{
    Q_OBJECT

private slots:
    void repairs_data();
    void repairs();
    void nothingToRepair();
    void repairLeavesOutWhatIsTooLarge();
    void repairOverwritesNothing();

private:
    const Files files;
};

void RepairTests::repairs_data()
{
    addColumns<QByteArray, QByteArray, int>("bytes", "repaired", "status");
    addRow("whole", whole(), whole(), 0);
    addRow("cut", whole().chopped(1), start() + packets().mid(0, 10).join(), 3);
    addRow("zeros behind", whole() + QByteArray(64, '\0'), whole(), 3);
    addRow("a fault", start() + mark(0) + mark(1), start() + mark(0) + mark(1), 3);
    const QByteArray foreign = blocks::block(0xBAD, "...!");
    addRow("other blocks", start() + foreign + packets().join(), start() + foreign + packets().join(), 0);
}

void RepairTests::repairs()
{
    QFETCH(QByteArray, bytes);
    const QString out = files.path(QTest::currentDataTag());
    const ProgramRun run = padscope({"check", "--repair", out, "-"}, bytes);
    QTEST(Files::read(out), "repaired");
    QTEST(run.status, "status");
    QCOMPARE(QFile::permissions(out),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
}

void RepairTests::nothingToRepair()
{
    const QString out = files.path("nothing");
    for (const QByteArray &bytes : {QByteArray(), QByteArray("0123456789abcdef")}) {
        const ProgramRun run = padscope({"check", "--repair", out, "-"}, bytes);
        QCOMPARE(run.status, 1);
        QVERIFY(QString(run.errors)
                    .endsWith("padscope: " + out + ": not written: no whole block in standard input\n"));
        QVERIFY(!QFile::exists(out));
    }
}

/// Wireshark reads it.
void RepairTests::repairLeavesOutWhatIsTooLarge()
{
    const QByteArray large = blocks::block(0x77, QByteArray(17 * 1024 * 1024, 'x'));
    const QString in = files.write("large", start() + large + packets().join());
    QCOMPARE(padscope({"check", in}).status, 0);
    const QString out = files.path("without");
    const ProgramRun run = padscope({"check", "--repair", out, in});
    QCOMPARE(QString(run.errors),
             "padscope: " + in + ": byte 72: a block above 16 MiB, which is left out of " + out + '\n');
    QCOMPARE(run.status, 3);
    QCOMPARE(Files::read(out), whole());
}

void RepairTests::repairOverwritesNothing()
{
    const QString path = files.write("input", whole().chopped(1));
    const ProgramRun run = padscope({"check", "--repair", path, path});
    QCOMPARE(QString(run.errors), "padscope: " + path + ": File exists\n");
    QCOMPARE(run.status, 1);
    QCOMPARE(Files::read(path), whole().chopped(1));
}

PADSCOPE_TESTS(RepairTests);
#include "tst_repair.moc"
