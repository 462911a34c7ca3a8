#include <QCheckBox>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QMetaMethod>
#include <QSlider>

#include "monitor/monitortest.h"
#include "support/markingtranslator.h"

/// How the tab is built when nothing was ever stored.
class MonitorTab : public MonitorTest
{
    Q_OBJECT

private slots:
    void slotsInOrder();
    void layoutFromTopToBottom();
    void barFromLeftToRight();
    void fontControls();
    void rowView();
    void firstState();
    void slotsAreBoundOnce();
    void translatedTexts();

private:
    QHBoxLayout *bar() const { return qobject_cast<QHBoxLayout *>(view->layout()->itemAt(0)->layout()); }
    template <typename Widget>
    Widget *inBar(int index) const
    {
        return qobject_cast<Widget *>(bar()->itemAt(index)->widget());
    }
    QStringList labels() const;
};

/// The texts of the bar's labels.
QStringList MonitorTab::labels() const
{
    QStringList texts;
    for (const int index : {1, 3, 5})
        texts.append(inBar<QLabel>(index) ? inBar<QLabel>(index)->text() : "no label");
    return texts;
}

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
    auto *layout = qobject_cast<QVBoxLayout *>(view->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 3);
    QVERIFY(bar());
    QCOMPARE(layout->itemAt(1)->widget(), tree);
    QVERIFY(qobject_cast<QLabel *>(layout->itemAt(2)->widget()));
    QCOMPARE(lastRow->text(), QString());
}

void MonitorTab::barFromLeftToRight()
{
    QCOMPARE(bar()->count(), 8);
    const auto *box = inBar<QCheckBox>(0);
    QCOMPARE(box->text(), QString("Log to file"));
    QVERIFY(!box->isChecked());
    QVERIFY(!Inspect::isLogging(*view));

    const auto *slider = inBar<QSlider>(2);
    QCOMPARE(slider->objectName(), QString("displayThresholdSlider"));
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), 1000);
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->value(), 100);
    QCOMPARE(view->displayThresholdMs(), 100);

    QVERIFY(bar()->itemAt(4)->spacerItem());
    QVERIFY(inBar<QFontComboBox>(6));
    QVERIFY(inBar<QComboBox>(7));
    QCOMPARE(labels(), (QStringList{"Fast Computer", "Slow Computer", "Font"}));
}

void MonitorTab::fontControls()
{
    const QSizePolicy fixed(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const auto *label = inBar<QLabel>(5);
    QCOMPARE(label->sizePolicy().horizontalPolicy(), fixed.horizontalPolicy());
    QCOMPARE(label->sizePolicy().verticalPolicy(), fixed.verticalPolicy());

    const auto *fontBox = inBar<QFontComboBox>(6);
    QCOMPARE(fontBox->fontFilters(), QFontComboBox::FontFilters(QFontComboBox::MonospacedFonts));
    QVERIFY(!fontBox->isEditable());

    const auto *sizeBox = inBar<QComboBox>(7);
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
    QCOMPARE(sizeBox->currentText(), QString("10"));
    // "Courier" is selected where the system has it.
    if (fontBox->findText("Courier", Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0)
        QCOMPARE(fontBox->currentText(), QString("Courier"));
    else
        QCOMPARE(Inspect::font(*view).family(), QFont().family());
    QCOMPARE(Inspect::font(*view).pointSize(), 10);
}

void MonitorTab::rowView()
{
    QVERIFY(!tree->rootIsDecorated());
    QVERIFY(tree->uniformRowHeights());
    QCOMPARE(view->styleSheet(), QString("QTreeView {color: white; background-color: black; "
                                         "font-size: 10px; font-family: \"Courier\";}"));
    QCOMPARE(tree->styleSheet(), QString());
    QVERIFY(model);
    QCOMPARE(model->parent(), view);
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->columnCount(), 1);
    QCOMPARE(model->headerData(0, Qt::Horizontal, Qt::EditRole).toString(), QString("Data"));
}

void MonitorTab::firstState()
{
    QVERIFY(!previousPacket());
    QVERIFY(pendingText().isNull());
    const QTimer &timer = Inspect::pendingTextTimer(*view);
    QVERIFY(!timer.isActive());
    QCOMPARE(timer.interval(), 0);
    QVERIFY(!timer.parent());
    QVERIFY(!timer.isSingleShot());
    QCOMPARE(otherStore().allKeys(), QStringList());
}

// Two connections of the timer would add the rest of a line, and then an empty row.
void MonitorTab::slotsAreBoundOnce()
{
    send(hex("06 32 72 65 73 74"));
    Inspect::pendingTextTimer(*view).start(0);
    QTRY_COMPARE(rows(), QStringList{"rest"});
    QCoreApplication::processEvents();
    QCOMPARE(rows(), QStringList{"rest"});
}

// Names of values in reports too, but not the texts of the rows.
void MonitorTab::translatedTexts()
{
    const MarkingTranslator translator;
    build();
    QCOMPARE(labels(), (QStringList{"{monitor: Fast Computer}", "{monitor: Slow Computer}", "Font"}));
    QCOMPARE(inBar<QCheckBox>(0)->text(), QString("{monitor: Log to file}"));
    QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), QString("{monitor: Data}"));
    const QString pen = "Q:              0     Button:            0 Pen:        {monitor: %1}";
    for (const char *report : {"09 a2 00 0000", "09 a2 00 0100", "09 a2 00 0200"})
        send(hex(report));
    QCOMPARE(rows(), (QStringList{pen.arg("Teacher"), pen.arg("Student"), pen.arg("Unknown: 2")}));
    for (const char *report : {"28 2f 01", "28 2f 02", "0e 2f 03", "0a 2f 04", "10 2f 05", "19 2f 06",
                               "28 68", "34 77 0c", "1a a3", "1f a4", "00 21"})
        send(hex(report));
    QCOMPARE(rows().size(), 14);
    QCOMPARE(rows().filter("{").size(), 3);
}

PADSCOPE_TESTS(MonitorTab);
#include "tst_monitortab.moc"
