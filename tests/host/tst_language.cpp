#include "tests/host/hostrun.h"
#include "tests/support/testmain.h"

#include <QSettings>

namespace {

/// A run of the host with the real tool, with the languages that the user prefers.
Run runIn(const char *languages, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_GB.UTF-8"));
    environment.insert(QStringLiteral("LANGUAGE"), QLatin1String(languages));
    return run(QStringList{QStringLiteral("--plugins"), QStringLiteral(PADSCOPE_PLUGIN_FOLDER)} + arguments,
               environment);
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
    void takesTheGivenTranslation();
    void keepsSettingsKeys();
};

void LanguageTest::followsTheSystem_data()
{
    QTest::addColumn<QByteArray>("languages");
    QTest::addColumn<QString>("captions");

    QTest::newRow("German") << QByteArray("de") << german;
    QTest::newRow("German of a country") << QByteArray("de_AT") << german;
    QTest::newRow("German as the second choice") << QByteArray("xh:de") << german;
    QTest::newRow("English before German") << QByteArray("en_GB:de") << english;
    QTest::newRow("a language without translation") << QByteArray("xh") << english;
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

void LanguageTest::takesTheGivenTranslation()
{
    const Run host =
        runIn("en", {QStringLiteral("--translation"), QStringLiteral(PADSCOPE_TRANSLATIONS "/padscope_de.qm"),
                     QStringLiteral("--tab"), QStringLiteral("Balkenanzeige=0")});
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.status, 0);
}

void LanguageTest::keepsSettingsKeys()
{
    const Run host = runIn("de", {QStringLiteral("--type"), QStringLiteral("in German"),
                                  QStringLiteral("--tab"), QStringLiteral("Balkenanzeige=0")});
    QCOMPARE(host.status, 0);
    const QSettings settings(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"));
    QCOMPARE(settings.value(QStringLiteral("history/0")).toString(), QStringLiteral("in German"));
}

PADSCOPE_TEST_MAIN(LanguageTest)
#include "tst_language.moc"
