#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryFile>

#include "firmware.h"
#include "scenarioreader.h"
#include "support/tests.h"

namespace {

QString contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

/// A cell of a row, from 1 on.
QString cell(const QString &row, int column)
{
    return row.section('|', column, column).trimmed();
}

/// Everything in backticks in the first cells of rows, in order of the alphabet.
QStringList namesIn(const QStringList &rows)
{
    static const QRegularExpression quoted("`([^`]+)`");
    QStringList found;
    for (const QString &row : rows) {
        for (auto matches = quoted.globalMatch(cell(row, 1)); matches.hasNext();)
            found += matches.next().captured(1);
    }
    found.sort();
    return found;
}

std::string error;

} // namespace

/// The tables of the simulator's pages name what there is: no more, no less, and each once.
class tst_readme : public QObject
{
    Q_OBJECT

private slots:
    void entryPoints();
    void scenarios();
    void commands();
    void theExampleIsAScenario();
    void theExampleHasEveryEvent();
    void defaultsOfABoard();
    void defaultsOfAReplay();
    void defaultWeights();
    void kindsOfTheSchema();
    void allKinds();

private:
    static QStringList rowsOf(const QString &page, const QString &section);
    /// The example as its page says: without what follows "//".
    QByteArray example() const;

    const QString page = contentsOf(SIMULATOR_FOLDER "/README.md");
    const QString scenarioPage = contentsOf(SIMULATOR_FOLDER "/../docs/scenarios.md");
    const QJsonValue schema =
        QJsonDocument::fromJson(contentsOf(SCENARIO_FOLDER "/schema.json").toUtf8())["$defs"];
};

/// The rows of the table in a section, without its head.
QStringList tst_readme::rowsOf(const QString &page, const QString &section)
{
    const int start = page.indexOf("\n## " + section + "\n");
    const QString body = page.mid(start, page.indexOf("\n## ", start + 1) - start);
    return start < 0 ? QStringList() : body.split('\n').filter(QRegularExpression("^\\|")).mid(2);
}

QByteArray tst_readme::example() const
{
    const QString text = scenarioPage.section("```jsonc\n", 1).section("```", 0, 0);
    return QString(text).remove(QRegularExpression(" *//[^\n]*")).toUtf8();
}

void tst_readme::entryPoints()
{
    const QStringList expected{"orvexAttach",         "orvexClearCallback",  "orvexDetach",
                               "orvexEnumDeviceInfo", "orvexGetDeviceCount", "orvexSendCommand",
                               "orvexSetCallback",    "orvexSetPnpCallback"};
    QCOMPARE(namesIn(rowsOf(page, "Entry points")), expected);
}

void tst_readme::scenarios()
{
    QStringList expected;
    const QDir shipped(SCENARIO_FOLDER);
    for (const QString &file :
         shipped.entryList({"*.json"}, QDir::Files, QDir::Name).filter(QRegularExpression("^(?!schema)"))) {
        const auto scenario = readScenario(shipped.filePath(file).toStdString(), error);
        QVERIFY2(scenario, error.c_str());
        expected += "| `" + file.chopped(5) + "` | " + QString::fromStdString(scenario->title) + " |";
    }
    QStringList rows = rowsOf(page, "Scenarios");
    expected.sort();
    rows.sort();
    QCOMPARE(rows, expected);
}

// The firmware lists what it knows when it is asked: "[?] commands: . B U8!".
void tst_readme::commands()
{
    Sensor sensor(1);
    const QString answer = QString::fromStdString(Firmware().take("?", sensor).at(0));
    QStringList expected = answer.chopped(1).section(": ", 1).split(' ');
    QVERIFY(expected.size() > 10);
    expected.sort();
    QCOMPARE(namesIn(rowsOf(page, "Commands")), expected);
}

void tst_readme::theExampleIsAScenario()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(example());
    file.close();
    const auto scenario = readScenario(file.fileName().toStdString(), error);
    QVERIFY2(scenario, error.c_str());
    QCOMPARE(scenario->boards.size(), std::size_t{2});
    QCOMPARE(scenario->boards[0].rate, 200);
    QVERIFY(!scenario->boards[1].plugged);
}

