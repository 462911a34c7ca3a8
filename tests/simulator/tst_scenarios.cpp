#include "simulator/simulatedlibrary.h"
#include "support/capturedoutput.h"
#include "support/tests.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

/// Scenarios as they are chosen, and what the timeline does to the library.
class tst_scenarios : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void shippedOnesAreListed();
    void theEnvironmentChooses_data();
    void theEnvironmentChooses();
    void aBadScenarioMeansNoBoards();
    void theLineOnStandardError();
    void choosingWhileAttached();
    void aRefusedChoiceChangesNothing();
    void sameBytesInEveryRun_data();
    void sameBytesInEveryRun();
    void boardsOfTheTimelineComeAndGo();
    void whatTheTimelineUnplugsStaysUnplugged();
    void whatHappensToABoardHappensOnce_data();
    void whatHappensToABoardHappensOnce();
    void aRateOutlivesADetach();
    void aBoardComesBackAsDescribed();
    void variants_data();
    void variants();
    void variantsFindTheScenarios();
};

namespace {

constexpr char variable[] = "ORVEXSIM_SCENARIO";

/// The first reports of board 1001, whatever thread it comes on.
std::vector<Bytes> firstReports(const char *scenario, std::size_t count)
{
    qputenv(variable, scenario);
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    for (int i = 0; i < 1000 && recorder.count() < count; ++i)
        QTest::qWait(10);
    std::vector<Bytes> reports;
    for (const Recorder::Delivery &delivery : recorder.deliveries()) {
        if (reports.size() < count)
            reports.push_back(delivery.bytes);
    }
    return reports;
}

QByteArray written(const QTemporaryDir &folder, const QByteArray &text)
{
    const QString path = folder.filePath("scenario.json");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("the file cannot be written");
    return path.toLocal8Bit();
}

} // namespace

void tst_scenarios::cleanup()
{
    qunsetenv(variable);
}

void tst_scenarios::shippedOnesAreListed()
{
    SimulatedLibrary library;
    QStringList names;
    for (int i = 0; i < library.scenarioCount(); ++i) {
        char name[64];
        char title[200];
        QCOMPARE(library.scenario(i, name, sizeof name, title, sizeof title), 0);
        names.append(name);
        QVERIFY(qstrlen(title) > 5);
    }
    const QStringList expected{"all-kinds",    "all-types",         "callback-in-command",
                               "default",      "enumeration-fails", "flood",
                               "garbage",      "lying-count",       "many-boards",
                               "no-boards",    "plug-storm",        "slow-command",
                               "text-endless", "text-every-byte",   "text-long",
                               "text-markup",  "timeline",          "two-pens",
                               "vanish"};
    QCOMPARE(names, expected);
    QCOMPARE(library.scenario(19, nullptr, 0, nullptr, 0), -1);
    QCOMPARE(library.scenario(-1, nullptr, 0, nullptr, 0), -1);
}

void tst_scenarios::theEnvironmentChooses_data()
{
    addColumns<QByteArray, int>("scenario", "boards");
    addRow("a name", QByteArray("vanish"), 2);
    addRow("32 boards", QByteArray("many-boards"), 32);
    addRow("none", QByteArray("no-boards"), 0);
    addRow("a path", QByteArray(SCENARIO_FOLDER "/flood.json"), 8);
    addRow("empty", QByteArray(""), 1);
}

void tst_scenarios::theEnvironmentChooses()
{
    QFETCH(QByteArray, scenario);
    qputenv(variable, scenario);
    SimulatedLibrary library;
    library.orvexAttach();
    QTEST(library.orvexGetDeviceCount(), "boards");
    char current[200];
    library.currentScenario(current, sizeof current);
    QCOMPARE(QByteArray(current), scenario.isEmpty() ? QByteArray("default") : scenario);
}

void tst_scenarios::aBadScenarioMeansNoBoards()
{
    qputenv(variable, "no-such-scenario");
    SimulatedLibrary library;
    QCOMPARE(library.orvexAttach(), 1);
    QCOMPARE(library.orvexGetDeviceCount(), 0);
    QVERIFY(
        library.error().find("no-such-scenario: there is no such scenario; allowed are a path and all-kinds, "
                             "all-types,") == 0);
    QCOMPARE(library.currentScenario(nullptr, 0), 0);
    QCOMPARE(library.plug(1), 0); // it works all the same
    QCOMPARE(library.orvexGetDeviceCount(), 1);
}

