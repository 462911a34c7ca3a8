#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// Which files can be played, and what is said of the others.
class tst_replayreading : public QObject
{
    Q_OBJECT

private slots:
    void filesThatArePlayed_data();
    void filesThatArePlayed();
    void filesThatAreNot_data();
    void filesThatAreNot();
    void valuesThatAreNotAllowed_data();
    void valuesThatAreNotAllowed();
    void onlyTheSessionThatIsChosen();
    void nullIsTheUsualValue();
    void aCaptureIsAScenario();
    void boardsThatHaveGoneAndStillReport_data();
    void boardsThatHaveGoneAndStillReport();
    void withoutAnythingToPlay();
};

namespace {

constexpr quint64 startNs = ReplayCapture::startNs;

QByteArray report(const char *hex, quint64 sequence)
{
    return packetBytes(1, 1, 0, 1001, 0, QByteArray::fromHex(hex), 1, 0, sequence);
}

QByteArray bigEndian()
{
    return blocks::section(true) + blocks::interface("driver", true) +
           blocks::packet(startNs, report("04c800", 0), {}, true) +
           blocks::packet(startNs + 1'000'000, report("04c801", 1), {}, true);
}

QByteArray littleEndian()
{
    return blocks::section() + blocks::interface("driver") + blocks::packet(startNs, report("04c800", 0)) +
           blocks::packet(startNs + 1'000'000, report("04c801", 1));
}

QByteArray errorOf(const QByteArray &path)
{
    SimulatedLibrary library;
    if (library.choose(path.constData()) == 0)
        return "no error";
    return QByteArray::fromStdString(library.error()).mid(path.size());
}

} // namespace

void tst_replayreading::filesThatArePlayed_data()
{
    const QByteArray whole = littleEndian();
    const QByteArray two = bigEndian();
    addColumns<QByteArray, QList<QByteArray>>("bytes", "reports");
    const QList<QByteArray> both{"1001:04c800", "1001:04c801"};
    addRow("little-endian", whole, both);
    addRow("big-endian", two, both);
    addRow("two sections, as of two slices", whole + two, both + both);
    addRow("cut off within a packet", whole.left(whole.size() - 7), both.mid(0, 1));
    addRow("cut off within a block's length", whole + QByteArray("\x06\0\0\0\x40", 5), both);
    addRow("with foreign packets and other blocks",
           blocks::section() + blocks::interface("driver") + blocks::packet(startNs - 500, "GET /") +
               blocks::block(0x1234, "abcd") + blocks::packet(startNs, report("04c800", 0)),
           both.mid(0, 1));
    addRow("a packet that is too early",
           blocks::section() + blocks::interface("driver") + blocks::packet(startNs, report("04c800", 0)) +
               blocks::packet(startNs - 1'000'000'000, report("04c801", 1)),
           both);
}

void tst_replayreading::filesThatArePlayed()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QByteArray>, reports);
    const ReplayCapture capture;
    Playing playing(capture.write("some.pcapng", bytes));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), reports);
}

