#include <QCheckBox>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMetaMethod>
#include <QSlider>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>

#include "monitor/monitorview.h"
#include "support/tests.h"

/// How the tab is built when nothing was ever stored.
class MonitorTab : public QObject
{
    Q_OBJECT

private slots:
    void slotsInOrder();
    void layoutFromTopToBottom();
    void barFromLeftToRight();
    void logBox();
    void thresholdSlider();
    void fontControls();
    void rowView();
    void styleSheetIsTheTabs();
    void firstState();
    void slotsAreBoundOnce();
    void firstPacketAppliesTheFont();
    void buildingWritesNoSetting();

private:
    template <typename Widget>
    static Widget *inBar(const MonitorView &monitorView, int index)
    {
        return qobject_cast<Widget *>(bar(monitorView)->itemAt(index)->widget());
    }
    static QHBoxLayout *bar(const MonitorView &monitorView)
    {
        return qobject_cast<QHBoxLayout *>(monitorView.view->layout()->itemAt(0)->layout());
    }
};

void MonitorTab::slotsInOrder()
{
    const QMetaObject &meta = monitor::staticMetaObject;
    QList<QByteArray> signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        QCOMPARE(meta.method(index).methodType(), QMetaMethod::Slot);
        signatures.append(meta.method(index).methodSignature());
    }
    QCOMPARE(signatures, (QList<QByteArray>{"OnTimerAddRest()", "OnChangedFont(QFont)",
                                            "OnChangedFontSize(QString)", "LogToFile(int)", "LogToFile(bool)",
                                            "on_displayThresholdSlider_valueChanged(int)"}));
    QCOMPARE(meta.superClass()->className(), "qorvexwidget");
}

void MonitorTab::layoutFromTopToBottom()
{
    MonitorView monitorView;
    auto *layout = qobject_cast<QVBoxLayout *>(monitorView.view->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 3);
    QVERIFY(bar(monitorView));
    QCOMPARE(layout->itemAt(1)->widget(), monitorView.view->treeView);
    QCOMPARE(layout->itemAt(2)->widget(), monitorView.view->lastRowLabel);
    QCOMPARE(monitorView.label(), QString());
}

void MonitorTab::barFromLeftToRight()
{
    MonitorView monitorView;
    QCOMPARE(bar(monitorView)->count(), 8);
    QCOMPARE(inBar<QCheckBox>(monitorView, 0), monitorView.view->logCheckBox);
    QVERIFY(inBar<QLabel>(monitorView, 1));
    QCOMPARE(inBar<QLabel>(monitorView, 1)->text(), QString("Fast Computer"));
    QVERIFY(inBar<QSlider>(monitorView, 2));
    QVERIFY(inBar<QLabel>(monitorView, 3));
    QCOMPARE(inBar<QLabel>(monitorView, 3)->text(), QString("Slow Computer"));
    QVERIFY(bar(monitorView)->itemAt(4)->spacerItem());
    QVERIFY(inBar<QLabel>(monitorView, 5));
    QCOMPARE(inBar<QLabel>(monitorView, 5)->text(), QString("Font"));
    QVERIFY(inBar<QFontComboBox>(monitorView, 6));
    QVERIFY(inBar<QComboBox>(monitorView, 7));
}

void MonitorTab::logBox()
{
    MonitorView monitorView;
    QCOMPARE(monitorView.view->logCheckBox->text(), QString("Log to file"));
    QVERIFY(!monitorView.view->logCheckBox->isChecked());
    QVERIFY(!monitorView.view->logEnabled);
}

void MonitorTab::thresholdSlider()
{
    MonitorView monitorView;
    auto *slider = inBar<QSlider>(monitorView, 2);
    QCOMPARE(slider->objectName(), QString("displayThresholdSlider"));
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), 1000);
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->value(), 100);
    QCOMPARE(monitorView.view->displayThreshold, 100);
}

