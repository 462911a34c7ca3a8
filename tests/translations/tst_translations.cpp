#include <QDir>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

#include "support/tests.h"

namespace {

/// What of a text must be the same in every language: its outer blanks, its markup and its places for values.
QStringList fixedParts(const QString &text)
{
    static const QRegularExpression part(QStringLiteral("^\\s+|\\s+$|<[^>]*>|%[0-9]"));
    QStringList parts;
    QRegularExpressionMatchIterator matches = part.globalMatch(text);
    while (matches.hasNext())
        parts += matches.next().captured();
    parts.sort();
    return parts;
}

} // namespace

class TranslationsTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsFixedParts_data();
    void keepsFixedParts();
    void speaksGerman_data();
    void speaksGerman();
};

void TranslationsTest::keepsFixedParts_data()
{
    addColumns<QString, QString>("source", "translation");

    const QDir folder(QStringLiteral(TRANSLATION_SOURCES));
    const QStringList files = folder.entryList({QStringLiteral("*_*.ts")});
    QCOMPARE(files, QStringList({QStringLiteral("padscope_de.ts"), QStringLiteral("tendro-host_de.ts")}));
    for (const QString &name : files) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        QString source;
        for (int count = 0; !xml.atEnd();) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == QLatin1String("source"))
                source = xml.readElementText();
            else if (xml.isStartElement() && xml.name() == QLatin1String("translation"))
                QTest::addRow("%s %d %s", qPrintable(name), ++count, qPrintable(source))
                    << source << xml.readElementText();
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    }
}

void TranslationsTest::keepsFixedParts()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    QCOMPARE(fixedParts(translation), fixedParts(source));
}

void TranslationsTest::speaksGerman_data()
{
    addColumns<QByteArray, QByteArray, QString>("context", "source", "german");

    const auto row = [](const char *context, const char *source, const char *german) {
        QTest::addRow("%s %s", context, source)
            << QByteArray(context) << QByteArray(source) << QString::fromUtf8(german);
    };
    row("TendroPadscope", "Board diagnostic tool.", "Diagnosewerkzeug für Boards.");
    row("bargraph", "Volts: %1", "Spannung: %1 V");
    row("monitor", "Student", "Schüler");
    row("qorvexgraph", "<b>%1 devices found.</b>", "<b>%1 Geräte gefunden.</b>");
    row("qorvexgraph", " <i>Paused</i>", " <i>Angehalten</i>");
    // these two are names that something else looks for
    row("TendroPadscope", "TendroPadscope", "TendroPadscope");
    row("qorvexgraph", "history/%1", "history/%1");
}

void TranslationsTest::speaksGerman()
{
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(TRANSLATIONS "/padscope_de.qm")));
    QTEST(translator.translate(context.constData(), source.constData()), "german");
}

PADSCOPE_TESTS(TranslationsTest);
#include "tst_translations.moc"
