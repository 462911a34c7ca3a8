#include <QRegularExpression>
#include <QTranslator>

#include "support/tests.h"
#include "translations/messages.h"

namespace {

/// What of a text must be the same in every language: its outer blanks, markup, places for values, patterns
/// of files, mnemonics by number, and whether it ends in dots.
QStringList fixedParts(const QString &text)
{
    static const QRegularExpression part(
        QStringLiteral("^\\s+|\\s+$|<[^>]*>|%[0-9]|\\(\\*.*\\)|&(?=\\w)|\\.{3}$"),
        QRegularExpression::UseUnicodePropertiesOption);
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
    void areInEachLanguage();
    void keepsFixedParts_data();
    void keepsFixedParts();
    void seesWhatIsNotKept_data();
    void seesWhatIsNotKept();
    void hasEveryText_data();
    void hasEveryText();
    void keepsNames_data() { rowsOfTool(); }
    void keepsNames();
    void leavesTextsUntranslated_data() { rowsOfTool(); }
    void leavesTextsUntranslated();
    void tellsPensApartInLatin1_data() { rowsOfTool(); }
    void tellsPensApartInLatin1();
    void speaks_data();
    void speaks();

private:
    /// A row for each of the tool's compiled catalogues.
    static void rowsOfTool();
};

void TranslationsTest::areInEachLanguage()
{
    QCOMPARE(catalogues(),
             QStringList({"padscope_de.ts", "padscope_es.ts", "padscope_fr.ts", "padscope_ja.ts",
                          "padscope_zh_CN.ts", "tendro-host_de.ts", "tendro-host_es.ts", "tendro-host_fr.ts",
                          "tendro-host_ja.ts", "tendro-host_zh_CN.ts"}));
}

void TranslationsTest::rowsOfTool()
{
    addColumns<QString>("file");
    for (const char *language : {"de", "es", "fr", "ja", "zh_CN"})
        addRow(language, QStringLiteral(TRANSLATIONS "/padscope_%1.qm").arg(language));
}

void TranslationsTest::keepsFixedParts_data()
{
    addColumns<QString, QString>("source", "translation");
    for (const QString &name : catalogues()) {
        int count = 0;
        for (const Message &message : messagesOf(name))
            QTest::addRow("%s %d %s", qPrintable(name), ++count, qPrintable(message.source))
                << message.source << message.translation;
        QVERIFY(count > 20);
    }
}

void TranslationsTest::keepsFixedParts()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    QCOMPARE(fixedParts(translation), fixedParts(source));
}

void TranslationsTest::seesWhatIsNotKept_data()
{
    addColumns<QString, QString>("text", "damaged");
    addRow("leading blank", QString(" <i>Paused</i>"), QString("<i>Paused</i>"));
    addRow("markup", QString("<b>%1 found</b>"), QString("<i>%1 found</i>"));
    addRow("markup that stays open", QString("<b>%1</b>"), QString("<b>%1"));
    addRow("place for a value", QString("%1 to %2"), QString("%1 to %1"));
    addRow("mnemonic", QString("&Open"), QString("Open"));
    addRow("mnemonic too many", QString("Open"), QString("(&O)"));
    addRow("dots", QString("Open..."), QString("Open"));
    addRow("pattern", QString("All (*.json *.x)"), QString("All (*.json)"));
}

void TranslationsTest::seesWhatIsNotKept()
{
    QFETCH(QString, text);
    QFETCH(QString, damaged);
    QVERIFY(fixedParts(text) != fixedParts(damaged));
}

void TranslationsTest::hasEveryText_data()
{
    addColumns<QString>("name");
    for (const QString &name : catalogues())
        addRow(qPrintable(name), name);
}

void TranslationsTest::hasEveryText()
{
    QFETCH(QString, name);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(TRANSLATIONS "/") + QString(name).replace(".ts", ".qm")));
    for (const Message &message : messagesOf(name)) {
        const QString text =
            translator.translate(message.context.toUtf8().constData(), message.source.toUtf8().constData(),
                                 message.comment.toUtf8().constData());
        QVERIFY2(!text.isEmpty(), qPrintable(message.source));
        QCOMPARE(text, message.translation);
    }
}