void tst_replayreading::filesThatAreNot_data()
{
    addColumns<QByteArray, QByteArray>("bytes", "error");
    const QByteArray whole = littleEndian();
    const QByteArray size = QByteArray::number(whole.size());
    addRow<QByteArray, QByteArray>("no capture", "{\"title\": 1}",
                                   ": offset 0: no pcapng file: it does not begin with a section header");
    addRow<QByteArray, QByteArray>("empty", "", ": there is no packet of a capture in it");
    addRow<QByteArray, QByteArray>("of another program",
                                   blocks::section() + blocks::interface("eth0") +
                                       blocks::packet(startNs, "GET /"),
                                   ": there is no packet of a capture in it");
    addRow<QByteArray, QByteArray>("damaged", whole + blocks::number(6, 4) + blocks::number(13, 4) + "....",
                                   ": offset " + size + ": a block length of 13");
    QByteArray later = report("04c800", 2);
    later[2] = 2;
    addRow<QByteArray, QByteArray>("of a later version", whole + blocks::packet(startNs, later),
                                   ": offset " + size + ": this was written by a later version");
    QByteArray other = report("04c800", 0);
    other.replace(24, 4, blocks::number(0xAB, 4));
    addRow<QByteArray, QByteArray>("of two sessions", whole + blocks::packet(startNs, other),
                                   ": there are several sessions, of which one must be chosen: 000000ab, "
                                   "5f0c93a1");
    QByteArray sessions = whole;
    for (quint64 i = 1; i <= 21; ++i) {
        other.replace(24, 4, blocks::number(i, 4));
        sessions += blocks::packet(startNs, other);
    }
    addRow<QByteArray, QByteArray>("of 22 sessions", sessions,
                                   ": there are several sessions, of which one must be chosen: 00000001, "
                                   "00000002, 00000003, 00000004, 00000005, 00000006, 00000007, 00000008, "
                                   "00000009, 0000000a, 0000000b, 0000000c, 0000000d, 0000000e, 0000000f, "
                                   "00000010, 00000011, 00000012, 00000013, 00000014 and 2 more");
    QByteArray many = blocks::section() + blocks::interface("driver");
    for (quint64 i = 0; i < 257; ++i)
        many += blocks::packet(startNs + i, packetBytes(1, 1, 0, int(i), 0, "a", 1));
    addRow<QByteArray, QByteArray>("of 257 boards", many,
                                   ": there are too many boards at once; allowed are 256");
}

void tst_replayreading::filesThatAreNot()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, error);
    const ReplayCapture capture;
    const QByteArray path = capture.write("some.pcapng", bytes);
    QCOMPARE(errorOf(path), error);
    const QByteArray scenario =
        capture.write("some.json", R"({"title": "t", "replay": {"capture": "some.pcapng"}})");
    QCOMPARE(errorOf(scenario), ": /replay/capture: " + path + error);
}

void tst_replayreading::valuesThatAreNotAllowed_data()
{
    addColumns<QByteArray, QByteArray>("members", "error");
    const auto add = [](const char *members, const char *error) {
        addRow<QByteArray, QByteArray>(members, members, error);
    };
    add("\"rate\": 0", ": /replay/rate: 0 is not allowed; allowed is a number from 0.1 to 100.0");
    add("\"rate\": 100.5", ": /replay/rate: 100.5 is not allowed; allowed is a number from 0.1 to 100.0");
    add("\"rate\": \"fast\"",
        ": /replay/rate: this rate is not known; allowed are a number from 0.1 to 100.0 and max");
    add("\"loop\": 0", ": /replay/loop: 0 is not allowed; allowed is a whole number from 1 to 1000000");
    add("\"loop\": true",
        ": /replay/loop: this is not known; allowed are a whole number from 1 to 1000000 and forever");
    add("\"from\": -1", ": /replay/from: -1 is not allowed; allowed is a number from 0.0 to 1000000000.0");
    add("\"from\": 2, \"to\": 2", ": /replay/to: this is not later than \"from\"; allowed are later times");
    add("\"skipGaps\": \"no\"",
        ": /replay/skipGaps: \"no\" is not allowed; allowed is a number from 0.0 to 1000000000.0");
    add("\"paused\": 1", ": /replay/paused: 1 is not allowed; allowed are true and false");
    add("\"session\": \"5f0c93\"",
        ": /replay/session: this is no session; allowed are eight hexadecimal digits");
    add("\"speed\": 2",
        ": /replay: the key \"speed\" is not known; allowed are capture, rate, loop, from, to, "
        "skipGaps, paused, lockstep, session");
}

