#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// `padscope redact` as a process.
class RedactTests : public QObject
{
    Q_OBJECT

private slots:
    void example_data();
    void example();
    void summary();
    void whatIsLeftOut();
    void comments();
    void sectionLengths();
    void badInput_data();
    void badInput();
    void overwritesNothing();
    void permissions();
    void noFolder();
    void noRoom();
    void interrupted();

private:
    const Files files;
};

namespace {

QByteArray stamped(quint64 ms, const QByteArray &data, bool isBigEndian = false)
{
    return blocks::packet(examplecapture::startNs + ms * 1'000'000, data, {}, isBigEndian);
}

/// The packets of the example in which something is blanked; the others stay.
QList<QByteArray> redactedPackets()
{
    const auto hex = [](const char *digits) { return QByteArray::fromHex(digits); };
    QList<QByteArray> list = packets();
    list[4] = stamped(100, packetBytes(1, 129, 0, 1001, 0, hex("0a2f0400000000000009"), 1, 0, 4));
    list[6] = stamped(300, packetBytes(1, 129, 0, 1001, 0, hex("030100"), 1, 0, 6));
    return list;
}

} // namespace

void RedactTests::example_data()
{
    addColumns<QByteArray, QByteArray, int, QByteArray>("bytes", "redacted", "status", "errors");
    const QByteArray redacted = start() + redactedPackets().join();
    addRow("whole", whole(), redacted, 0, QByteArray());
    addRow("cut", whole().chopped(1), start() + redactedPackets().mid(0, 10).join(), 3,
           "padscope: standard input: byte " + QByteArray::number(whole().size() - packets().last().size()) +
               ": it ends within a block\n");
    const auto onePacket = [](const char *payload, int flags) {
        return blocks::section(true) + blocks::interface("driver", true) +
               stamped(1, packetBytes(1, flags, 0, 1001, 0, QByteArray::fromHex(payload)), true);
    };
    addRow("big-endian", onePacket("0a2f040100ffff030009", 1), onePacket("0a2f0400000000000009", 129), 3,
           QByteArray());
}

/// From a pipe and from a file.
void RedactTests::example()
{
    QFETCH(QByteArray, bytes);
    const QString out = files.path(QTest::currentDataTag());
    const ProgramRun run = padscope({"redact", "-", "-o", out}, bytes);
    QTEST(Files::read(out), "redacted");
    QTEST(run.errors, "errors");
    QTEST(run.status, "status");
    const QString second = out + " again";
    QTEST(padscope({"redact", files.write("in", bytes), "--output", second}).status, "status");
    QTEST(Files::read(second), "redacted");
}

void RedactTests::summary()
{
    const QString out = files.path("summary");
    const ProgramRun run = padscope({"redact", "-", "-o", out}, whole() + blocks::block(0x77, "...."));
    QCOMPARE(QString(run.output), out + R"(:
  board: 1 packets, 0 edited
    left: the device record, which may have a serial number
  end: 1 packets, 0 edited
    left: all
  hotplug: 1 packets, 0 edited
    left: all
  mark: 1 packets, 0 edited
    left: its text
  orvexSendCommand(): 1 packets, 0 edited
    left: numbers, command
  other calls: 1 packets, 0 edited
    left: numbers
  other returns: 1 packets, 0 edited
    left: numbers
  signal4: 1 packets, 1 edited
    blanked: integrator0, integrator60, integrator120
    left: integrations
  status: 1 packets, 0 edited
    left: all
  text: 1 packets, 0 edited
    blanked: hexadecimal digits of lines that may be signals
    left: lines of prose, other characters, words of letters, frequencies
  unknown: 1 packets, 1 edited
    blanked: all behind length and type
  blanked in all reports: bytes that no field has
  left in all packets: times, lengths, types, boards, results and counters
  left out: 1 blocks that are not known
)");
}

/// Packets of other formats and of a later version, and blocks of other types, may hold anything.
void RedactTests::whatIsLeftOut()
{
    QByteArray later = packetBytes(6, 0, 0, 0, 0, "secret");
    later[2] = 2;
    const QString out = files.path("left out");
    const ProgramRun run =
        padscope({"redact", "-", "-o", out},
                 start() + stamped(0, "secret") + blocks::block(0xBAD, "secret..") + stamped(0, later) +
                     stamped(0, "PD\x01(secret") + blocks::block(0x77, "secret..") + packets().join());
    QCOMPARE(Files::read(out), start() + redactedPackets().join());
    QVERIFY(run.lines().contains("  left out: 5 blocks that are not known"));
    QVERIFY(run.errors.contains("a packet of a later version of the format"));
    QCOMPARE(run.status, 1);
}