/// Something else looks for these.
void TranslationsTest::keepsNames()
{
    QFETCH(QString, file);
    QTranslator translator;
    QVERIFY(translator.load(file));
    QCOMPARE(translator.translate("qorvexgraph", "history/%1"), QString("history/%1"));
    QCOMPARE(translator.translate("TendroPadscope", "TendroPadscope"), QString("TendroPadscope"));
    QCOMPARE(translator.translate("TendroPadscope", "Copyright (c) 2010 Corvane"),
             QString("Copyright (c) 2010 Corvane"));
    const char *caption = "This is the caption of a button that start a program call padscope.";
    QCOMPARE(translator.translate("TendroPadscope", "Padscope", caption), QString("Padscope"));
}

void TranslationsTest::leavesTextsUntranslated()
{
    QFETCH(QString, file);
    QTranslator translator;
    QVERIFY(translator.load(file));
    for (const char *context : {"TendroPadscope", "qorvexgraph", "monitor", "bargraph", "QObject"}) {
        for (const char *text :
             {"Devices found", "9/advanced/padscope", "Font", "Prox:", "Prox: %1",
              "Freq:", "X Fine 0:", "Raw ADC: ", "Voltage: ", "Pen: ", "Q: ", "Monitor Font",
              "Monitor Font Size", "Log To File", "monitor.displayThreshold", "bargraph.displayThreshold"})
            QVERIFY2(translator.translate(context, text).isNull(), text);
    }
}

/// Logs are in Latin-1.
void TranslationsTest::tellsPensApartInLatin1()
{
    QFETCH(QString, file);
    QTranslator translator;
    QVERIFY(translator.load(file));
    QStringList words;
    for (const char *text : {"Teacher", "Student", "Unknown: %1"}) {
        words += QString::fromLatin1(translator.translate("monitor", text).toLatin1());
        QVERIFY2(!words.last().startsWith('?'), text);
    }
    QCOMPARE(words.removeDuplicates(), 0);
}

void TranslationsTest::speaks_data()
{
    addColumns<QString, QByteArray, QByteArray, QString>("catalogue", "context", "source", "translation");

    const auto row = [](const char *catalogue, const char *context, const char *source,
                        const char *translation) {
        QTest::addRow("%s %s", catalogue, source) << QString(catalogue) << QByteArray(context)
                                                  << QByteArray(source) << QString::fromUtf8(translation);
    };
    row("padscope_de", "TendroPadscope", "Board diagnostic tool.", "Diagnosewerkzeug für Boards.");
    row("padscope_de", "bargraph", "Volts: %1", "Spannung: %1 V");
    row("padscope_de", "monitor", "Student", "Schüler");
    row("padscope_de", "qorvexgraph", "<b>%1 devices found.</b>", "<b>%1 Geräte gefunden.</b>");
    row("padscope_de", "qorvexgraph", " <i>Paused</i>", " <i>Angehalten</i>");
    row("padscope_es", "bargraph", "Lock Frequency", "Fijar frecuencia");
    row("padscope_es", "qorvexgraph", " <i>Paused</i>", " <i>En pausa</i>");
    row("padscope_fr", "monitor", "Student", "Élève");
    row("padscope_fr", "qorvexgraph", " <i>Paused</i>", " <i>En pause</i>");
    row("padscope_ja", "monitor", "Teacher", "Teacher (先生)");
    row("padscope_ja", "qorvexgraph", " <i>Paused</i>", " <i>一時停止中</i>");
    row("padscope_zh_CN", "bargraph", "Lock Frequency", "锁定频率");
    row("padscope_zh_CN", "qorvexgraph", " <i>Paused</i>", " <i>已暂停</i>");
    row("tendro-host_es", "HostWindow", "&Quit", "&Salir");
    row("tendro-host_fr", "HostWindow", "&Quit", "&Quitter");
    row("tendro-host_ja", "HostWindow", "&Quit", "終了(&Q)");
    row("tendro-host_zh_CN", "ScenarioMenu", "&Open...", "打开(&O)...");
}

void TranslationsTest::speaks()
{
    QFETCH(QString, catalogue);
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(TRANSLATIONS "/%1.qm").arg(catalogue)));
    QTEST(translator.translate(context.constData(), source.constData()), "translation");
}

PADSCOPE_TESTS(TranslationsTest);
#include "tst_translations.moc"
