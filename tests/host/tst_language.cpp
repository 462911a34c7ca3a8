#include "host/examplefolder.h"
#include "host/hostrun.h"
#include "support/tests.h"

#include <QSettings>

namespace {

/// A run of the host, with the real tool unless it is told otherwise, with the languages that the user
/// prefers.
Run runIn(const char *languages, const QStringList &arguments,
          const QString &plugins = QStringLiteral(PADSCOPE_PLUGIN_FOLDER))
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_GB.UTF-8"));
    environment.insert(QStringLiteral("LANGUAGE"), QLatin1String(languages));
    return run(QStringList{QStringLiteral("--plugins"), plugins} + arguments, environment);
}

const QString english = QStringLiteral(R"("Bar Graph", "Monitor")");
const QString german = QStringLiteral(R"("Balkenanzeige", "Monitor")");

} // namespace

class LanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void followsTheSystem_data();
    void followsTheSystem();
    void followsTheLocaleAlone();
    void translatesHostAndToolkit_data();
    void translatesHostAndToolkit();
    void findsTabsByEitherCaption_data();
    void findsTabsByEitherCaption();
    void takesTheGivenTranslation();
    void takesNoOtherThanTheGivenTranslation();
    void keepsSettingsKeys();
};

void LanguageTest::followsTheSystem_data()
{
    addColumns<QByteArray, QString>("languages", "captions");

    addRow("German", QByteArray("de"), german);
    addRow("German of a country", QByteArray("de_AT"), german);
    addRow("German as the second choice", QByteArray("xh:de"), german);
    addRow("English before German", QByteArray("en_GB:de"), english);
    addRow("a language without translation", QByteArray("xh"), english);
}

void LanguageTest::followsTheSystem()
{
    QFETCH(QByteArray, languages);
    QFETCH(QString, captions);
    const Run host = runIn(languages.constData(), {QStringLiteral("--tab"), QStringLiteral("none")});
    QCOMPARE(host.errors,
             QStringList(QStringLiteral("tendro-host: --tab none: no such tab; there is ") + captions));
}

void LanguageTest::followsTheLocaleAlone()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    const Run host = run({QStringLiteral("--plugins"), QStringLiteral(PADSCOPE_PLUGIN_FOLDER),
                          QStringLiteral("--tab"), QStringLiteral("none")},
                         environment);
    QCOMPARE(host.errors,
             QStringList(QStringLiteral("tendro-host: --tab none: no such tab; there is ") + german));
}

void LanguageTest::translatesHostAndToolkit_data()
{
    addColumns<QByteArray, QByteArray, QString>("languages", "text", "translation");

    const auto row = [](const char *name, const char *languages, const char *text, const char *translation) {
        addRow(name, QByteArray(languages), QByteArray(text), QString::fromUtf8(translation));
    };
    row("host", "de", "HostWindow|&Quit", "&Beenden");
    row("host in German of a country", "de_AT", "HostWindow|&Quit", "&Beenden");
    row("host in English", "en_GB", "HostWindow|&Quit", "&Quit");
    row("fault", "de", "Fault|The next command takes 2 s.", "Der nächste Befehl dauert 2 s.");
    row("toolkit", "de", "QPlatformTheme|Cancel", "Abbrechen");
    row("toolkit in English", "en_GB", "QPlatformTheme|Cancel", "Cancel");
    // there is a catalogue of the toolkit alone, which would make a mixture
    row("toolkit in a language that the host has not", "fr", "QPlatformTheme|Cancel", "Cancel");
}

void LanguageTest::translatesHostAndToolkit()
{
    QFETCH(QByteArray, languages);
    QFETCH(QByteArray, text);
    QFETCH(QString, translation);
    const ToolFolder folder;
    qputenv("EXAMPLE_TRANSLATES", text);
    const Run host = runIn(languages.constData(), {QStringLiteral("--list")}, folder.path());
    qunsetenv("EXAMPLE_TRANSLATES");
    QCOMPARE(host.output.section(QLatin1Char('\t'), 2, 2), translation);
}

void LanguageTest::findsTabsByEitherCaption_data()
{
    addColumns<QString, int>("tab", "status");
    addRow("translated", "Balkenanzeige=0", 0);
    addRow("untranslated", "Bar Graph=0", 0);
    addRow("the same in both", "Monitor=0", 0);
    addRow("another text of the tool", "Log to file=0", 2);
}

void LanguageTest::findsTabsByEitherCaption()
{
    QFETCH(QString, tab);
    const Run host = runIn("de", {QStringLiteral("--tab"), tab});
    QTEST(host.status, "status");
}

void LanguageTest::takesTheGivenTranslation()
{
    const Run host =
        runIn("en", {QStringLiteral("--translation"), QStringLiteral(PADSCOPE_TRANSLATIONS "/padscope_de.qm"),
                     QStringLiteral("--tab"), QStringLiteral("Balkenanzeige=0")});
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.status, 0);
}

void LanguageTest::takesNoOtherThanTheGivenTranslation()
{
    // one that lacks every text of the tool
    const Run host = runIn("de", {QStringLiteral("--translation"),
                                  QStringLiteral(PADSCOPE_TRANSLATIONS "/tendro-host_de.qm"),
                                  QStringLiteral("--tab"), QStringLiteral("none")});
    QCOMPARE(host.errors,
             QStringList(QStringLiteral("tendro-host: --tab none: no such tab; there is ") + english));
}

void LanguageTest::keepsSettingsKeys()
{
    const Run host = runIn("de", {QStringLiteral("--type"), QStringLiteral("in German"),
                                  QStringLiteral("--tab"), QStringLiteral("Balkenanzeige=0")});
    QCOMPARE(host.status, 0);
    const QSettings settings(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"));
    QCOMPARE(settings.value(QStringLiteral("history/0")).toString(), QStringLiteral("in German"));
}

PADSCOPE_TESTS(LanguageTest);
#include "tst_language.moc"
