#include "simulator/simulatedlibrary.h"
#include "simulator/steps.h"
#include "support/capturedoutput.h"
#include "support/tests.h"

/// Scenarios as they are chosen, what the timeline does to the library, and its variants.
class tst_scenarios : public Steps
{
    Q_OBJECT

public:
    tst_scenarios()
        : Steps(TEST_FOLDER "/scenarios.txt")
    {
    }

private slots:
    void theLineOnStandardError();
    void sameBytesInEveryRun_data();
    void sameBytesInEveryRun();
};

namespace {

/// The first 150 reports of board 1001, whatever thread it comes on.
std::vector<Bytes> firstReports(const char *scenario)
{
    Recorder recorder;
    SimulatedLibrary library;
    library.choose(scenario);
    library.orvexAttach();
    library.orvexSetCallback(1001, Recorder::data, &recorder);
    if (!QTest::qWaitFor([&] { return recorder.count() >= 150; }, 10000))
        return {};
    std::vector<Bytes> reports;
    for (const Recorder::Delivery &delivery : recorder.deliveries())
        reports.push_back(delivery.bytes);
    reports.resize(150);
    return reports;
}

} // namespace

void tst_scenarios::theLineOnStandardError()
{
    qputenv("ORVEXSIM_SCENARIO", "/nowhere.json");
    SimulatedLibrary library;
    CapturedOutput errors(stderr);
    library.orvexAttach();
    QCOMPARE(errors.text(), QByteArray("/nowhere.json: this cannot be read (No such file or directory); "
                                       "a scenario file is needed\n"));
    qunsetenv("ORVEXSIM_SCENARIO");
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
    const auto first = firstReports(scenario);
    QCOMPARE(first.size(), std::size_t{150});
    QCOMPARE(firstReports(scenario), first);
}

PADSCOPE_TESTS(tst_scenarios);
#include "tst_scenarios.moc"
