#include <nlohmann/json.hpp>

#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// `padscope stats` as a process.
class StatsTests : public QObject
{
    Q_OBJECT

private slots:
    void text();
    void json();
    void nothing();
    void numbers();
    void filters_data();
    void filters();
    void sessions();
    void statuses_data();
    void statuses();
    void badInput_data();
    void badInput();
    void noPackets_data();
    void noPackets();
    void fullOutput();

private:
    const Files files;
};

namespace {

QByteArray signal4(quint64 ms, const char *digits)
{
    return blocks::packet(examplecapture::startNs + ms * 1'000'000,
                          packetBytes(1, 1, 0, 1001, 0, QByteArray::fromHex(digits)));
}

/// Of the example, with a second report.
QByteArray twoReports()
{
    QList<QByteArray> list = packets();
    list.insert(5, signal4(150, "0a2f04 0400 0200 0300 ff"));
    return start() + list.join();
}

} // namespace

void StatsTests::text()
{
    const ProgramRun run = padscope({"stats", "-"}, twoReports());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.output, QByteArray(R"(standard input:
  session 5f0c93a1
    board 1001    count  a second  gap ms: least  median     p99  greatest  jitter ms: least  median    p99  greatest
    SignalReport      2      20.0         50.000  50.000  50.000    50.000             0.000   0.000  0.000     0.000
    TextReport        1       0.0              -       -       -         -                 -       -      -         -
    unknown           1       0.0              -       -       -         -                 -       -      -         -
    fields                 count  least     mean  greatest
    signal4.integrator0        2      1    2.500         4
    signal4.integrator60       2     -1    0.500         2
    signal4.integrator120      2      3    3.000         3
    signal4.integrations       2      9  132.000       255
    calls             count  returned  ms: least  median    p99  greatest
    orvexAttach           1         1      1.000   1.000  1.000     1.000
    orvexSendCommand      1         0          -       -      -         -
)"));
    QCOMPARE(run.status, 0);
}

void StatsTests::json()
{
    const ProgramRun run = padscope({"stats", "--format", "json", "-"}, twoReports());
    QCOMPARE(run.status, 0);
    const auto expected = nlohmann::json::parse(R"json({
        "file": "standard input",
        "sessions": [{
            "session": "5f0c93a1",
            "boards": [{
                "board": 1001,
                "types": [{
                    "type": "SignalReport",
                    "count": 2,
                    "perSecond": 20.0,
                    "gapsNs": {"count": 1, "least": 50000000, "median": 50000000, "p99": 50000000, "greatest": 50000000},
                    "jitterNs": {"count": 1, "least": 0, "median": 0, "p99": 0, "greatest": 0},
                    "fields": [
                        {"field": "signal4.integrator0", "count": 2, "least": 1, "mean": 2.5, "greatest": 4, "unit": ""},
                        {"field": "signal4.integrator60", "count": 2, "least": -1, "mean": 0.5, "greatest": 2, "unit": ""},
                        {"field": "signal4.integrator120", "count": 2, "least": 3, "mean": 3.0, "greatest": 3, "unit": ""},
                        {"field": "signal4.integrations", "count": 2, "least": 9, "mean": 132.0, "greatest": 255, "unit": ""}
                    ]
                }, {
                    "type": "TextReport",
                    "count": 1,
                    "perSecond": 0.0,
                    "gapsNs": null,
                    "jitterNs": null,
                    "fields": []
                }, {
                    "type": "unknown",
                    "count": 1,
                    "perSecond": 0.0,
                    "gapsNs": null,
                    "jitterNs": null,
                    "fields": []
                }]
            }],
            "calls": [{
                "call": "orvexAttach",
                "count": 1,
                "returned": 1, "durationsNs": {"count": 1, "least": 1000000, "median": 1000000, "p99": 1000000, "greatest": 1000000}
            }, {
                "call": "orvexSendCommand",
                "count": 1,
                "returned": 0, "durationsNs": null
            }]
        }]
    })json");
    QCOMPARE(nlohmann::json::parse(run.output.toStdString()).dump(), expected.dump());
}

/// A capture without a report or a call.
void StatsTests::nothing()
{
    const QByteArray bytes = start() + packets()[0] + packets()[10];
    QCOMPARE(padscope({"stats", "-"}, bytes).output, QByteArray("standard input:\n"));
    QCOMPARE(padscope({"stats", "--format", "json", "-"}, bytes).output,
             QByteArray("{\n  \"file\": \"standard input\",\n  \"sessions\": []\n}\n"));
}

/// Of volts there are fractions.
void StatsTests::numbers()
{
    const QByteArray adc = QByteArray::fromHex("34770c f401") + QByteArray(47, '\0');
    const QByteArray bytes = start() + signal4(1, adc.toHex());
    QVERIFY(
        padscope({"stats", "-"}, bytes).lines().contains("    adc.volts       1  2.440    2.440     2.440"));
    const auto json =
        nlohmann::json::parse(padscope({"stats", "--format", "json", "-"}, bytes).output.toStdString());
    QCOMPARE(json["sessions"][0]["boards"][0]["types"][0]["fields"][1].dump(),
             std::string(
                 R"({"count":1,"field":"adc.volts","greatest":2.44,"least":2.44,"mean":2.44,"unit":"V"})"));
}