void tst_replayreading::valuesThatAreNotAllowed()
{
    QFETCH(QByteArray, members);
    QFETCH(QByteArray, error);
    ReplayCapture capture;
    addTen(capture);
    QCOMPARE(errorOf(capture.scenario(members)), error);
    QCOMPARE(errorOf(capture.scenario("")), QByteArray("no error"));
    QCOMPARE(errorOf(capture.write("s.json", R"({"replay": {"capture": "field.pcapng"}})")),
             QByteArray("no error"));
    QCOMPARE(errorOf(capture.write("s.json", R"({"title": 1, "replay": {"capture": "none"}})")),
             QByteArray(": /title: 1 is not allowed; allowed is text in quotes"));
    QCOMPARE(errorOf(capture.write("s.json", R"({"title": "t", "replay": {}})")),
             QByteArray(": /replay: the key \"capture\" is missing; it is needed here"));
    QCOMPARE(errorOf(capture.write("s.json",
                                   R"({"title": "t", "boards": [], "replay": {"capture": "field.pcapng"}})")),
             QByteArray(": /: the key \"boards\" is not known; allowed are $schema, title, replay"));
    QVERIFY(errorOf(capture.write("s.json", R"({"title": "t", "replay": {"capture": "none.pcapng"}})"))
                .endsWith("/none.pcapng: No such file or directory"));
    QVERIFY(errorOf(capture.write("s.json", R"({"title": "t", "replay": {"capture": "/dev/zero"}})"))
                .endsWith(": /replay/capture: /dev/zero: it is not a regular file"));
}

void tst_replayreading::onlyTheSessionThatIsChosen()
{
    ReplayCapture capture;
    capture.report(0, 1, "04c800");
    capture.session = 0xab;
    capture.report(5000, 2, "04c801");
    capture.session = 0x5f0c93a1;
    capture.report(5000, 1, "04c802");
    capture.session = 0xab;
    capture.report(5010, 2, "04c803");
    Playing playing(capture.scenario("\"session\": \"000000aB\""));
    QCOMPARE(playing.ids(), QList<int>{2});
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), (QList<QByteArray>{"2:04c801", "2:04c803"}));
    QCOMPARE(errorOf(capture.scenario("\"session\": \"00000001\"")),
             ": /replay/capture: " + capture.file() +
                 ": there is no session 00000001; allowed are 000000ab, 5f0c93a1");
}

void tst_replayreading::nullIsTheUsualValue()
{
    ReplayCapture capture;
    addTen(capture);
    Playing playing(capture.scenario("\"rate\": null, \"loop\": null, \"from\": null, \"to\": null, "
                                     "\"skipGaps\": null, \"session\": null"));
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), ten);
    QCOMPARE(replayOf(playing.library).rate, 1.0);
    QCOMPARE(replayOf(playing.library).rounds, 1ULL);
}

void tst_replayreading::aCaptureIsAScenario()
{
    ReplayCapture capture;
    addTen(capture);
    qputenv("ORVEXSIM_SCENARIO", capture.file());
    SimulatedLibrary library;
    QCOMPARE(library.replayIsOn(), 1); // before anything else is called
    qunsetenv("ORVEXSIM_SCENARIO");
    QCOMPARE(library.boardIds(), (std::vector<int>{1002, 1001}));
    char name[300];
    library.currentScenario(name, sizeof name);
    QCOMPARE(QByteArray(name), capture.file());
}

void tst_replayreading::boardsThatHaveGoneAndStillReport_data()
{
    addColumns<int, bool>("count", "isPlayed");
    addRow("256", 256, true);
    addRow("257", 257, false);
}

/// One after the other, each before the next is seen.
void tst_replayreading::boardsThatHaveGoneAndStillReport()
{
    QFETCH(int, count);
    QFETCH(bool, isPlayed);
    ReplayCapture capture;
    for (int id = 1; id <= count; ++id) {
        capture.seen(id, id, 0);
        capture.hotplug(id);
        capture.gone(id, id);
    }
    for (int id = 1; id <= count; ++id)
        capture.report(1000, id, "04c800");
    const QByteArray error = ": there are too many boards at once; allowed are 256";
    QCOMPARE(errorOf(capture.file()), isPlayed ? QByteArray("no error") : error);
}

void tst_replayreading::withoutAnythingToPlay()
{
    ReplayCapture capture;
    capture.enumeration(0, {1001});
    Playing playing(capture.scenario("\"loop\": \"forever\""));
    QVERIFY(ends(playing.library));
    QCOMPARE(playing.ids(), QList<int>{1001});
    QCOMPARE(playing.recorder.count(), std::size_t{0});
}

PADSCOPE_TESTS(tst_replayreading);
#include "tst_replayreading.moc"
