#include <QFontComboBox>

#include "monitor/monitortest.h"

/// The rows' font: stored, chosen and saved.
class MonitorFont : public MonitorTest
{
    Q_OBJECT

private slots:
    void storedFamily();
    void unknownFamily();
    void storedSize_data();
    void storedSize();
    void styleSheetIsSetOnce();
    void familyKeepsTheSize();
    void sizeKeepsTheFamily();
    void sizeThatIsNoNumber();
    void firstPacketAppliesTheFont();
    void fontIsSaved();

private:
    QFontComboBox *fontBox() const { return view->findChild<QFontComboBox *>(); }
    QComboBox *sizeBox() const;
    void verifyFont(const QString &family, int pointSize) const;
};

QComboBox *MonitorFont::sizeBox() const
{
    auto boxes = view->findChildren<QComboBox *>();
    boxes.removeOne(fontBox());
    return boxes.constFirst();
}

void MonitorFont::verifyFont(const QString &family, int pointSize) const
{
    QCOMPARE(Inspect::font(*view).family(), family);
    QCOMPARE(Inspect::font(*view).pointSize(), pointSize);
}

void MonitorFont::storedFamily()
{
    const int count = fontBox()->count();
    QVERIFY2(count >= 2, "no second monospaced font to choose");
    // One of them is what the box shows by itself.
    for (int i = 0; i < count; ++i) {
        const QString family = fontBox()->itemText(i);
        QVERIFY(family != QFont().family());
        otherStore().setValue("Monitor Font", family);
        build();
        QCOMPARE(fontBox()->currentText(), family);
        verifyFont(family, 10);
        QVERIFY(view->styleSheet().endsWith("font-family: \"" + family + "\";}"));
    }
}

void MonitorFont::unknownFamily()
{
    QFontComboBox untouched;
    untouched.setFontFilters(QFontComboBox::MonospacedFonts);
    untouched.setEditable(false);
    // The second is known, but not in capitals.
    for (const char *family : {"No Such Family", "DEJAVU SANS MONO"}) {
        otherStore().setValue("Monitor Font", family);
        build();
        QCOMPARE(fontBox()->currentText(), untouched.currentText());
        QCOMPARE(Inspect::font(*view).family(), QFont().family());
        QCOMPARE(
            view->styleSheet(),
            QString(
                "QTreeView {color: white; background-color: black; font-size: 10px; font-family: \"%1\";}")
                .arg(family));
    }
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
    build();
    QTEST(sizeBox()->currentIndex(), "index");
    QTEST(Inspect::font(*view).pointSize(), "pointSize");
    QCOMPARE(view->styleSheet(), "QTreeView {color: white; background-color: black; font-size: " + pixels +
                                     "; font-family: \"Courier\";}");
}

void MonitorFont::styleSheetIsSetOnce()
{
    const QString before = view->styleSheet();
    sizeBox()->setCurrentIndex(0);
    view->OnChangedFont(QFont("Some Family", 33));
    QCOMPARE(view->styleSheet(), before);
}

void MonitorFont::familyKeepsTheSize()
{
    sizeBox()->setCurrentIndex(3);
    QFont other("Some Family", 33);
    other.setItalic(true);
    view->OnChangedFont(other);
    verifyFont("Some Family", 12);
    QVERIFY(Inspect::font(*view).italic());
    QVERIFY(tree->font().italic());

    // By the box.
    QVERIFY2(fontBox()->count() >= 2, "no second monospaced font to choose");
    fontBox()->setCurrentIndex(fontBox()->currentIndex() == 0 ? 1 : 0);
    verifyFont(fontBox()->currentText(), 12);
}

void MonitorFont::sizeKeepsTheFamily()
{
    view->OnChangedFont(QFont("Some Family"));
    sizeBox()->setCurrentIndex(0);
    verifyFont("Some Family", 6);
    view->OnChangedFontSize("72");
    verifyFont("Some Family", 72);
}

void MonitorFont::sizeThatIsNoNumber()
{
    sizeBox()->setCurrentIndex(3);
    for (const char *text : {"big", "", "0x10", "12pt"}) {
        QTest::ignoreMessage(QtWarningMsg,
                             "QFont::setPointSize: Point size <= 0 (0), must be greater than 0");
        view->OnChangedFontSize(text);
        QCOMPARE(Inspect::font(*view).pointSize(), 12);
    }
}

void MonitorFont::firstPacketAppliesTheFont()
{
    QFont other = tree->font();
    other.setItalic(true);
    tree->setFont(other);
    send(hex("02 21"));
    QVERIFY(!tree->font().italic());
    tree->setFont(other);
    send(hex("02 21"));
    QVERIFY(tree->font().italic());
}

void MonitorFont::fontIsSaved()
{
    view->OnChangedFont(QFont("Some Family"));
    sizeBox()->setCurrentIndex(3);
    QCOMPARE(otherStore().allKeys(), QStringList());
    view->saveSettings();
    QCOMPARE(otherStore().value("Monitor Font").toString(), QString("Some Family"));
    QCOMPARE(otherStore().value("Monitor Font Size").toString(), QString("12"));
    build();
    QCOMPARE(sizeBox()->currentText(), QString("12"));
}

PADSCOPE_TESTS(MonitorFont);
#include "tst_monitorfont.moc"
