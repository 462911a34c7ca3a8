#include <functional>
#include <map>
#include <QFile>
#include <QTemporaryDir>

#include "scenarioreader.h"
#include "support/datalines.h"
#include "support/tests.h"

/// What is read of a scenario file, and the one line about a file that is not valid.
class tst_scenarioreader : public QObject
{
    Q_OBJECT

private slots:
    void isRead_data();
    void isRead();
    void theDefaultIsOneBoard();
    void thePlugStorm();
    void isNotValid_data();
    void isNotValid();
    void filesThatAreNone();
    void cutFilesAreNotValid();

private:
    std::optional<Scenario> read(const QByteArray &text);

    QTemporaryDir folder;
    const QString path = folder.filePath("s.json");
    std::string error;
};

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

template <typename Numbers>
QString list(const Numbers &numbers)
{
    QStringList texts;
    for (const auto one : numbers)
        texts += number(one);
    return texts.join(' ');
}

QString seconds(std::chrono::nanoseconds time)
{
    return number(std::chrono::duration<double>(time).count());
}

QString penOf(const PenPath &path)
{
    QString text = path.away ? "away" : path.points.empty() ? "writing" : "";
    for (const PenPath::Point &point : path.points)
        text += (text.isEmpty() ? "" : ", pen ") + number(point.seconds) + " s from " + number(point.x) +
                ' ' + number(point.y) + (point.touches ? " down" : "");
    return ", pen " + text;
}

QString boardOf(const BoardPlan &plan)
{
    return number(plan.id) + ": seed " + number(plan.seed) + ", rate " + number(plan.rate) +
           (plan.plugged ? "" : ", not plugged") + (plan.lines ? ", lines" : "") +
           (plan.unknowns ? ", unknowns" : "") + ", adc " + number(plan.adcMax) + ", kinds " +
           list(plan.weights) + penOf(plan.pen);
}

QString eventOf(const BoardEvent &event)
{
    const QString at = "at " + seconds(event.at);
    if (const auto *burst = std::get_if<Burst>(&event.what))
        return at + " burst " + number(burst->reports) +
               (burst->kind ? " of kind " + number(static_cast<int>(*burst->kind)) : "");
    if (const auto *pause = std::get_if<Pause>(&event.what))
        return at + " pause " + seconds(pause->duration);
    if (const auto *rate = std::get_if<Rate>(&event.what))
        return at + " rate " + number(rate->perSecond);
    if (const auto *raw = std::get_if<Raw>(&event.what))
        return (at + " raw " + QByteArray::fromStdString({raw->bytes.begin(), raw->bytes.end()}).toHex())
            .trimmed();
    return at + " vanish";
}

QString eventsOf(const BoardPlan &plan)
{
    QStringList texts;
    for (const BoardEvent &event : plan.events)
        texts += eventOf(event);
    return texts.join(", ");
}

/// What each event leaves of the library's faults.
QString faultsOf(const Scenario &scenario)
{
    QStringList texts;
    StandingFaults now;
    for (const LibraryEvent &event : scenario.events) {
        event.change(now);
        texts += "at " + seconds(event.at) + (" fail " + list(now.failingIndexes)).trimmed().prepend(' ') +
                 " count " + number(now.countLie) + " delay " + number(now.commandDelayMs) + " callback " +
                 number(now.callbackInCommand);
    }
    return texts.join(", ");
}

QString libraryOf(const Scenario &scenario)
{
    QStringList texts;
    for (const LibraryEvent &event : scenario.events)
        texts += "at " + seconds(event.at) +
                 (event.what == LibraryEvent::What::Plug ? " plug " : " unplug ") + number(event.value);
    return texts.join(", ");
}

template <typename Text>
QString ofEachBoard(const Scenario &scenario, const char *separator, Text textOf)
{
    QStringList texts;
    for (const BoardPlan &plan : scenario.boards)
        texts += textOf(plan);
    return texts.join(separator);
}

const std::map<QString, std::function<QString(const Scenario &)>> parts{
    {"boards", [](const Scenario &all) { return ofEachBoard(all, "; ", boardOf); }},
    {"seeds",
     [](const Scenario &all) { return ofEachBoard(all, " ", [](auto &plan) { return number(plan.seed); }); }},
    {"events", [](const Scenario &all) { return ofEachBoard(all, "; ", eventsOf); }},
    {"event counts",
     [](const Scenario &all) {
         return ofEachBoard(all, " ",
                            [](auto &plan) { return number(static_cast<double>(plan.events.size())); });
     }},
    {"faults", faultsOf},
    {"library", libraryOf},
};

} // namespace

