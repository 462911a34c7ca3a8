#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "support/tests.h"
#include "surroundings/childrun.h"

/// Locales, fonts, directions, sizes and resolutions: the same rows in all of them, and pictures of the size.
class Desktop : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void locales_data();
    void locales();
    void noFonts();
    void rightToLeft();
    void smallWindow();
    void pixelRatios_data();
    void pixelRatios();

private:
    QByteArray rowsOf(const QByteArray &output) const;
    ChildRun session(const QStringList &arguments = {}) const
    {
        return runChild(SESSION_PROGRAM, arguments, environment);
    }

    std::unique_ptr<QTemporaryDir> home;
    QProcessEnvironment environment;
};

namespace {

constexpr char sameRows[] =
    "X Fine 0:     3   60:   -47   120:   256 / Y Fine  0:  1000   60    12   120:    -5 / "
    "X Crse 0:    77   60:  9999   120:  -300 / Y Crse  0: 10000   60     4   120:    88 / Freq -1234\n"
    "A..\n"
    "Raw ADC: 250Voltage: 1.22V\n"
    "...   03 c8 1b \n";

} // namespace

void Desktop::init()
{
    home = std::make_unique<QTemporaryDir>();
    environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home->path());
    environment.insert("XDG_CONFIG_HOME", home->filePath("config"));
}

/// All but the lines on the pictures.
QByteArray Desktop::rowsOf(const QByteArray &output) const
{
    QByteArray rows;
    for (const QByteArray &line : output.split('\n')) {
        if (!line.isEmpty() && !line.startsWith("picture "))
            rows += line + '\n';
    }
    return rows;
}

void Desktop::locales_data()
{
    addColumns<QString, QString>("language", "characters");
    addRow("C", QString(), QString());
    addRow("German", "de_DE", "UTF-8");
    addRow("Japanese", "ja_JP", "UTF-8");
    addRow("Arabic", "ar_EG", "UTF-8");
    addRow("German, Latin-1", "de_DE", "ISO-8859-1");
}

void Desktop::locales()
{
    QFETCH(QString, language);
    QFETCH(QString, characters);
    environment.insert("LC_ALL", "C");
    if (!language.isEmpty()) {
        const QString name = language + "." + characters;
        const ChildRun made =
            runChild("localedef", {"-i", language, "-f", characters, home->filePath(name)}, environment);
        QVERIFY2(QFile::exists(home->filePath(name) + "/LC_CTYPE"), made.errors);
        environment.insert("LOCPATH", home->path());
        environment.insert("LC_ALL", name);
    }
    const ChildRun result = session();
    QVERIFY2(result.status == 0, result.errors);
    QByteArray rows = sameRows;
    // What can be printed is up to the characters of the process: one byte, and so only where a byte is one.
    if (characters == "ISO-8859-1")
        rows.replace("A..", "A\xe4.").replace("...   03 c8", ".\xc8.   03 c8");
    QCOMPARE(rowsOf(result.output), rows);
    // The file's name is in the locale's words, its contents are not.
    const QDir logs(home->filePath("qorvexgraph logs"));
    const QStringList files = logs.entryList(QDir::Files);
    QCOMPARE(files.size(), 1);
    QFile log(logs.filePath(files.first()));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(log.readAll(),
             QByteArray(rows).replace("...   03", "...\n03").replace(".\xc8.   03", ".\xc8.\n03"));
}

void Desktop::noFonts()
{
    QFile configuration(home->filePath("fonts.conf"));
    QVERIFY(configuration.open(QIODevice::WriteOnly));
    configuration.write("<?xml version=\"1.0\"?>\n<fontconfig/>\n");
    configuration.close();
    environment.insert("FONTCONFIG_FILE", configuration.fileName());
    const ChildRun result = session({"500", "400"});
    QVERIFY2(result.status == 0, result.errors);
    QCOMPARE(rowsOf(result.output), QByteArray(sameRows));
    QVERIFY2(result.output.contains("picture 500 x 400, 100%"), result.output);
}

void Desktop::rightToLeft()
{
    const ChildRun result = session({"-reverse", "500", "400"});
    QVERIFY2(result.status == 0, result.errors);
    QCOMPARE(rowsOf(result.output), QByteArray(sameRows));
    QVERIFY2(result.output.contains("picture 500 x 400, 100%"), result.output);
}

void Desktop::smallWindow()
{
    const ChildRun result = session({"300", "200"});
    QVERIFY2(result.status == 0, result.errors);
    QCOMPARE(rowsOf(result.output), QByteArray(sameRows));
    QCOMPARE(result.output.count("picture 300 x 200, 100%"), 4);
}

void Desktop::pixelRatios_data()
{
    addColumns<QString, QByteArray>("factor", "picture");
    addRow("1", "1", QByteArray("picture 500 x 400, 100%"));
    addRow("1.5", "1.5", QByteArray("picture 750 x 600, 150%"));
    addRow("2", "2", QByteArray("picture 1000 x 800, 200%"));
}

void Desktop::pixelRatios()
{
    QFETCH(QString, factor);
    QFETCH(QByteArray, picture);
    environment.insert("QT_SCALE_FACTOR", factor);
    environment.insert("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    const ChildRun result = session({"500", "400"});
    QVERIFY2(result.status == 0, result.errors);
    QCOMPARE(rowsOf(result.output), QByteArray(sameRows));
    QVERIFY2(result.output.count(picture) == 4, result.output);
}

PADSCOPE_TESTS(Desktop);
#include "tst_desktop.moc"
