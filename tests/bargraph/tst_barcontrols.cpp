#include <QBoxLayout>
#include <QCheckBox>
#include <QMetaMethod>
#include <QSlider>

#include "bargraph/barview.h"
#include "support/capturedoutput.h"
#include "support/markingtranslator.h"
#include "support/tests.h"

namespace {

const QString thresholdKey = "bargraph.displayThreshold";
const QString modeKey = "Classic Mode";

QString describe(QLayoutItem *item)
{
    const QWidget *control = item->widget();
    if (!control)
        return item->spacerItem()->expandingDirections() & Qt::Horizontal ? "stretch" : "space";
    const bool isFixed = control->sizePolicy() == QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return control->metaObject()->className() + QString(isFixed ? " fixed " : " ") +
           control->property("text").toString();
}

QStringList rowOf(const bargraph &view)
{
    const QLayout *row = view.layout()->itemAt(0)->layout();
    QStringList controls;
    for (int i = 0; i < row->count(); ++i)
        controls += describe(row->itemAt(i));
    return controls;
}

} // namespace

/// The row of controls, the frame, the settings, and the commands that they send.
class TestBarControls : public QObject
{
    Q_OBJECT

private slots:
    void init() { FakeWindow().settings.clear(); }
    void row();
    void ranges();
    void frame();
    void translations();
    void newView();
    void slotOrder();
    void storedThreshold_data();
    void storedThreshold();
    void storedMode_data();
    void storedMode();
    void threshold();
    void classicMode();
    void noRepaintOfTheirOwn();
    void lock();
    void steps();
    void typedReset_data();
    void typedReset();
};

void TestBarControls::row()
{
    const BarView bars;
    QCOMPARE(rowOf(bars.view),
             (QStringList{"QCheckBox Classic Mode", "QLabel Fast Computer", "QSlider ",
                          "QLabel Slow Computer", "stretch", "QLabel Prox:", "QCheckBox fixed Lock Frequency",
                          "QLabel fixed Freq:", "QSpinBox fixed "}));
    QVERIFY(qobject_cast<QHBoxLayout *>(bars.view.layout()->itemAt(0)->layout()));
}

void TestBarControls::ranges()
{
    const BarView bars;
    QCOMPARE(bars.slider()->objectName(), QStringLiteral("displayThresholdSlider"));
    QCOMPARE(bars.slider()->orientation(), Qt::Horizontal);
    QCOMPARE(bars.slider()->minimum(), 5);
    QCOMPARE(bars.slider()->maximum(), 1000);
    QCOMPARE(bars.box()->minimum(), 0);
    QCOMPARE(bars.box()->maximum(), 500000);
    QCOMPARE(bars.box()->singleStep(), 1);
}

void TestBarControls::frame()
{
    const BarView bars;
    const auto *column = qobject_cast<QVBoxLayout *>(bars.view.layout());
    QVERIFY(column);
    QCOMPARE(column->count(), 2);
    QCOMPARE(column->stretch(0), 0);
    QCOMPARE(column->stretch(1), 1);
    QCOMPARE(QByteArray(bars.frame()->metaObject()->className()), QByteArray("QFrame"));
    QCOMPARE(bars.frame()->frameStyle(), 17);
    QCOMPARE(bars.frame()->lineWidth(), 1);
}

void TestBarControls::translations()
{
    const MarkingTranslator translator;
    BarView bars;
    bars.display(hex(fullReport));
    QCOMPARE(rowOf(bars.view),
             (QStringList{"QCheckBox {bargraph: Classic Mode}", "QLabel {bargraph: Fast Computer}",
                          "QSlider ", "QLabel {bargraph: Slow Computer}", "stretch", "QLabel Prox: O",
                          "QCheckBox fixed {bargraph: Lock Frequency}",
                          "QLabel fixed Freq:", "QSpinBox fixed 900"}));
}

void TestBarControls::newView()
{
    const BarView bars;
    QCOMPARE(bars.state(), QString());
    QCOMPARE(bars.slider()->value(), 50);
    QCOMPARE(bars.view.displayThresholdMs(), 50);
    QVERIFY(bars.classicBox()->isChecked());
    QVERIFY(Inspect::isClassic(bars.view));
    QVERIFY(!bars.lockBox()->isChecked());
    QCOMPARE(bars.window.settings.allKeys(), QStringList());
}

void TestBarControls::slotOrder()
{
    const QMetaObject &meta = bargraph::staticMetaObject;
    QByteArrayList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        names += meta.method(i).methodSignature();
    }
    QCOMPARE(names,
             (QByteArrayList{"OnClickedClassicMode(int)", "OnLockFrequency(int)", "OnSpinFrequency(int)",
                             "volts()", "on_displayThresholdSlider_valueChanged(int)"}));
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("qorvexwidget"));
}

void TestBarControls::storedThreshold_data()
{
    addColumns<QVariant, int, int>("stored", "threshold", "slider");
    addRow("number", QVariant(200), 200, 200);
    addRow("text", QVariant("321"), 321, 321);
    addRow("below the slider", QVariant(1), 1, 5);
    addRow("above the slider", QVariant(2000), 2000, 1000);
    addRow("negative", QVariant(-7), -7, 5);
    addRow("no number", QVariant("fast"), 0, 5);
}