void StatsTests::filters_data()
{
    addColumns<QStringList, QString>("options", "first");
    addRow("board", QStringList{"--board", "1001"},
           QString("board 1001,SignalReport,TextReport,unknown,calls,orvexSendCommand"));
    addRow("no such board", QStringList{"--board", "7"}, QString(""));
    addRow("type", QStringList{"--type", "SignalReport"}, QString("board 1001,SignalReport"));
    addRow("types", QStringList{"--type", "signal4", "--type", "unknown"},
           QString("board 1001,SignalReport,unknown"));
    addRow("from", QStringList{"--from", "0.2"},
           QString("board 1001,TextReport,unknown,calls,orvexSendCommand"));
    addRow("to", QStringList{"--to", "0.2"}, QString("board 1001,SignalReport,calls,orvexAttach"));
}

void StatsTests::filters()
{
    QFETCH(QStringList, options);
    const ProgramRun run = padscope(QStringList{"stats"} + options + QStringList{"-"}, whole());
    QCOMPARE(run.status, 0);
    QList<QByteArray> names;
    for (const QByteArray &line : run.lines()) {
        const QByteArray name = line.simplified();
        if (line.startsWith("    ") && !name.startsWith("signal4") && !name.startsWith("fields"))
            names += name.startsWith("board") ? "board 1001" : name.left(name.indexOf(' '));
    }
    QTEST(QString::fromUtf8(names.join(',')), "first");
}

void StatsTests::sessions()
{
    QByteArray other = packets()[4];
    other.replace(other.indexOf(blocks::number(0x5f0c93a1, 4)), 4, blocks::number(0x2a, 4));
    const ProgramRun run = padscope({"stats", "-"}, start() + packets()[4] + other);
    QCOMPARE(run.lines().indexOf("  session 5f0c93a1"), 1);
    QVERIFY(run.lines().indexOf("  session 0000002a") > 1);
}

void StatsTests::statuses_data()
{
    addColumns<QByteArray, int, QByteArray>("bytes", "status", "errors");
    addRow("whole", whole(), 0, QByteArray());
    addRow("losses", whole(2), 3, QByteArray());
    addRow("no end", start() + packets().mid(0, 10).join(), 3, QByteArray());
    addRow("cut off", whole().chopped(1), 3,
           "padscope: standard input: byte " + QByteArray::number(whole().size() - packets().last().size()) +
               ": it ends within a block\n");
}

void StatsTests::statuses()
{
    QFETCH(QByteArray, bytes);
    const ProgramRun run = padscope({"stats", "-"}, bytes);
    QVERIFY(run.lines().value(3).startsWith("    SignalReport "));
    QTEST(run.errors, "errors");
    QTEST(run.status, "status");
}

void StatsTests::badInput_data()
{
    addColumns<QByteArray, QByteArray>("bytes", "error");
    addRow("no capture", QByteArray("a letter\n\n\n\n"),
           QByteArray("byte 0: no pcapng file: it does not begin with a section header"));
    addRow("zeros behind", whole() + QByteArray(64, '\0'),
           "byte " + QByteArray::number(whole().size()) + ": a block length of 0");
}

void StatsTests::badInput()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, error);
    const QString path = files.write("bad.pcapng", bytes);
    const ProgramRun run = padscope({"stats", path});
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors, "padscope: " + path.toUtf8() + ": " + error + "\n");
    QCOMPARE(run.status, 2);
    const ProgramRun missing = padscope({"stats", files.path("missing")});
    QCOMPARE(missing.errors, "padscope: " + files.path("missing").toUtf8() + ": No such file or directory\n");
    QCOMPARE(missing.output, QByteArray());
    QCOMPARE(missing.status, 2);
}

void StatsTests::noPackets_data()
{
    addColumns<QByteArray, QByteArray>("bytes", "error");
    addRow("empty", QByteArray(), QByteArray("byte 0: it is empty"));
    addRow("no capture", QByteArray("a letter\n\n\n\n"),
           QByteArray("byte 0: no pcapng file: it does not begin with a section header"));
    addRow("no packets", start(), QByteArray("no packet of a capture in it"));
}

void StatsTests::noPackets()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, error);
    const ProgramRun run = padscope({"stats", "-"}, bytes);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors, "padscope: standard input: " + error + "\n");
    QCOMPARE(run.status, 2);
}

void StatsTests::fullOutput()
{
    const QString path = files.write("a.pcapng", whole());
    const ProgramRun run =
        runProgram("/bin/sh", {"-c", "exec \"$0\" stats \"$1\" >/dev/full", PADSCOPE_PROGRAM, path});
    QCOMPARE(run.errors, QByteArray("padscope: standard output: No space left on device\n"));
    QCOMPARE(run.status, 1);
}

PADSCOPE_TESTS(StatsTests);
#include "tst_stats.moc"
