#include <QFile>

#include "recordedrun.h"
#include "support/tests.h"

/// The tool in the stand-in host, recorded and alone.
class ToolTests : public QObject
{
    Q_OBJECT

private slots:
    void isRecordedAsItRunsAlone_data();
    void isRecordedAsItRunsAlone();
    void endsAsAloneWithoutADriverLibrary_data();
    void endsAsAloneWithoutADriverLibrary();
};

namespace {

/// Three reports that no limit concerns, and none that the tool shows beside them.
const char scenario[] = R"({
  "title": "Three reports",
  "boards": [{ "id": 1001, "rate": 1, "kinds": { "position": 1 }, "lines": false, "unknowns": false }],
  "timeline": [
    { "at": 0.3, "do": "raw", "board": 1001, "hex": "04 c8 01 02" },
    { "at": 0.4, "do": "raw", "board": 1001, "hex": "05 c9 01 02 03" },
    { "at": 0.5, "do": "raw", "board": 1001, "hex": "04 c8 03 04" }
  ]
})";

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void writeScenario(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(scenario);
}

} // namespace

void ToolTests::isRecordedAsItRunsAlone_data()
{
    addColumns<QStringList, int>("library", "rows");
    addRow("simulator", QStringList{"--simulate", "three.json"}, 3);
    addRow("all names", QStringList{"--driver", SIMULATOR_FOLDER "/liborvexboardex.so.1"}, 3);
    addRow("old", QStringList{"--driver", SIMULATOR_FOLDER "/old/liborvexboardex.so.1"}, 3);
    addRow("bare", QStringList{"--driver", SIMULATOR_FOLDER "/bare/liborvexboardex.so.1"}, 3);
    addRow("empty", QStringList{"--driver", SIMULATOR_FOLDER "/empty/liborvexboardex.so.1"}, 0);
    addRow("the loader's", QStringList(), 3);
}

void ToolTests::isRecordedAsItRunsAlone()
{
    QFETCH(QStringList, library);
    QFETCH(int, rows);
    RecordedRun run;
    writeScenario(run.path("three.json"));
    run.setEnvironment("ORVEXSIM_SCENARIO", "three.json");
    run.setEnvironment("LD_LIBRARY_PATH", library.isEmpty() ? SIMULATOR_FOLDER : "");
    run.preload(PRINT_CALLS);
    run.setEnvironment("CALLS", run.path("calls"));
    const QStringList command = QStringList{TENDRO_HOST, "--plugins", PADSCOPE_PLUGIN_FOLDER} + library +
                                QStringList{"--type", "?", "--tab", "Monitor=1.2", "--rows"};
    QCOMPARE(run.runAlone(command), 0);
    const QStringList shown = run.output();
    const QByteArray calls = contentOf(run.path("calls"));
    QCOMPARE(shown.size(), rows);
    QVERIFY(QFile::remove(run.path("calls")));

    QCOMPARE(run.run(command), 0);
    QCOMPARE(run.output(), shown);
    QCOMPARE(contentOf(run.path("calls")), calls);
    QCOMPARE(calls.contains("orvexSetCallback(1001, callback, pointer)\n"), rows > 0);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole && facts.end);
    QCOMPARE(facts.lost, std::uint64_t{0});
}

void ToolTests::endsAsAloneWithoutADriverLibrary_data()
{
    addColumns<QStringList, bool>("library", "isOpened");
    addRow("none", QStringList(), false);
    addRow("another library", QStringList{"--driver", PRINT_CALLS}, true);
    addRow("no library", QStringList{"--driver", "/etc/passwd"}, false);
    addRow("cut off", QStringList{"--driver", "cut"}, false);
}

void ToolTests::endsAsAloneWithoutADriverLibrary()
{
    QFETCH(QStringList, library);
    QFETCH(bool, isOpened);
    RecordedRun run;
    QFile cut(run.path("cut"));
    QVERIFY(cut.open(QFile::WriteOnly));
    cut.write("\177ELF");
    cut.close();
    run.setEnvironment("LD_LIBRARY_PATH", "");
    const QStringList command = QStringList{TENDRO_HOST, "--plugins", PADSCOPE_PLUGIN_FOLDER} + library +
                                QStringList{"--type", "?", "--for", "0"};
    const int alone = run.runAlone(command);
    QCOMPARE(alone, library.isEmpty() ? 0 : 2);
    const QStringList lines = run.errors();
    QCOMPARE(run.run(command), alone == 0 ? 1 : alone);
    QVERIFY(run.errors().join('\n').contains(lines.join('\n')));
    QCOMPARE(run.errors().last().contains("nothing was recorded"), !isOpened);
    QCOMPARE(run.hasFile(), isOpened);
}

PADSCOPE_TESTS(ToolTests);
#include "tst_tool.moc"
