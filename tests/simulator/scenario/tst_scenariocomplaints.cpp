#include "scenarioreader.h"
#include "support/datalines.h"
#include "support/tests.h"

#include <QFile>
#include <QTemporaryDir>

/// The one line about a scenario file that is not taken, and its twin that is.
class tst_scenariocomplaints : public QObject
{
    Q_OBJECT

private slots:
    void complaints_data();
    void complaints();
    void boundsAreAllowed_data();
    void boundsAreAllowed();
    void filesThatAreNone();
    void aFileThatIsTooLarge();
    void cutFilesAreRefused();

private:
    QString written(const QByteArray &text) const;

    QTemporaryDir folder;
};

namespace {

/// A scenario with one board and this among its keys.
QByteArray withBoard(const QByteArray &keys)
{
    return R"({"title": "t", "boards": [{"id": 1}], )" + keys + "}";
}

QByteArray withBoardKeys(const QByteArray &keys)
{
    return R"({"title": "t", "boards": [{"id": 1, )" + keys + "}]}";
}

} // namespace

QString tst_scenariocomplaints::written(const QByteArray &text) const
{
    const QString path = folder.filePath("s.json");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("the file cannot be written");
    return path;
}

void tst_scenariocomplaints::complaints_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("line"); // behind the file's name
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &line) {
        addRow(name, text, line);
    };
    for (const QStringList &line : dataLines(TEST_FOLDER "/complaints.txt", 3, 3))
        row(qPrintable(line[0]), line[1].toUtf8(), line[2].toUtf8());
    row("too fast together", R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2, "rate": 10000},
        {"id": 3, "rate": 1}]})",
        "/boards: together they would send 20001 reports a second; allowed are up to 20000");
    row("too fast together, later", R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2,
        "rate": 9000}, {"id": 3}], "timeline": [{"at": 1, "do": "rate", "board": 3, "rate": 1001}]})",
        "/boards: together they would send 20001 reports a second; allowed are up to 20000");
    row("nested too deep", R"({"title": )" + QByteArray(32, '[') + QByteArray(32, ']') + "}",
        "line 1, column 42: the lists and objects are nested too deep; allowed are 32 in one another");
    row("nested as deep as can be", R"({"title": )" + QByteArray(31, '[') + QByteArray(31, ']') + "}",
        "/title: " + QByteArray(31, '[') + QByteArray(9, ']') +
            "... is not allowed; allowed is text in quotes");
    row("nested far too deep", R"({"title": )" + QByteArray(500000, '['),
        "line 1, column 42: the lists and objects are nested too deep; allowed are 32 in one another");
    row("not JSON", "{\n  \"title\": }",
        "line 2, column 12: this is not JSON: syntax error while parsing value - unexpected '}'; expected "
        "'[', '{', or a literal");
}

void tst_scenariocomplaints::complaints()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, line);
    const QString path = written(text);
    std::string complaint;
    QVERIFY(!readScenario(path.toStdString(), complaint));
    QCOMPARE(QByteArray::fromStdString(complaint), path.toLocal8Bit() + ": " + line);
}

void tst_scenariocomplaints::boundsAreAllowed_data()
{
    QTest::addColumn<QByteArray>("text");
    addRow("lowest rate", withBoardKeys(R"("rate": 1)"));
    addRow("highest rate", withBoardKeys(R"("rate": 10000)"));
    addRow("highest voltage", withBoardKeys(R"("adcMax": 1023)"));
    addRow("together 20000",
           QByteArray(R"({"title": "t", "boards": [{"id": 1, "rate": 10000}, {"id": 2, "rate": 10000}]})"));
    addRow("least id", QByteArray(R"({"title": "t", "boards": [{"id": -2147483648}]})"));
    addRow("greatest id", QByteArray(R"({"title": "t", "boards": [{"id": 2147483647}]})"));
    addRow("last day", withBoard(R"("timeline": [{"at": 86400, "do": "burst", "board": 1, "reports": 1}])"));
    addRow("no bytes", withBoard(R"("timeline": [{"at": 1, "do": "raw", "board": 1, "hex": ""}])"));
    addRow("no lie", withBoard(R"("faults": [{"fault": "lying-count", "by": 0}])"));
}

void tst_scenariocomplaints::boundsAreAllowed()
{
    QFETCH(QByteArray, text);
    std::string complaint;
    QVERIFY2(readScenario(written(text).toStdString(), complaint), complaint.c_str());
}

void tst_scenariocomplaints::filesThatAreNone()
{
    std::string complaint;
    const std::string missing = folder.filePath("missing.json").toStdString();
    QVERIFY(!readScenario(missing, complaint));
    QCOMPARE(complaint,
             missing + ": this cannot be read (No such file or directory); a scenario file is needed");
    const std::string directory = folder.path().toStdString();
    QVERIFY(!readScenario(directory, complaint));
    QCOMPARE(complaint,
             directory + ": this cannot be read (it is not a regular file); a scenario file is needed");
    QVERIFY(!readScenario("two\nlines", complaint));
    QCOMPARE(
        complaint,
        std::string("two?lines: this cannot be read (No such file or directory); a scenario file is needed"));
    const QString loop = folder.filePath("loop.json");
    QVERIFY(QFile::link(loop, loop));
    QVERIFY(!readScenario(loop.toStdString(), complaint));
    QCOMPARE(complaint, loop.toStdString() + ": this cannot be read (Too many levels of symbolic links); "
                                             "a scenario file is needed");
}

void tst_scenariocomplaints::aFileThatIsTooLarge()
{
    const QString path = written(QByteArray(1024 * 1024 + 1, ' '));
    std::string complaint;
    QVERIFY(!readScenario(path.toStdString(), complaint));
    QCOMPARE(complaint, path.toStdString() + ": the file is too large; allowed are up to 1048576 bytes");
}

// Never is a part of a file read.
void tst_scenariocomplaints::cutFilesAreRefused()
{
    QFile file(SCENARIO_FOLDER "/timeline.json");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll().trimmed();
    QVERIFY(whole.size() > 500);
    for (int length = 0; length < whole.size(); ++length) {
        std::string complaint;
        QVERIFY(!readScenario(written(whole.left(length)).toStdString(), complaint));
        QVERIFY(complaint.find("this is not JSON") != std::string::npos);
        QCOMPARE(complaint.find('\n'), std::string::npos);
    }
    std::string complaint;
    QVERIFY2(readScenario(written(whole).toStdString(), complaint), complaint.c_str());
}

PADSCOPE_TESTS(tst_scenariocomplaints);
#include "tst_scenariocomplaints.moc"
