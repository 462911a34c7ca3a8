#include <nlohmann/json.hpp>

#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

namespace {

/// What stands behind a line's beginning, of a session with these packets.
QList<QByteArray> linesOf(const QByteArray &beginning, const QList<QByteArray> &packets)
{
    QByteArray bytes = start();
    for (int i = 0; i < packets.size(); ++i)
        bytes += blocks::packet(quint64(i + 1), packets[i]);
    QList<QByteArray> found;
    for (const QByteArray &line : padscope({"info", "-"}, bytes).lines()) {
        if (line.startsWith(beginning))
            found += line.mid(beginning.size());
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

/// `padscope info` as a process.
class InfoTests : public QObject
{
    Q_OBJECT

private slots:
    void text();
    void json();
    void ends_data();
    void ends();
    void damage_data();
    void damage();
    void sections();
    void cutPackets();
    void editedPackets();
    void reportsWithoutABoard();
    void manySessions();
    void severalFiles();
    void notesMoveNoCursor();
    void callsThatNeverReturned_data();
    void callsThatNeverReturned();
    void returnsThatWereNotRecorded();

private:
    const Files files;
};

void InfoTests::text()
{
    const ProgramRun run = padscope({"info", "-"}, whole(2) + blocks::block(0x77, "...."));
    QCOMPARE(run.output,
             QByteArray("standard input:\n"
                        "  session 5f0c93a1: 11 packets in 1.000 s, 2 lost, clean, exit status 0\n"
                        "    began at   2023-11-14T22:13:20.000000000Z\n"
                        "    board      1\n"
                        "    call       2\n"
                        "    end        1\n"
                        "    hotplug    1\n"
                        "    mark       1\n"
                        "    report     3\n"
                        "    return     1\n"
                        "    status     1\n"
                        "    board 1001: 3 reports, 10.0 a second, 2 lost\n"
                        "      SignalReport       1\n"
                        "      TextReport         1\n"
                        "      unknown            1\n"
                        "    never returned: orvexSendCommand(1001, \"?\\r\")\n"
                        "    note: hi\n"
                        "  passed by: 0 foreign packets, 1 other blocks, 0 packets cut within their header, "
                        "0 packets of a later version\n"));
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 3);
}

void InfoTests::json()
{
    const ProgramRun run = padscope({"info", "--format", "json", "-"}, whole() + blocks::block(0x77, "....") +
                                                                           blocks::packet(5, "foreign") +
                                                                           blocks::packet(6, "PD\x01("));
    QCOMPARE(run.status, 0);
    const auto expected = nlohmann::json::parse(R"json([{
        "file": "standard input",
        "cutOff": false,
        "damage": null,
        "sections": [{"application": "", "os": "", "hardware": "", "comment": ""}],
        "sessions": [{
            "session": "5f0c93a1",
            "packets": 11,
            "start": "2023-11-14T22:13:20.000000000Z",
            "seconds": 1.0,
            "lost": 0,
            "cut": 0,
            "edited": 0,
            "end": "clean, exit status 0",
            "kinds": {"board": 1, "call": 2, "end": 1, "hotplug": 1, "mark": 1, "report": 3, "return": 1, "status": 1},
            "boards": [{
                "board": 1001,
                "reports": 3,
                "perSecond": 10.0,
                "lost": 0,
                "types": {"SignalReport": 1, "TextReport": 1, "unknown": 1}
            }],
            "neverReturned": ["orvexSendCommand(1001, \"?\\r\")"],
            "returnNotRecorded": [],
            "notes": ["hi"]
        }],
        "passedBy": {"foreignPackets": 1, "otherBlocks": 1, "cutHeaders": 1, "laterVersions": 0}
    }])json");
    QCOMPARE(nlohmann::json::parse(run.output.toStdString()).dump(), expected.dump());
}

void InfoTests::ends_data()
{
    addColumns<QByteArray, QString>("bytes", "end");
    addRow("clean", whole(), "clean, exit status 0");
    addRow("cut off", whole().chopped(1), "cut off");
    addRow("sliced", start() + packets().mid(0, 10).join(), "no clean end");
    const auto ended = [](const QByteArray &how) {
        return start() + blocks::packet(5, packetBytes(8, 0, 0, 0, 0, QByteArray::fromHex(how)));
    };
    addRow("a signal", ended("02000000 09000000 00000000"), "signal 9");
    addRow("unknown", ended("03000000 00000000 00000000"), "unknown");
    addRow("a slice", ended("04000000 00000000 00000000"), "a slice");
}