void tst_readme::theExampleHasEveryEvent()
{
    QSet<QString> expected;
    for (const QJsonValue event : schema["event"]["oneOf"].toArray())
        expected += event["properties"]["do"]["const"].toString();
    QSet<QString> found;
    for (const QJsonValue event : QJsonDocument::fromJson(example())["timeline"].toArray())
        found += event["do"].toString();
    QVERIFY(expected.size() > 5);
    QCOMPARE(found, expected);
}

void tst_readme::defaultsOfABoard()
{
    const QStringList rows = rowsOf(scenarioPage, "What a board does unless it is told otherwise");
    QStringList keys = schema["board"]["properties"].toObject().keys();
    keys.sort();
    QCOMPARE(namesIn(rows), keys);
    const BoardPlan plan{1, 1};
    const auto word = [](bool value) { return QString(value ? "true" : "false"); };
    const std::pair<const char *, QString> defaults[] = {
        {"rate", QString::number(plan.rate)}, {"adcMax", QString::number(plan.adcMax)},
        {"plugged", word(plan.plugged)},      {"lines", word(plan.lines)},
        {"unknowns", word(plan.unknowns)},    {"pen", plan.pen.away ? "\"away\"" : "\"writing\""}};
    for (const auto &[key, value] : defaults)
        QCOMPARE(rows.filter(QString("| `%1` | `%2` |").arg(key, value)).size(), 1);
}

void tst_readme::defaultsOfAReplay()
{
    const QStringList rows = rowsOf(scenarioPage, "A capture that is played");
    const QJsonValue replay =
        QJsonDocument::fromJson(contentsOf(SCENARIO_FOLDER "/schema.json").toUtf8())["properties"]["replay"];
    QStringList keys = replay["properties"].toObject().keys();
    keys.sort();
    QCOMPARE(namesIn(rows), keys);
    const ReplayPlan plan;
    QCOMPARE(plan.rate, 1.0);
    QCOMPARE(plan.rounds, 1U);
    QVERIFY(plan.from.count() == 0 && !plan.to && !plan.skipGaps && !plan.paused && !plan.lockstep);
    QCOMPARE(rows.filter(QRegularExpression("^\\| `(rate|loop)` \\| `1` ")).size(), 2);
    QCOMPARE(rows.filter(QRegularExpression("^\\| `(paused|lockstep)` \\| `false` ")).size(), 2);
    QCOMPARE(rows.filter(QRegularExpression("^\\| `(to|skipGaps|session)` \\| `null` ")).size(), 3);
}

void tst_readme::defaultWeights()
{
    QMap<QString, int> found;
    for (const QString &row : rowsOf(scenarioPage, "Weights")) {
        for (const QString &kind : namesIn({row}))
            found[kind] = cell(row, 2).toInt();
    }
    QMap<QString, int> expected;
    for (std::size_t kind = 0; kind < kindCount; ++kind)
        expected[QString::fromUtf8(kindNames[kind].data())] = usualWeights[kind];
    QCOMPARE(found, expected);
}

void tst_readme::kindsOfTheSchema()
{
    QStringList expected;
    for (const std::string_view kind : kindNames)
        expected += QString::fromUtf8(kind.data());
    expected.sort();
    QCOMPARE(schema["board"]["properties"]["kinds"]["properties"].toObject().keys(), expected);
}

/// Its title promises every type and sub-type.
void tst_readme::allKinds()
{
    const QByteArray file = contentsOf(SCENARIO_FOLDER "/all-kinds.json").toUtf8();
    const QJsonObject weights = QJsonDocument::fromJson(file)["boards"][0]["kinds"].toObject();
    for (const reports::Layout *layout : reports::layouts)
        QVERIFY2(weights[layout->name].toInt() > 0, layout->name);
}

PADSCOPE_TESTS(tst_readme);
#include "tst_readme.moc"