void MonitorTab::fontControls()
{
    MonitorView monitorView;
    const QSizePolicy fixed(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const auto *label = inBar<QLabel>(monitorView, 5);
    QCOMPARE(label->sizePolicy().horizontalPolicy(), fixed.horizontalPolicy());
    QCOMPARE(label->sizePolicy().verticalPolicy(), fixed.verticalPolicy());

    const auto *fontBox = inBar<QFontComboBox>(monitorView, 6);
    QCOMPARE(fontBox->fontFilters(), QFontComboBox::FontFilters(QFontComboBox::MonospacedFonts));
    QVERIFY(!fontBox->isEditable());

    const auto *sizeBox = inBar<QComboBox>(monitorView, 7);
    QVERIFY(!sizeBox->isEditable());
    QCOMPARE(sizeBox->sizePolicy().horizontalPolicy(), fixed.horizontalPolicy());
    QCOMPARE(sizeBox->sizePolicy().verticalPolicy(), fixed.verticalPolicy());
    QStringList sizes;
    for (int index = 0; index < sizeBox->count(); ++index) {
        sizes.append(sizeBox->itemText(index));
        QVERIFY(!sizeBox->itemData(index).isValid());
        QVERIFY(sizeBox->itemIcon(index).isNull());
    }
    QCOMPARE(sizes, (QStringList{"6", "8", "10", "12"}));
    QCOMPARE(sizeBox->currentIndex(), 2);
    QCOMPARE(sizeBox->currentText(), QString("10"));
    // "Courier" is selected where the system has it.
    if (fontBox->findText("Courier", Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0)
        QCOMPARE(fontBox->currentText(), QString("Courier"));
    else
        QCOMPARE(monitorView.view->monitorFont.family(), QFont().family());
    QCOMPARE(monitorView.view->monitorFont.pointSize(), 10);
}

void MonitorTab::rowView()
{
    MonitorView monitorView;
    const QTreeView *tree = monitorView.view->treeView;
    QVERIFY(!tree->rootIsDecorated());
    QVERIFY(tree->uniformRowHeights());
    QStandardItemModel *model = monitorView.view->model;
    QCOMPARE(tree->model(), model);
    QCOMPARE(model->parent(), monitorView.view);
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->columnCount(), 1);
    QCOMPARE(model->headerData(0, Qt::Horizontal, Qt::EditRole).toString(), QString("Data"));
    QCOMPARE(model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Data"));
}

void MonitorTab::styleSheetIsTheTabs()
{
    MonitorView monitorView;
    QCOMPARE(monitorView.view->styleSheet(), QString("QTreeView {color: white; background-color: black; "
                                                     "font-size: 10px; font-family: \"Courier\";}"));
    QCOMPARE(monitorView.view->treeView->styleSheet(), QString());
    QCOMPARE(monitorView.window.styleSheet(), QString());
}

void MonitorTab::firstState()
{
    MonitorView monitorView;
    QVERIFY(!monitorView.view->previousPacket);
    QVERIFY(monitorView.view->pendingText.isNull());
    QVERIFY(!monitorView.view->pendingTextTimer.isActive());
    QCOMPARE(monitorView.view->pendingTextTimer.interval(), 0);
    QVERIFY(!monitorView.view->pendingTextTimer.parent());
    QVERIFY(!monitorView.view->pendingTextTimer.isSingleShot());
    QCOMPARE(monitorView.view->graph, &monitorView.window);
    QCOMPARE(monitorView.view->settings, &monitorView.window.settings);
}

// Two connections of the timer would add the rest of a line, and then an empty row.
void MonitorTab::slotsAreBoundOnce()
{
    MonitorView monitorView;
    monitorView.view->pendingText = "rest";
    monitorView.view->pendingTextTimer.start(0);
    QTRY_COMPARE(monitorView.rows(), QStringList{"rest"});
    QCoreApplication::processEvents();
    QCOMPARE(monitorView.rows(), QStringList{"rest"});
}

void MonitorTab::firstPacketAppliesTheFont()
{
    MonitorView monitorView;
    QTreeView *tree = monitorView.view->treeView;
    tree->setAttribute(Qt::WA_SetFont, false);
    monitorView.send(QByteArray("\x02\x21", 2));
    QVERIFY(tree->testAttribute(Qt::WA_SetFont));
    tree->setAttribute(Qt::WA_SetFont, false);
    monitorView.send(QByteArray("\x02\x21", 2));
    QVERIFY(!tree->testAttribute(Qt::WA_SetFont));
}

void MonitorTab::buildingWritesNoSetting()
{
    MonitorView monitorView;
    QVERIFY(!monitorView.window.settings.contains("monitor.displayThreshold"));
    QVERIFY(!monitorView.window.settings.contains("Log To File"));
    QVERIFY(!monitorView.window.settings.contains("Monitor Font"));
    QVERIFY(!monitorView.window.settings.contains("Monitor Font Size"));
}

PADSCOPE_TESTS(MonitorTab);
#include "tst_monitortab.moc"
