#include "options.h"
#include "support/tests.h"

#include <QCommandLineParser>

namespace {

QString read(const QStringList &arguments, Options &options)
{
    QCommandLineParser parser;
    declareOptions(parser);
    return readOptions(parser, QStringList{QStringLiteral("tendro-host")} + arguments, options);
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void readsNothing();
    void readsEverything();
    void readsScenario_data();
    void readsScenario();
    void readsTabs_data();
    void readsTabs();
    void refuses_data();
    void refuses();
    void refusesEmptyPaths_data();
    void refusesEmptyPaths();
};

void OptionsTest::readsNothing()
{
    Options options;
    QCOMPARE(read({}, options), QString());
    QVERIFY(!options.list);
    QVERIFY(!options.needsTool());
    QVERIFY(!options.closeAfterMs);
    QVERIFY(options.pluginFolders.isEmpty());
}

void OptionsTest::readsEverything()
{
    Options options;
    QCOMPARE(read(words("--list --rows --open A --type :x --type :y --for 1.5 --plugins / --plugins /usr "
                        "--snapshot out"),
                  options),
             QString());
    QVERIFY(options.list);
    QVERIFY(options.rows);
    QCOMPARE(options.openId, QStringLiteral("A"));
    QCOMPARE(options.typedLines, QStringList({QStringLiteral(":x"), QStringLiteral(":y")}));
    QCOMPARE(options.closeAfterMs.value_or(-1), 1500);
    QCOMPARE(options.pluginFolders, QStringList({QStringLiteral("/"), QStringLiteral("/usr")}));
    QCOMPARE(options.snapshotFolder, QStringLiteral("out"));
    QVERIFY(options.needsTool());
}

void OptionsTest::readsScenario_data()
{
    addColumns<QString, bool, QString>("arguments", "simulate", "scenario");

    addRow("none", "--rows", false, "");
    addRow("no value at the end", "--rows --simulate", true, "");
    addRow("no value before an option", "--simulate --rows", true, "");
    addRow("a name", "--simulate flood --rows", true, "flood");
    addRow("a name with an equals sign", "--simulate=flood --rows", true, "flood");
    addRow("the last one counts", "--simulate --rows --simulate flood", true, "flood");
}

void OptionsTest::readsScenario()
{
    QFETCH(QString, arguments);
    Options options;
    QCOMPARE(read(arguments.split(QLatin1Char(' ')), options), QString());
    QTEST(options.simulate, "simulate");
    QTEST(options.scenario, "scenario");
    QCOMPARE(options.rows, true);
}

void OptionsTest::readsTabs_data()
{
    addColumns<QString, QString, int>("value", "caption", "durationMs");

    addRow("caption alone", "Bar Graph", "Bar Graph", 1000);
    addRow("with seconds", "Monitor=2.5", "Monitor", 2500);
    addRow("no time at all", "Monitor=0", "Monitor", 0);
    addRow("last equals sign", "a=b=3", "a=b", 3000);
    addRow("a day", "Monitor=86400", "Monitor", 86400000);
}

void OptionsTest::readsTabs()
{
    QFETCH(QString, value);
    Options options;
    QCOMPARE(read({QStringLiteral("--tab"), value}, options), QString());
    QCOMPARE(options.tabs.size(), std::size_t(1));
    QTEST(options.tabs[0].caption, "caption");
    QTEST(options.tabs[0].durationMs, "durationMs");
}

void OptionsTest::refuses_data()
{
    addColumns<QStringList, QString>("arguments", "error");

    const QString seconds = QStringLiteral("expected seconds from 0 to 86400");
    addRow("unknown option", words("--bogus"), "Unknown option 'bogus'.");
    addRow("argument", words("file"), "Unexpected argument 'file'.");
    addRow("missing value", words("--for"), "Missing value after '--for'.");
    addRow("value of a switch", words("--rows=1"), "Unexpected value after '--rows'.");
    addRow("text for seconds", words("--for soon"), "--for soon: " + seconds);
    addRow("negative seconds", words("--for=-1"), "--for -1: " + seconds);
    addRow("endless seconds", words("--for inf"), "--for inf: " + seconds);
    addRow("no number of seconds", words("--for nan"), "--for nan: " + seconds);
    addRow("more than a day", words("--for 86400.1"), "--for 86400.1: " + seconds);
    addRow("empty tab seconds", words("--tab A="), "--tab A=: " + seconds + " after \"=\"");
    addRow("no such folder", words("--plugins /nowhere"), "--plugins /nowhere: no such folder");
    addRow("second folder", words("--plugins / --plugins /nowhere"), "--plugins /nowhere: no such folder");
    addRow("file as the folder", words("--plugins /proc/self/status"),
           "--plugins /proc/self/status: a file, not a folder");
    addRow("no such driver", words("--driver /nowhere"), "--driver /nowhere: no such file");
    addRow("driver is a folder", words("--driver /"), "--driver /: a folder, not a file");
    addRow("two drivers", words("--simulate --driver /proc/self/status"),
           "--simulate and --driver: expected one of them at most");
    addRow("no such translation", words("--translation /nowhere"), "--translation /nowhere: no such file");
}

void OptionsTest::refuses()
{
    QFETCH(QStringList, arguments);
    Options options;
    QTEST(read(arguments, options), "error");
}

void OptionsTest::refusesEmptyPaths_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"--plugins", "--driver", "--translation", "--snapshot"})
        addRow(name, name);
}

void OptionsTest::refusesEmptyPaths()
{
    QFETCH(QString, name);
    Options options;
    const QString error = read({name, QString()}, options);
    QVERIFY2(error.startsWith(name), qPrintable(error));
}

PADSCOPE_TESTS(OptionsTest);
#include "tst_options.moc"
