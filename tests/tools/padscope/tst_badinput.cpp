#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// How the verbs that read a capture end with one that is not as it should be.
class BadInputTests : public QObject
{
    Q_OBJECT

private slots:
    void damaged_data();
    void damaged();
    void cutBeforeTheFirstPacket_data();
    void cutBeforeTheFirstPacket();
    void aLaterVersion_data();
    void aLaterVersion();
    void onlyALaterVersion_data();
    void onlyALaterVersion();

private:
    ProgramRun run(const QByteArray &bytes) const;
    bool isAnythingWritten() const;

    const Files files;
};

namespace {

QByteArray aPacketOfALaterVersion()
{
    return blocks::packet(0, packetBytes(6, 0, 0, 0, 0, "x").replace(2, 1, "\x02"));
}

QByteArray line(int offset, const QByteArray &reason)
{
    return "padscope: standard input: byte " + QByteArray::number(offset) + ": " + reason + '\n';
}

} // namespace

/// The verb of the row, from standard input.
ProgramRun BadInputTests::run(const QByteArray &bytes) const
{
    QFETCH(QStringList, arguments);
    for (const char *name : {"out.html", "out.svg", "out.pcapng"})
        QFile::remove(files.path(name));
    for (QString &argument : arguments) {
        if (argument.startsWith("out."))
            argument = files.path(argument.toUtf8());
    }
    if (arguments[0] == "diff")
        arguments += files.write("good.pcapng", whole());
    return padscope(arguments, bytes);
}

bool BadInputTests::isAnythingWritten() const
{
    return !files.names().filter("out.").isEmpty();
}

namespace {

const QStringList decodeArguments{"decode", "-"};
const QStringList infoArguments{"info", "-"};
const QStringList checkArguments{"check", "-"};
const QStringList statsArguments{"stats", "-"};
const QStringList redactArguments{"redact", "-", "-o", "out.pcapng"};
const QStringList reportArguments{"report", "-", "-o", "out.html"};
const QStringList plotArguments{"plot", "-", "--what", "rates", "-o", "out.svg"};
const QStringList diffArguments{"diff", "-"};

} // namespace

void BadInputTests::damaged_data()
{
    addColumns<QStringList>("arguments");
    addRow("stats", statsArguments);
    addRow("redact", redactArguments);
    addRow("report", reportArguments);
    addRow("plot", plotArguments);
    addRow("diff", diffArguments);
}

/// Nothing is made of what comes before the damage.
void BadInputTests::damaged()
{
    const ProgramRun found = run(whole() + QByteArray(64, '\0'));
    QCOMPARE(found.output, QByteArray());
    QCOMPARE(found.errors, line(whole().size(), "a block length of 0"));
    QCOMPARE(found.status, 2);
    QVERIFY(!isAnythingWritten());
}

void BadInputTests::cutBeforeTheFirstPacket_data()
{
    addColumns<QStringList, int>("arguments", "status");
    addRow("decode", decodeArguments, 3);
    addRow("info", infoArguments, 3);
    addRow("check", checkArguments, 3);
    addRow("stats", statsArguments, 2);
    addRow("redact", redactArguments, 2);
    addRow("report", reportArguments, 2);
    addRow("plot", plotArguments, 2);
    addRow("diff", diffArguments, 2);
}

void BadInputTests::cutBeforeTheFirstPacket()
{
    const ProgramRun found = run(start() + packets().first().chopped(1));
    QCOMPARE(found.errors, line(start().size(), "it ends within a block"));
    QTEST(found.status, "status");
    QVERIFY(!isAnythingWritten());
}

void BadInputTests::aLaterVersion_data()
{
    addColumns<QStringList, bool>("arguments", "tellsSomething");
    addRow("decode", decodeArguments, true);
    addRow("info", infoArguments, true);
    addRow("check", checkArguments, false);
    addRow("stats", statsArguments, true);
    addRow("redact", redactArguments, true);
    addRow("report", reportArguments, true);
    addRow("plot", plotArguments, true);
}

/// All others are shown.
void BadInputTests::aLaterVersion()
{
    QFETCH(bool, tellsSomething);
    const ProgramRun found = run(whole() + aPacketOfALaterVersion());
    QCOMPARE(found.errors, line(whole().size(), "a packet of a later version of the format; 1 of these are "
                                                "passed by"));
    QCOMPARE(found.status, 1);
    QCOMPARE(isAnythingWritten() || !found.output.isEmpty(), tellsSomething);
}

void BadInputTests::onlyALaterVersion_data()
{
    aLaterVersion_data();
}

void BadInputTests::onlyALaterVersion()
{
    const ProgramRun found = run(start() + aPacketOfALaterVersion());
    QCOMPARE(found.errors, line(start().size(), "a packet of a later version of the format; 1 of these are "
                                                "passed by"));
    QCOMPARE(found.status, 1);
    QVERIFY(!isAnythingWritten());
}

PADSCOPE_TESTS(BadInputTests);
#include "tst_badinput.moc"