std::optional<Scenario> tst_scenarioreader::read(const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("the file cannot be written");
    file.close();
    return readScenario(path.toStdString(), error);
}

void tst_scenarioreader::isRead_data()
{
    addColumns<QByteArray, QString, QString>("text", "part", "expected");
    for (const QStringList &line : dataLines(TEST_FOLDER "/valid.txt", 4, 4))
        addRow(qPrintable(line[0]), line[1].toUtf8(), line[2], line[3]);
}

void tst_scenarioreader::isRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, part);
    const auto scenario = read(text);
    QVERIFY2(scenario, error.c_str());
    QTEST(parts.at(part)(*scenario), "expected");
    QVERIFY(text.contains("\"title\": \"" + QByteArray::fromStdString(scenario->title) + '"'));
}

// What the library has built in for when it stands alone.
void tst_scenarioreader::theDefaultIsOneBoard()
{
    const auto scenario = readScenario(SCENARIO_FOLDER "/default.json", error);
    QVERIFY2(scenario, error.c_str());
    QCOMPARE(parts.at("boards")(*scenario), boardOf({1001, 1001}));
    QVERIFY(scenario->boards[0].events.empty() && scenario->events.empty());
}

void tst_scenarioreader::thePlugStorm()
{
    const auto events =
        read(R"({"title": "t", "boards": [], "faults": [{"fault": "plug-storm", "at": 1}]})")->events;
    QCOMPARE(events.size(), std::size_t{500});
    QVERIFY(events.front().at == std::chrono::seconds(1));
    QVERIFY(events.back().at == std::chrono::milliseconds(1499));
}

void tst_scenarioreader::isNotValid_data()
{
    addColumns<QByteArray, QString>("text", "line"); // behind the file's name
    for (const QStringList &line : dataLines(TEST_FOLDER "/invalid.txt", 3, 3))
        addRow(qPrintable(line[0]), line[1].toUtf8(), line[2]);
    addRow(
        "nested far too deep", R"({"title": )" + QByteArray(500000, '['),
        QString(
            "line 1, column 42: the lists and objects are nested too deep; allowed are 32 in one another"));
    addRow("not JSON", QByteArray("{\n  \"title\": }"),
           QString("line 2, column 12: this is not JSON: syntax error while parsing value - unexpected '}'; "
                   "expected '[', '{', or a literal"));
    addRow("too large", QByteArray(1024 * 1024 + 1, ' '),
           QString("the file is too large; allowed are up to 1048576 bytes"));
}

void tst_scenarioreader::isNotValid()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, line);
    QVERIFY(!read(text));
    QCOMPARE(QString::fromStdString(error), path + ": " + line);
}

void tst_scenarioreader::filesThatAreNone()
{
    const QString loop = folder.filePath("loop.json");
    QVERIFY(QFile::link(loop, loop));
    const std::pair<QString, QString> reasons[] = {{"/no/where.json", "No such file or directory"},
                                                   {folder.path(), "it is not a regular file"},
                                                   {"two\nlines", "No such file or directory"},
                                                   {loop, "Too many levels of symbolic links"}};
    for (auto [file, reason] : reasons) {
        QVERIFY(!readScenario(file.toStdString(), error));
        QCOMPARE(QString::fromStdString(error), file.replace('\n', '?') + ": this cannot be read (" + reason +
                                                    "); a scenario file is needed");
    }
}

// Never is a part of a file read.
void tst_scenarioreader::cutFilesAreNotValid()
{
    QFile file(SCENARIO_FOLDER "/timeline.json");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll().trimmed();
    QVERIFY(whole.size() > 500);
    for (int length = 0; length < whole.size(); ++length) {
        QVERIFY(!read(whole.left(length)));
        QVERIFY(error.find("this is not JSON") != std::string::npos);
        QCOMPARE(error.find('\n'), std::string::npos);
    }
    QVERIFY2(read(whole), error.c_str());
}

PADSCOPE_TESTS(tst_scenarioreader);
#include "tst_scenarioreader.moc"