void tst_scenarios::theLineOnStandardError()
{
    QTemporaryDir folder;
    const QByteArray path = written(folder, R"({"title": "t", "boards": [{"id": 1, "rate": 0}]})");
    qputenv(variable, path);
    SimulatedLibrary library;
    CapturedOutput errors(stderr);
    library.orvexAttach();
    QCOMPARE(errors.text(),
             path + ": /boards/0/rate: 0 is not allowed; allowed is a whole number from 1 to 10000\n");
}

void tst_scenarios::choosingWhileAttached()
{
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 0);
    QCOMPARE(library.choose("vanish"), 0);
    const std::size_t last = recorder.count();
    QTRY_COMPARE(recorder.notices(), std::size_t{1});
    QCOMPARE(library.boardIds(), (std::vector<int>{1001, 1002}));
    QCOMPARE(library.orvexGetDeviceCount(), 2);
    QTest::qWait(50);
    QCOMPARE(recorder.count(), last); // the old board's callbacks went with it
    QCOMPARE(library.choose("no-boards"), 0);
    QCOMPARE(library.orvexGetDeviceCount(), 0);
    QCOMPARE(library.choose("default"), 0);
    QCOMPARE(library.boardIds(), std::vector<int>{1001});
}

void tst_scenarios::aRefusedChoiceChangesNothing()
{
    SimulatedLibrary library;
    library.plug(5);
    QCOMPARE(library.choose("/nowhere/at.all"), -1);
    QCOMPARE(
        library.error(),
        std::string(
            "/nowhere/at.all: this cannot be read (No such file or directory); a scenario file is needed"));
    QCOMPARE(library.choose(nullptr), -1);
    QCOMPARE(library.choose("schema"), -1);
    QCOMPARE(library.boardIds(), (std::vector<int>{1001, 5}));
    char current[20];
    library.currentScenario(current, sizeof current);
    QCOMPARE(QByteArray(current), QByteArray("default"));
}

void tst_scenarios::sameBytesInEveryRun_data()
{
    QTest::addColumn<QByteArray>("scenario");
    for (const char *name : {"default", "all-kinds", "timeline", "two-pens", "garbage", "all-types"})
        addRow(name, QByteArray(name));
}

void tst_scenarios::sameBytesInEveryRun()
{
    QFETCH(QByteArray, scenario);
    const auto first = firstReports(scenario, 150);
    QCOMPARE(first.size(), std::size_t{150});
    QCOMPARE(firstReports(scenario, 150), first);
}

void tst_scenarios::boardsOfTheTimelineComeAndGo()
{
    QTemporaryDir folder;
    qputenv(variable, written(folder, R"({"title": "t",
        "boards": [{"id": 1}, {"id": 2, "plugged": false}],
        "timeline": [{"at": 0.2, "do": "plug", "board": 2}, {"at": 0.4, "do": "unplug", "board": 1},
                     {"at": 0, "do": "unplug", "board": 2}]})"));
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    QCOMPARE(library.boardIds(), std::vector<int>{1});
    QTRY_COMPARE(library.boardIds(), (std::vector<int>{1, 2}));
    QTRY_COMPARE(library.boardIds(), std::vector<int>{2});
    QTRY_COMPARE(recorder.notices(), std::size_t{2});
}

void tst_scenarios::whatTheTimelineUnplugsStaysUnplugged()
{
    QTemporaryDir folder;
    qputenv(variable, written(folder, R"({"title": "t", "boards": [{"id": 1}],
        "timeline": [{"at": 0.1, "do": "unplug", "board": 1}]})"));
    SimulatedLibrary library;
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 1);
    QTRY_COMPARE(library.orvexGetDeviceCount(), 0);
    library.orvexDetach();
    QCOMPARE(library.boardIds(), std::vector<int>{});
    library.plug(1);
    library.orvexAttach();
    QTest::qWait(300); // and is not unplugged again
    QCOMPARE(library.boardIds(), std::vector<int>{1});
}