void InfoTests::ends()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, end);
    QVERIFY(padscope({"info", "-"}, bytes).lines().value(1).endsWith(" lost, " + end.toUtf8()));
}

void InfoTests::damage_data()
{
    addColumns<QByteArray, bool, int, QString>("bytes", "isCutOff", "offset", "reason");
    addRow("cut off", whole().chopped(1), true, int(whole().size() - packets().last().size()),
           "it ends within a block");
    addRow("empty", QByteArray(), false, 0, "it is empty");
    addRow("zeros behind", whole() + QByteArray(64, '\0'), false, int(whole().size()), "a block length of 0");
}

void InfoTests::damage()
{
    QFETCH(QByteArray, bytes);
    const ProgramRun run = padscope({"info", "--format", "json", "-"}, bytes);
    const auto file = nlohmann::json::parse(run.output.toStdString())[0];
    QTEST(file["cutOff"].get<bool>(), "isCutOff");
    QTEST(file["damage"]["offset"].get<int>(), "offset");
    QTEST(QString::fromStdString(file["damage"]["reason"]), "reason");
}

/// Who has written them, each once.
void InfoTests::sections()
{
    using blocks::number;
    using blocks::option;
    const QByteArray section = blocks::block(0x0A0D0D0A, number(0x1A2B3C4D, 4) + number(1, 2) + number(0, 2) +
                                                             QByteArray(8, '\xFF') + option(2, "x86_64") +
                                                             option(3, "Linux 6.1") + option(4, "a\x1b"));
    const QByteArray bytes = section + blocks::interface("driver") + packets().join();
    QCOMPARE(padscope({"info", "-"}, bytes).lines().value(1),
             QByteArray("  written by a\\x1b, Linux 6.1, x86_64"));
    const ProgramRun run = padscope({"info", "--format", "json", "-"}, bytes + start());
    const auto expected = nlohmann::json::parse(
        R"json([{"application": "a\u001b", "os": "Linux 6.1", "hardware": "x86_64", "comment": ""}])json");
    QCOMPARE(nlohmann::json::parse(run.output.toStdString())[0]["sections"].dump(), expected.dump());
}

/// By a tool, or by the recorder.
void InfoTests::cutPackets()
{
    QByteArray byTool = packets()[4];
    byTool.replace(24, 4, blocks::number(51, 4)); // the original length
    const int cutFlag = 8;
    const QByteArray byRecorder = blocks::packet(5, packetBytes(1, 1 + cutFlag, 0, 7, 0, "x"));
    const ProgramRun run = padscope({"info", "-"}, start() + byTool + byRecorder + packets()[5]);
    QVERIFY(run.lines().contains("    cut: 2 packets"));
}

void InfoTests::editedPackets()
{
    const QByteArray bytes = start() + blocks::packet(1, packetBytes(6, 128, 0, 0, 0, "x")) + packets()[4];
    QVERIFY(padscope({"info", "-"}, bytes).lines().contains("    edited: 1 packets"));
    const ProgramRun run = padscope({"info", "--format", "json", "-"}, bytes);
    QVERIFY(run.output.contains("\"edited\": 1,"));
}

void InfoTests::reportsWithoutABoard()
{
    const QByteArray bytes =
        start() + blocks::packet(5, packetBytes(1, 0, 0, 0, 0, "x")) +
        blocks::packet(6, packetBytes(7, 0, 0, 0, 0, QByteArray::fromHex("01000000 00000000")));
    const ProgramRun text = padscope({"info", "-"}, bytes);
    QVERIFY(text.lines().contains("    no board: 1 reports, 0.0 a second, 0 lost"));
    QVERIFY(!text.output.contains("board 0"));
    const ProgramRun json = padscope({"info", "--format", "json", "-"}, bytes);
    const auto boards = nlohmann::json::parse(json.output.toStdString())[0]["sessions"][0]["boards"];
    QCOMPARE(boards.size(), std::size_t{1});
    QVERIFY(boards[0]["board"].is_null());
}

/// A search among all of them for each packet would take longer than a test may.
void InfoTests::manySessions()
{
    constexpr int count = 100'000;
    QByteArray bytes = start();
    for (int i = 0; i < count; ++i) {
        QByteArray packet = packetBytes(6, 0, 0, 0, 0, "x");
        packet.replace(24, 4, blocks::number(quint64(i), 4));
        bytes += blocks::packet(quint64(i), packet);
    }
    const ProgramRun run = padscope({"info", files.write("many", bytes)});
    QCOMPARE(run.output.count("  session "), count);
    QCOMPARE(run.status, 3);
}