void TestBarControls::storedThreshold()
{
    QFETCH(QVariant, stored);
    FakeWindow().settings.setValue(thresholdKey, stored);
    FakeWindow().settings.setValue("monitor.displayThreshold", 777);
    BarView bars;
    QTEST(bars.view.displayThresholdMs(), "threshold");
    QTEST(bars.slider()->value(), "slider");
    // Reading alone writes nothing back.
    QCOMPARE(bars.window.settings.value(thresholdKey).toString(), stored.toString());
}

void TestBarControls::storedMode_data()
{
    addColumns<QVariant, bool>("stored", "classic");
    addRow("true", QVariant(true), true);
    addRow("false", QVariant(false), false);
    addRow("one", QVariant(1), true);
    addRow("zero", QVariant(0), false);
    addRow("a word", QVariant("maybe"), true);
    addRow("no text", QVariant(""), false);
}

void TestBarControls::storedMode()
{
    QFETCH(QVariant, stored);
    FakeWindow().settings.setValue(modeKey, stored);
    const BarView bars;
    QTEST(Inspect::isClassic(bars.view), "classic");
    QTEST(bars.classicBox()->isChecked(), "classic");
    // The setting is only ever read.
    bars.classicBox()->click();
    QCOMPARE(Inspect::isClassic(bars.view), bars.classicBox()->isChecked());
    QCOMPARE(bars.window.settings.value(modeKey).toString(), stored.toString());
}

void TestBarControls::threshold()
{
    BarView bars;
    bars.slider()->setValue(321);
    QCOMPARE(bars.view.displayThresholdMs(), 321);
    QCOMPARE(bars.window.settings.value(thresholdKey), QVariant(321));
    QCOMPARE(bars.window.settings.allKeys(), QStringList{thresholdKey});
    bars.display(hex("34 77 0c 00 01"));
    QCOMPARE(bars.view.displayThresholdMs(), 321);
}

void TestBarControls::classicMode()
{
    BarView bars;
    for (int state : {Qt::Unchecked, Qt::Checked}) {
        bars.view.OnClickedClassicMode(state);
        for (int ignored : {1, 3, -1}) {
            bars.view.OnClickedClassicMode(ignored);
            QCOMPARE(Inspect::isClassic(bars.view), state == Qt::Checked);
        }
    }
}

void TestBarControls::noRepaintOfTheirOwn()
{
    BarView bars;
    PaintCounter paints(bars.view);
    bars.view.OnClickedClassicMode(Qt::Unchecked);
    bars.view.resetMinMaxVoltage();
    bars.view.OnLockFrequency(Qt::Checked);
    bars.view.OnSpinFrequency(3);
    bars.slider()->setValue(500);
    QCOMPARE(paints.take(), 0);
}

void TestBarControls::lock()
{
    BarView bars;
    bars.lockBox()->click();
    QCOMPARE(bars.window.takeCommands(), (QByteArrayList{".\rU8\r", "B\r"}));
    bars.lockBox()->click();
    QCOMPARE(bars.window.takeCommands(), (QByteArrayList{".\rU0\r", "B\r"}));
    for (int other : {1, 3}) {
        bars.view.OnLockFrequency(other);
        QCOMPARE(bars.window.takeCommands(), QByteArrayList{"B\r"});
    }
}

/// A step of any size sends one command.
void TestBarControls::steps()
{
    BarView bars;
    const auto stepTo = [&bars](int value) {
        CapturedOutput output(stdout);
        bars.box()->setValue(value);
        return output.text() + bars.window.takeCommands().join(',');
    };
    QCOMPARE(stepTo(10), QByteArray("0 -> 10\n>"));
    QCOMPARE(stepTo(500), QByteArray("10 -> 500\n>"));
    QCOMPARE(stepTo(499), QByteArray("500 -> 499\n<"));
    QCOMPARE(stepTo(500), QByteArray("499 -> 500\n>"));
    QCOMPARE(stepTo(0), QByteArray("500 -> 0\n<"));
    bars.view.OnSpinFrequency(0); // known already
    QCOMPARE(bars.state(), QString());
}

void TestBarControls::typedReset_data()
{
    addColumns<QString, QString, QString>("command", "state", "next");
    addRow("the reset", ":RMM\r", "volts 500 -1 -1", "volts 300 300 300");
    addRow("lower case", ":rmm\r", "volts 500 500 500", "volts 300 300 500");
    addRow("with a blank", ":RMM \r", "volts 500 500 500", "volts 300 300 500");
    addRow("without the colon", "RMM\r", "volts 500 500 500", "volts 300 300 500");
    addRow("without its end", ":RMM", "volts 500 500 500", "volts 300 300 500");
}

void TestBarControls::typedReset()
{
    QFETCH(QString, command);
    BarView bars;
    bars.display(hex("34 77 0c f4 01"));
    bars.view.CommandTyped(command);
    QTEST(bars.state(), "state");
    bars.display(hex("34 77 0c 2c 01"));
    QTEST(bars.state(), "next");
}

PADSCOPE_TESTS(TestBarControls);
#include "tst_barcontrols.moc"
