#include <QFontComboBox>
#include <QTest>
#include <QTreeView>

#include "monitor/monitorview.h"
#include "support/otherstore.h"
#include "support/tests.h"

namespace {

QFontComboBox *fontBox(const MonitorView &monitorView)
{
    return monitorView.view->findChild<QFontComboBox *>();
}

QComboBox *sizeBox(const MonitorView &monitorView)
{
    const auto boxes = monitorView.view->findChildren<QComboBox *>();
    for (QComboBox *box : boxes) {
        if (!qobject_cast<QFontComboBox *>(box))
            return box;
    }
    return nullptr;
}

} // namespace

/// The rows' font: stored, chosen and saved.
class MonitorFont : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void storedFamily();
    void unknownFamily_data();
    void unknownFamily();
    void storedSize_data();
    void storedSize();
    void styleSheetIsSetOnce();
    void familyKeepsTheSize();
    void sizeKeepsTheFamily();
    void sizeThatIsNoNumber_data();
    void sizeThatIsNoNumber();
    void fontIsWrittenOnClose();
};

void MonitorFont::init()
{
    QSettings store("Corvane", "qorvexgraph");
    store.clear();
    store.sync();
}

void MonitorFont::storedFamily()
{
    const QString family = [] {
        const MonitorView monitorView;
        return fontBox(monitorView)->itemText(fontBox(monitorView)->count() - 1);
    }();
    QVERIFY2(!family.isEmpty() && family != QFont().family(), "no monospaced font to choose");
    otherStore().setValue("Monitor Font", family);
    MonitorView monitorView;
    QCOMPARE(fontBox(monitorView)->currentText(), family);
    QCOMPARE(monitorView.view->monitorFont.family(), family);
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 10);
    QVERIFY(monitorView.view->styleSheet().endsWith("font-family: \"" + family + "\";}"));
}

void MonitorFont::unknownFamily_data()
{
    QTest::addColumn<QString>("family");
    addRow("no such family", "No Such Family");
    addRow("a family in capitals", "DEJAVU SANS MONO");
}

void MonitorFont::unknownFamily()
{
    QFETCH(QString, family);
    const QString shownByDefault = [] {
        QFontComboBox box;
        box.setFontFilters(QFontComboBox::MonospacedFonts);
        box.setEditable(false);
        return box.currentText();
    }();
    otherStore().setValue("Monitor Font", family);
    MonitorView monitorView;
    QCOMPARE(fontBox(monitorView)->currentText(), shownByDefault);
    QCOMPARE(monitorView.view->monitorFont.family(), QFont().family());
    QCOMPARE(monitorView.view->styleSheet(),
             "QTreeView {color: white; background-color: black; font-size: 10px; font-family: \"" + family +
                 "\";}");
}

void MonitorFont::storedSize_data()
{
    addColumns<QVariant, int, int, QString>("stored", "index", "pointSize", "pixels");
    const int unchanged = QFont().pointSize();
    addRow("12 as a number", QVariant(12), 3, 12, "12px");
    addRow("12 as text", QVariant("12"), 3, 12, "12px");
    addRow("6", QVariant(6), 0, 6, "6px");
    addRow("8", QVariant(8), 1, 8, "8px");
    addRow("11 is not offered", QVariant(11), 0, unchanged, "11px");
    addRow("not the exact text", QVariant("12 "), 0, unchanged, "12 px");
    addRow("no number", QVariant("big"), 0, unchanged, "bigpx");
}

void MonitorFont::storedSize()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, pixels);
    otherStore().setValue("Monitor Font Size", stored);
    MonitorView monitorView;
    QTEST(sizeBox(monitorView)->currentIndex(), "index");
    QTEST(monitorView.view->monitorFont.pointSize(), "pointSize");
    QCOMPARE(monitorView.view->styleSheet(), "QTreeView {color: white; background-color: black; font-size: " +
                                                 pixels + "; font-family: \"Courier\";}");
}

void MonitorFont::styleSheetIsSetOnce()
{
    MonitorView monitorView;
    const QString before = monitorView.view->styleSheet();
    sizeBox(monitorView)->setCurrentIndex(0);
    monitorView.view->OnChangedFont(QFont("Some Family", 33));
    QCOMPARE(monitorView.view->styleSheet(), before);
}

void MonitorFont::familyKeepsTheSize()
{
    MonitorView monitorView;
    sizeBox(monitorView)->setCurrentIndex(3);
    QFont other("Some Family", 33);
    other.setItalic(true);
    monitorView.view->OnChangedFont(other);
    QCOMPARE(monitorView.view->monitorFont.family(), QString("Some Family"));
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 12);
    QVERIFY(monitorView.view->monitorFont.italic());
    QVERIFY(monitorView.view->treeView->font().italic());

    // By the box.
    QFontComboBox *box = fontBox(monitorView);
    QVERIFY2(box->count() >= 2, "no second monospaced font to choose");
    box->setCurrentIndex(box->currentIndex() == 0 ? 1 : 0);
    QCOMPARE(monitorView.view->monitorFont.family(), box->currentText());
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 12);
}

void MonitorFont::sizeKeepsTheFamily()
{
    MonitorView monitorView;
    monitorView.view->OnChangedFont(QFont("Some Family"));
    sizeBox(monitorView)->setCurrentIndex(0);
    QCOMPARE(monitorView.view->monitorFont.family(), QString("Some Family"));
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 6);
    monitorView.view->OnChangedFontSize("72");
    QCOMPARE(monitorView.view->monitorFont.family(), QString("Some Family"));
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 72);
}

void MonitorFont::sizeThatIsNoNumber_data()
{
    QTest::addColumn<QString>("text");
    addRow("a word", "big");
    addRow("nothing", "");
    addRow("hexadecimal", "0x10");
    addRow("number and word", "12pt");
}

void MonitorFont::sizeThatIsNoNumber()
{
    QFETCH(QString, text);
    MonitorView monitorView;
    sizeBox(monitorView)->setCurrentIndex(3);
    QTest::ignoreMessage(QtWarningMsg, "QFont::setPointSize: Point size <= 0 (0), must be greater than 0");
    monitorView.view->OnChangedFontSize(text);
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 12);
}

void MonitorFont::fontIsWrittenOnClose()
{
    MonitorView monitorView;
    monitorView.view->OnChangedFont(QFont("Some Family"));
    sizeBox(monitorView)->setCurrentIndex(3);
    QVERIFY(!otherStore().contains("Monitor Font"));
    QVERIFY(!otherStore().contains("Monitor Font Size"));
    monitorView.window.close();
    QCOMPARE(otherStore().value("Monitor Font").toString(), QString("Some Family"));
    QCOMPARE(otherStore().value("Monitor Font Size").toString(), QString("12"));

    const MonitorView next;
    QCOMPARE(sizeBox(next)->currentText(), QString("12"));
}

PADSCOPE_TESTS(MonitorFont);
#include "tst_monitorfont.moc"