void InfoTests::severalFiles()
{
    const QString good = files.write("good", whole());
    const QString cut = files.write("cut", whole().chopped(1));
    const ProgramRun run = padscope({"info", cut, good});
    QCOMPARE(run.status, 3);
    QVERIFY(run.lines().contains((cut + ": cut off").toUtf8()));
    QVERIFY(run.lines().contains((good + ':').toUtf8()));
    QCOMPARE(padscope({"info", cut, "/nowhere", good}).status, 1);
}

void InfoTests::notesMoveNoCursor()
{
    const QByteArray note = blocks::packet(5, packetBytes(6, 0, 0, 0, 0, "a\x1b[2J\x7f\xc3\xa4\xc2\x9b"));
    QVERIFY(
        padscope({"info", "-"}, start() + note).output.endsWith("note: a\\x1b[2J\\x7f\xc3\xa4\\xc2\\x9b\n"));
}

void InfoTests::callsThatNeverReturned_data()
{
    addColumns<QList<QByteArray>, QList<QByteArray>>("packets", "calls");
    const int withinCall = 4;
    const auto at = [](int kind, int flags, int call, quint64 sequence, quint32 link = 0) {
        return packetBytes(kind, flags, call, 0, 0, {}, link, 0, sequence);
    };
    const auto onOtherThread = [](QByteArray packet) { return packet.replace(28, 4, "self"); };
    const QByteArray attach = at(2, 0, 1, 0);
    const QByteArray nested = at(2, withinCall, 2, 1);
    const QList<QByteArray> both{"orvexAttach()", "orvexDetach()"};
    addRow("none", QList<QByteArray>{attach, at(3, 0, 1, 1, 0)}, QList<QByteArray>());
    addRow("one within another", QList<QByteArray>{attach, nested}, both);
    addRow("the outer one", QList<QByteArray>{attach, nested, at(3, withinCall, 2, 2, 1)}, both.mid(0, 1));
    addRow("a return that was lost, and the one around it",
           QList<QByteArray>{attach, nested, at(3, 0, 1, 3, 0)}, QList<QByteArray>());
    addRow("a return that was lost, and a later call", QList<QByteArray>{attach, at(2, 0, 2, 3)},
           both.mid(1));
    addRow("a return that was lost, and a later report", QList<QByteArray>{attach, at(1, 1, 0, 3)},
           QList<QByteArray>());
    addRow("a later report, and nothing is missing", QList<QByteArray>{attach, at(1, 1, 0, 1)},
           both.mid(0, 1));
    addRow("a report within a call", QList<QByteArray>{attach, at(1, 1 + withinCall, 0, 1)}, both.mid(0, 1));
    addRow("another thread", QList<QByteArray>{attach, onOtherThread(at(2, 0, 2, 1))}, both);
    addRow("another thread's reports", QList<QByteArray>{attach, onOtherThread(at(1, 1, 0, 1))},
           both.mid(0, 1));
    addRow("a call that was lost", QList<QByteArray>{attach, at(3, withinCall, 2, 2, 0xFFFFFFFF)},
           QList<QByteArray>());
}

void InfoTests::callsThatNeverReturned()
{
    QFETCH(QList<QByteArray>, packets);
    QByteArray end = packetBytes(8, 0, 0, 0, 0, QByteArray(12, '\0'));
    end.replace(16, 8, blocks::number(quint64(packets.last()[16]) + 1, 8)); // the next sequence
    QTEST(linesOf("    never returned: ", packets + QList<QByteArray>{end}), "calls");
}

/// Where something is missing, it may be the return.
void InfoTests::returnsThatWereNotRecorded()
{
    const QByteArray attach = packetBytes(2, 0, 1, 0, 0, {});
    const QByteArray otherThread = packetBytes(1, 1, 0, 7, 0, "x", 1, 1, 2).replace(28, 4, "self");
    const QByteArray end = packetBytes(8, 0, 0, 0, 0, QByteArray(12, '\0'), 0, 0, 3);
    const QList<QByteArray> slice{attach};
    const QList<QByteArray> losses{attach, otherThread, end};
    const QByteArray sliceEnd =
        packetBytes(8, 0, 0, 0, 0, QByteArray::fromHex("040000000000000000000000"), 0, 0, 1);
    const QList<QByteArray> endedSlice{attach, sliceEnd};
    for (const QList<QByteArray> &packets : {slice, losses, endedSlice}) {
        QCOMPARE(linesOf("    return not recorded: ", packets), QList<QByteArray>{"orvexAttach()"});
        QCOMPARE(linesOf("    never returned: ", packets), QList<QByteArray>());
    }
}

PADSCOPE_TESTS(InfoTests);
#include "tst_info.moc"