void tst_scenarios::whatHappensToABoardHappensOnce_data()
{
    QTest::addColumn<bool>("unplugged");
    addRow("attached anew", false);
    addRow("plugged in anew", true);
}

void tst_scenarios::whatHappensToABoardHappensOnce()
{
    QFETCH(bool, unplugged);
    QTemporaryDir folder;
    qputenv(variable, written(folder, R"({"title": "t", "boards": [{"id": 1}], "timeline": [
        {"at": 0.1, "do": "raw", "board": 1, "hex": "03 de 01"},
        {"at": 0.8, "do": "raw", "board": 1, "hex": "03 de 02"}]})"));
    Recorder recorder;
    SimulatedLibrary library;
    library.orvexAttach();
    library.orvexSetCallback(1, Recorder::data, &recorder);
    QTRY_COMPARE(recorder.timesSeen(Bytes{3, 0xDE, 1}), 1);
    if (unplugged) {
        library.unplug(1);
        library.plug(1);
    } else {
        library.orvexDetach();
        library.orvexAttach();
    }
    library.orvexSetCallback(1, Recorder::data, &recorder);
    QTRY_COMPARE(recorder.timesSeen(Bytes{3, 0xDE, 2}), 1);
    QCOMPARE(recorder.timesSeen(Bytes{3, 0xDE, 1}), 1);
}

void tst_scenarios::aRateOutlivesADetach()
{
    QTemporaryDir folder;
    qputenv(variable, written(folder, R"({"title": "t", "boards": [{"id": 1}],
        "timeline": [{"at": 0.05, "do": "rate", "board": 1, "rate": 1000}]})"));
    SimulatedLibrary library;
    for (int attach = 0; attach < 2; ++attach) {
        Recorder recorder;
        library.orvexAttach();
        QElapsedTimer timer;
        timer.start();
        library.orvexSetCallback(1, Recorder::data, &recorder);
        QTRY_VERIFY(recorder.count() >= 1000);
        // At the planned rate it would be ten seconds.
        QVERIFY2(timer.elapsed() < 3000, QByteArray::number(timer.elapsed()));
        library.orvexDetach();
    }
}

void tst_scenarios::aBoardComesBackAsDescribed()
{
    Recorder recorder;
    SimulatedLibrary library;
    QCOMPARE(library.choose("garbage"), 0);
    library.orvexAttach();
    library.unplug(1001);
    library.plug(1001);
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    QTRY_VERIFY(recorder.count() > 3);
    QCOMPARE(recorder.deliveries().front().bytes.size(), std::size_t{0}); // garbage begins with nothing
}

void tst_scenarios::variants_data()
{
    addColumns<QByteArray, int>("file", "entryPoints");
    addRow("complete", QByteArray(SIMULATOR_FILE), 47);
    addRow("old", QByteArray(SIMULATOR_OLD), 45);
    addRow("bare", QByteArray(SIMULATOR_BARE), 7);
    addRow("empty", QByteArray(SIMULATOR_EMPTY), 0);
}

void tst_scenarios::variants()
{
    QFETCH(QByteArray, file);
    SimulatedLibrary library(file.constData());
    int found = 0;
#define COUNT(name) found += library.name != nullptr;
    ORVEX_LOOKUPS(COUNT)
#undef COUNT
    QTEST(found, "entryPoints");
    const bool complete = found == 47;
    QCOMPARE(library.orvexSetTouchDestinationEx != nullptr, complete);
    QCOMPARE(library.orvexSetPointingDeviceDestinationEx != nullptr, complete);
    QCOMPARE(library.orvexSendCommand != nullptr, found > 40);
    QCOMPARE(library.orvexSetCallback != nullptr, found > 0);
    QVERIFY(library.plug);
}

void tst_scenarios::variantsFindTheScenarios()
{
    SimulatedLibrary library(SIMULATOR_BARE);
    QCOMPARE(library.choose("vanish"), 0);
    library.orvexAttach();
    QCOMPARE(library.orvexGetDeviceCount(), 2);
}

PADSCOPE_TESTS(tst_scenarios);
#include "tst_scenarios.moc"