void RedactTests::comments()
{
    const QByteArray bytes =
        start() +
        blocks::packet(1, packetBytes(6, 0, 0, 0, 0, "here"),
                       blocks::option(1, "here") + blocks::option(1, "?") + blocks::option(0, {})) +
        packets().last();
    const QString out = files.path("comments");
    const ProgramRun run = padscope({"redact", "-", "-o", out}, bytes);
    QCOMPARE(Files::read(out), bytes);
    QVERIFY(run.lines().contains("  left: 2 comments, those of marks included"));
}

/// It would no longer be right.
void RedactTests::sectionLengths()
{
    QByteArray bytes = whole();
    bytes.replace(16, 8, blocks::number(quint64(whole().size()) - 28, 8));
    const QString out = files.path("section");
    QCOMPARE(padscope({"redact", "-", "-o", out}, bytes).status, 0);
    QCOMPARE(Files::read(out), start() + redactedPackets().join());
}

void RedactTests::badInput_data()
{
    addColumns<QByteArray, QByteArray>("bytes", "error");
    addRow("empty", QByteArray(), QByteArray("byte 0: it is empty"));
    addRow("no capture", QByteArray("a letter\n\n\n\n"),
           QByteArray("byte 0: no pcapng file: it does not begin with a section header"));
    addRow("another's packets", start() + stamped(0, "secret"), QByteArray("no packet of a capture in it"));
}

void RedactTests::badInput()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, error);
    const Files folder;
    const ProgramRun run = padscope({"redact", "-", "-o", folder.path("out")}, bytes);
    QCOMPARE(run.errors, "padscope: standard input: " + error + "\n");
    QCOMPARE(run.status, 2);
    const QString missing = folder.path("missing");
    const ProgramRun second = padscope({"redact", missing, "-o", folder.path("out")});
    QCOMPARE(QString(second.errors), "padscope: " + missing + ": No such file or directory\n");
    QCOMPARE(second.status, 2);
    QCOMPARE(folder.names(), QStringList());
}

void RedactTests::overwritesNothing()
{
    const Files folder;
    const QString path = folder.write("input", whole());
    const ProgramRun run = padscope({"redact", path, "-o", path});
    QCOMPARE(QString(run.errors),
             "padscope: --output: " + path + " exists, and is not overwritten; see --help\n");
    QCOMPARE(run.status, 2);
    QCOMPARE(Files::read(path), whole());
    QVERIFY(QFile::link("nowhere", folder.path("link")));
    QCOMPARE(padscope({"redact", path, "-o", folder.path("link")}).status, 2);
    QCOMPARE(folder.names(), (QStringList{"input", "link"}));
}

/// It is made to be passed on: the user's umask decides.
void RedactTests::permissions()
{
    const QString path = files.write("permissions", whole());
    const QList<QPair<QByteArray, QFile::Permissions>> masks{
        {"022", QFile::ReadGroup | QFile::ReadOther}, {"027", QFile::ReadGroup}, {"077", {}}};
    for (const auto &[mask, others] : masks) {
        const QString out = files.path("masked " + mask);
        runProgram("/bin/sh", {"-c", "umask " + mask + "; exec \"$0\" redact \"$1\" -o \"$2\"",
                               PADSCOPE_PROGRAM, path, out});
        QCOMPARE(QFile::permissions(out),
                 QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | others);
    }
}

void RedactTests::noFolder()
{
    const QString out = files.path("missing/out");
    const ProgramRun run = padscope({"redact", "-", "-o", out}, whole());
    QCOMPARE(QString(run.errors), "padscope: " + out + ": No such file or directory\n");
    QCOMPARE(run.status, 1);
}

/// Of files above 512 bytes.
void RedactTests::noRoom()
{
    const Files folder;
    const QString out = folder.path("out");
    const QString in = files.write("in", whole());
    const ProgramRun run = runProgram(
        "/bin/sh", {"-c", "ulimit -f 1; exec \"$0\" redact \"$1\" -o \"$2\"", PADSCOPE_PROGRAM, in, out});
    QCOMPARE(QString(run.errors), "padscope: " + out + ": File too large\n");
    QCOMPARE(run.status, 1);
    QCOMPARE(folder.names(), QStringList());
}

void RedactTests::interrupted()
{
    const Files folder;
    QProcess process;
    process.start(PADSCOPE_PROGRAM, {"redact", "-", "-o", folder.path("out")});
    process.write(whole());
    QTRY_COMPARE(folder.names().size(), 1);
    QVERIFY(folder.names()[0].startsWith("out."));
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(folder.names(), QStringList());
}

PADSCOPE_TESTS(RedactTests);
#include "tst_redact.moc"
