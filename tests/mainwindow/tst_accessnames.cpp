#include <QFontComboBox>
#include <QSlider>

#include "mainwindow/testwindow.h"
#include "support/accesstree.h"
#include "support/otherstore.h"

/// The window as a screen reader reads it.
class AccessNames : public QObject
{
    Q_OBJECT

private slots:
    void init() { otherStore().clear(); }
    void everythingIsNamed();
    void readsControls_data();
    void readsControls();
    void readsTheStatus();
    void labelsTheFontBox();
    void readsRows();
    void valuesActAsTheUser();
};

void AccessNames::everythingIsNamed()
{
    TestWindow window;
    QCOMPARE(namelessIn(accessOf(&window)), QStringList());
}

void AccessNames::readsControls_data()
{
    addColumns<int, QStringList>("tab", "controls");
    addRow<int, QStringList>("bar graph", 0,
                             {"Client: Bar Graph", "CheckBox: Classic Mode", "StaticText: Fast Computer",
                              "Slider: Fast Computer - Slow Computer: 50: Milliseconds between two reports",
                              "StaticText: Slow Computer", "StaticText: Prox:", "CheckBox: Lock Frequency",
                              "StaticText: Freq:", "SpinBox: Frequency: 0", "Chart: Signals"});
    addRow<int, QStringList>("monitor", 1,
                             {"Client: Monitor", "CheckBox: Log to file", "StaticText: Fast Computer",
                              "Slider: Fast Computer - Slow Computer: 100: Milliseconds between two reports",
                              "StaticText: Slow Computer", "StaticText: Font", "ComboBox: FONT: FONT",
                              "ComboBox: 10: 10: Font size", "Tree: Rows: Rows",
                              "StaticText: Newest row: : Newest row"});
}

void AccessNames::readsControls()
{
    QFETCH(int, tab);
    TestWindow window;
    window.show(); // before that the box is empty
    QAccessibleInterface *view = accessOf(window.tabs->widget(tab));
    const QString font = window.monitorView->findChild<QFontComboBox *>()->currentText();
    QStringList controls{described(*view)};
    for (int i = 0; i < view->childCount(); ++i)
        controls += described(*view->child(i)).replace(font, "FONT");
    QTEST(controls, "controls");
}

void AccessNames::readsTheStatus()
{
    TestWindow window;
    QCOMPARE(described(*accessOf(&window)), QString("Client: Padscope"));
    QCOMPARE(described(*accessOf(window.tabs)), QString("Client: Views"));
    QCOMPARE(described(*accessOf(window.commandLine)), QString("EditableText: Command"));
    QCOMPARE(described(*accessOf(statusLabelOf(window))), QString("StaticText: Devices found"));
    window.AttachHardware();
    QCOMPARE(described(*accessOf(statusLabelOf(window))), QString("StaticText: 1 device found."));
    window.detach();
    QCOMPARE(described(*accessOf(statusLabelOf(window))), QString("StaticText: 1 device found. Paused"));
}

void AccessNames::labelsTheFontBox()
{
    TestWindow window;
    const auto relations = accessOf(window.monitorView->findChild<QFontComboBox *>())->relations();
    const bool isLabelled = std::any_of(relations.begin(), relations.end(), [](const auto &relation) {
        return relation.second == QAccessible::Label && relation.first->text(QAccessible::Name) == "Font";
    });
    QVERIFY(isLabelled);
}

void AccessNames::readsRows()
{
    TestWindow window;
    window.monitorView->AddData("<b>first</b>", "second");
    QAccessibleInterface *rows = accessOf(window.monitorView->findChild<QTreeView *>());
    QCOMPARE(rows->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), QString("<b>first</b>   second"));
}

/// What is set through the interfaces has the effect that it has by hand.
void AccessNames::valuesActAsTheUser()
{
    AttachedWindow window;
    QSettings &settings = *window.settingsStore();
    QWidget *bars = window.tabs->widget(0);
    accessOf(bars->findChild<QSlider *>())->valueInterface()->setCurrentValue(750);
    QCOMPARE(settings.value("bargraph.displayThreshold").toInt(), 750);
    accessOf(window.monitorView->findChild<QSlider *>())->valueInterface()->setCurrentValue(0);
    QCOMPARE(settings.value("monitor.displayThreshold").toInt(), 0);
    accessOf(bars->findChild<QSpinBox *>())->valueInterface()->setCurrentValue(900);
    QAccessibleInterface *lock = accessOf(bars->findChildren<QCheckBox *>().at(1));
    lock->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    const QStringList expected{"orvexSendCommand(1, \">\")", "orvexSendCommand(1, \".\\x0dU8\\x0d\")",
                               "orvexSendCommand(1, \"B\\x0d\")"};
    QCOMPARE(takeCommands(window.library), expected);
}

PADSCOPE_TESTS(AccessNames);
#include "tst_accessnames.moc"
