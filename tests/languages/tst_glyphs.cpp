#include <QTextLayout>

#include "support/tests.h"
#include "translations/messages.h"

namespace {

/// The characters of a text that no font has, and that are shown as boxes.
QString missingGlyphs(const QString &text)
{
    QString missing;
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        const QString alone = QString::fromUcs4(&character, 1);
        QTextLayout layout(alone, QFont("Sans Serif", 10));
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const QList<QGlyphRun> runs = layout.glyphRuns();
        for (const QGlyphRun &run : runs) {
            if (run.glyphIndexes().contains(0))
                missing += alone;
        }
    }
    return missing;
}

} // namespace

/// The fonts that the tests run with have what each language needs.
class GlyphsTest : public QObject
{
    Q_OBJECT

private slots:
    void areThere_data();
    void areThere();
    void areMissed();
};

void GlyphsTest::areThere_data()
{
    addColumns<QString>("name");
    const QStringList names = catalogues();
    QCOMPARE(names.size(), 10);
    for (const QString &name : names)
        addRow(qPrintable(name), name);
}

void GlyphsTest::areThere()
{
    QFETCH(QString, name);
    for (const Message &message : messagesOf(name))
        QCOMPARE(missingGlyphs(message.translation), QString());
}

void GlyphsTest::areMissed()
{
    const QString unassigned(QChar(0x0378));
    QCOMPARE(missingGlyphs("a" + unassigned + "b"), unassigned);
}

PADSCOPE_TESTS(GlyphsTest);
#include "tst_glyphs.moc"
