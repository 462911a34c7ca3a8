#include "firmware.h"
#include "scenarioreader.h"
#include "support/tests.h"

#include <algorithm>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryFile>

/// The tables of the simulator's pages name what there is: no more, no less, and each once.
class tst_readme : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void entryPoints();
    void scenarios();
    void commands();
    void theExampleIsAScenario();
    void theExampleHasEveryEvent();
    void defaultsOfABoard();
    void defaultWeights();

private:
    QString page;
    QString scenarioPage;
    QJsonObject schema;
};

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The rows of the table in a section, without its head.
QStringList rowsOf(const QString &page, const QString &section)
{
    const int start = page.indexOf("\n## " + section + "\n");
    const QString body = page.mid(start, page.indexOf("\n## ", start + 1) - start);
    return start < 0 ? QStringList() : body.split('\n').filter(QRegularExpression("^\\|")).mid(2);
}

/// The example as its page says: without what follows "//".
QString exampleIn(const QString &page)
{
    const QString begin = "```jsonc\n";
    const int start = page.indexOf(begin) + begin.size();
    return page.mid(start, page.indexOf("```", start) - start).remove(QRegularExpression(" *//[^\n]*"));
}

/// Everything in backticks, in order of the alphabet.
QStringList quotedIn(const QStringList &texts)
{
    static const QRegularExpression quoted("`([^`]+)`");
    QStringList found;
    for (const QString &text : texts) {
        for (auto matches = quoted.globalMatch(text); matches.hasNext();)
            found.append(matches.next().captured(1));
    }
    found.sort();
    return found;
}

/// A cell of each row, from 1 on.
QStringList cells(const QStringList &rows, int column)
{
    QStringList found;
    for (const QString &row : rows)
        found.append(row.section('|', column, column).trimmed());
    return found;
}

} // namespace

void tst_readme::initTestCase()
{
    page = QString::fromUtf8(contentsOf(SIMULATOR_FOLDER "/README.md"));
    scenarioPage = QString::fromUtf8(contentsOf(SIMULATOR_FOLDER "/../docs/scenarios.md"));
    schema = QJsonDocument::fromJson(contentsOf(SCENARIO_FOLDER "/schema.json")).object();
    QVERIFY(!page.isEmpty() && !scenarioPage.isEmpty() && !schema.isEmpty());
}

void tst_readme::entryPoints()
{
    const QStringList expected{"orvexAttach",         "orvexClearCallback",  "orvexDetach",
                               "orvexEnumDeviceInfo", "orvexGetDeviceCount", "orvexSendCommand",
                               "orvexSetCallback",    "orvexSetPnpCallback"};
    QCOMPARE(quotedIn(cells(rowsOf(page, "Entry points"), 1)), expected);
}

void tst_readme::scenarios()
{
    QStringList expected;
    const QDir shipped(SCENARIO_FOLDER);
    for (const QString &file : shipped.entryList({"*.json"}, QDir::Files, QDir::Name)) {
        if (file == "schema.json")
            continue;
        std::string complaint;
        const auto scenario = readScenario(shipped.filePath(file).toStdString(), complaint);
        QVERIFY2(scenario, complaint.c_str());
        expected.append("| `" + file.chopped(5) + "` | " + QString::fromStdString(scenario->title) + " |");
    }
    expected.sort();
    QStringList rows = rowsOf(page, "Scenarios");
    rows.sort();
    QCOMPARE(rows, expected);
}

// The firmware lists what it knows when it is asked: "[?] commands: . B U8!".
void tst_readme::commands()
{
    Sensor sensor(1);
    Firmware firmware;
    const QString answer = QString::fromStdString(firmware.take("?", sensor).at(0));
    QStringList expected = answer.chopped(1).section(": ", 1).split(' ');
    QVERIFY(expected.size() > 10);
    expected.sort();
    QCOMPARE(quotedIn(cells(rowsOf(page, "Commands"), 1)), expected);
}

void tst_readme::theExampleIsAScenario()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(exampleIn(scenarioPage).toUtf8());
    file.close();
    std::string complaint;
    const auto scenario = readScenario(file.fileName().toStdString(), complaint);
    QVERIFY2(scenario, complaint.c_str());
    QCOMPARE(scenario->boards.size(), std::size_t{2});
    QCOMPARE(scenario->boards[0].rate, 200);
    QVERIFY(!scenario->boards[1].plugged);
}

void tst_readme::theExampleHasEveryEvent()
{
    QStringList expected;
    const QJsonArray events = schema["$defs"].toObject()["event"].toObject()["oneOf"].toArray();
    for (const QJsonValue &event : events)
        expected.append(event["properties"]["do"]["const"].toString());
    QStringList found;
    const QJsonArray timeline =
        QJsonDocument::fromJson(exampleIn(scenarioPage).toUtf8())["timeline"].toArray();
    for (const QJsonValue &event : timeline)
        found.append(event["do"].toString());
    expected.sort();
    found.sort();
    found.removeDuplicates();
    QVERIFY(expected.size() > 5);
    QCOMPARE(found, expected);
}

void tst_readme::defaultsOfABoard()
{
    const QStringList rows = rowsOf(scenarioPage, "What a board does unless it is told otherwise");
    QStringList keys = schema["$defs"].toObject()["board"].toObject()["properties"].toObject().keys();
    keys.sort();
    QCOMPARE(quotedIn(cells(rows, 1)), keys);
    const BoardPlan usual{1, 1};
    const auto tells = [&rows](const QString &key, const QString &value) {
        return rows.filter("| `" + key + "` | `" + value + "` |").size() == 1;
    };
    QVERIFY(tells("rate", QString::number(usual.rate)));
    QVERIFY(tells("adcMax", QString::number(usual.adcMax)));
    QVERIFY(tells("plugged", usual.plugged ? "true" : "false"));
    QVERIFY(tells("lines", usual.lines ? "true" : "false"));
    QVERIFY(tells("unknowns", usual.unknowns ? "true" : "false"));
    QVERIFY(tells("pen", usual.pen.away ? "\"away\"" : "\"writing\""));
}

void tst_readme::defaultWeights()
{
    QMap<QString, int> found;
    for (const QString &row : rowsOf(scenarioPage, "Weights")) {
        for (const QString &kind : quotedIn(cells({row}, 1)))
            found[kind] = cells({row}, 2).value(0).toInt();
    }
    QMap<QString, int> expected;
    for (std::size_t kind = 0; kind < kindCount; ++kind)
        expected[QString::fromUtf8(kindNames[kind].data())] = usualWeights[kind];
    QCOMPARE(found, expected);
}

PADSCOPE_TESTS(tst_readme);
#include "tst_readme.moc"
