#include "driver/entrypoints.h"
#include "simulator/faults.h"
#include "simulator/firmware.h"
#include "simulator/scenarioreader.h"

#include <algorithm>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

/// The tables of the simulator's page name what there is: no more, no less, and each once.
class tst_readme : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void entryPoints();
    void scenarios();
    void faultsAndTheirAmounts();
    void commands();

private:
    QStringList rowsOf(const QString &section) const;

    QString page;
};

namespace {

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
    QFile file(SIMULATOR_FOLDER "/README.md");
    QVERIFY(file.open(QIODevice::ReadOnly));
    page = QString::fromUtf8(file.readAll());
}

/// The rows of the table in a section, without its head.
QStringList tst_readme::rowsOf(const QString &section) const
{
    const int start = page.indexOf("\n## " + section + "\n");
    const QString body = page.mid(start, page.indexOf("\n## ", start + 1) - start);
    return start < 0 ? QStringList() : body.split('\n').filter(QRegularExpression("^\\|")).mid(2);
}

void tst_readme::entryPoints()
{
    QStringList expected;
#define APPEND(name) expected.append(#name);
    ORVEX_LOOKUPS(APPEND)
#undef APPEND
    expected.sort();
    QCOMPARE(expected.size(), 47);
    QCOMPARE(quotedIn(cells(rowsOf("Entry points"), 1)), expected);
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
    QStringList rows = rowsOf("Scenarios");
    rows.sort();
    QCOMPARE(rows, expected);
}

void tst_readme::faultsAndTheirAmounts()
{
    QStringList names;
    const QStringList rows = rowsOf("Faults");
    for (const Fault &fault : faults) {
        const QString name = QString::fromUtf8(fault.name.data());
        names.append(name);
        const QString row = rows.filter("| `" + name + "` |").value(0);
        const auto tells = [&row](const QString &amount) { return row.contains(amount); };
        QVERIFY2(fault.reports <= 1 || tells(QString::number(fault.reports) + ' '), qPrintable(name));
        QVERIFY2(fault.seconds <= 0 || tells(QString::number(fault.seconds) + " s"), qPrintable(name));
        QVERIFY2(fault.by == 0 || tells(QString::number(fault.by)), qPrintable(name));
        const char *scopes[] = {"one board", "every board", "the library"};
        QCOMPARE(cells({row}, 2).value(0), QString(scopes[static_cast<int>(fault.scope)]));
    }
    names.sort();
    QCOMPARE(quotedIn(cells(rows, 1)), names);
}

// The firmware lists what it knows when it is asked: "[?] commands: . B U8!".
void tst_readme::commands()
{
    Sensor sensor(1);
    Firmware firmware(sensor);
    const QString answer = QString::fromStdString(firmware.take("?").at(0));
    QStringList expected = answer.chopped(1).section(": ", 1).split(' ');
    QVERIFY(expected.size() > 20);
    for (const char *name : {"K2", "K3", "K4", "K5"}) // "K1 to K6"
        QVERIFY(expected.removeOne(name));
    expected.sort();
    QCOMPARE(quotedIn(cells(rowsOf("Commands"), 1)), expected);
}

QTEST_APPLESS_MAIN(tst_readme)
#include "tst_readme.moc"
