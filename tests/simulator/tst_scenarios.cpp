#include "simulator/simulatedlibrary.h"
#include "simulator/steps.h"
#include "support/capturedoutput.h"
#include "support/tests.h"

/// Scenarios as they are chosen, what the timeline does to the library, and its variants.
class tst_scenarios : public Steps
{
    Q_OBJECT

private slots:
    void theLineOnStandardError();
};

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

PADSCOPE_TESTS(tst_scenarios);
#include "tst_scenarios.moc"
