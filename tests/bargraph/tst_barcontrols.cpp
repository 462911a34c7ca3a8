#include <memory>

#include <QBoxLayout>
#include <QCheckBox>
#include <QMetaMethod>
#include <QSettings>
#include <QSlider>
#include <QTabWidget>

#include "bargraph/display.h"
#include "bargraph/paintcounter.h"
#include "support/tests.h"

class TestBarControls : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstTab();
    void row();
    void fixedSizes();
    void frame();
    void stateAtStart();
    void slotOrder();
    void firstStart();
    void storedThreshold_data();
    void storedThreshold();
    void storedMode_data();
    void storedMode();
    void threshold();
    void classicMode();
    void noRepaintOfTheirOwn();

private:
    /// A new window that reads the settings as they are now.
    void rebuild();

    std::unique_ptr<QSettings> settings;
    std::unique_ptr<qorvexgraph> window;
    bargraph *view = nullptr;
    QSlider *slider = nullptr;
    QCheckBox *classicBox = nullptr;
};

void TestBarControls::init()
{
    settings = std::make_unique<QSettings>(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"));
    settings->clear();
    rebuild();
}

void TestBarControls::cleanup()
{
    window.reset();
    settings.reset();
}

void TestBarControls::rebuild()
{
    settings->sync();
    window = std::make_unique<qorvexgraph>();
    view = window->barGraphView;
    slider = view->findChild<QSlider *>(QStringLiteral("displayThresholdSlider"));
    QVERIFY(slider);
    classicBox = view->findChild<QCheckBox *>();
    QVERIFY(classicBox);
}

void TestBarControls::firstTab()
{
    QCOMPARE(window->tabs->widget(0), view);
    QCOMPARE(window->tabs->tabText(0), QStringLiteral("Bar Graph"));
    QCOMPARE(window->tabs->currentIndex(), 0);
}

void TestBarControls::row()
{
    const auto *column = qobject_cast<QVBoxLayout *>(view->layout());
    QVERIFY(column);
    QCOMPARE(column->count(), 2);
    QCOMPARE(column->itemAt(1)->widget(), view->drawFrame);
    QCOMPARE(column->stretch(0), 0);
    QCOMPARE(column->stretch(1), 1);

    auto *layout = qobject_cast<QHBoxLayout *>(column->itemAt(0)->layout());
    QVERIFY(layout);
    QStringList controls;
    for (int i = 0; i < layout->count(); ++i) {
        const QWidget *control = layout->itemAt(i)->widget();
        if (!control)
            controls += QStringLiteral("stretch");
        else
            controls += QLatin1String(control->metaObject()->className()) + QLatin1Char(' ') +
                        control->property("text").toString();
    }
    QCOMPARE(controls, (QStringList{"QCheckBox Classic Mode", "QLabel Fast Computer", "QSlider ",
                                    "QLabel Slow Computer", "stretch", "QLabel Prox:",
                                    "QCheckBox Lock Frequency", "QLabel Freq:", "QSpinBox "}));
    QVERIFY(layout->itemAt(4)->spacerItem()->expandingDirections() & Qt::Horizontal);
    QCOMPARE(layout->itemAt(2)->widget(), slider);
    QCOMPARE(layout->itemAt(5)->widget(), view->proxLabel);
    QCOMPARE(layout->itemAt(7)->widget(), view->freqLabel);
    QCOMPARE(layout->itemAt(8)->widget(), view->freqSpin);
    QVERIFY(!qobject_cast<QCheckBox *>(layout->itemAt(6)->widget())->isChecked());

    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->minimum(), 5);
    QCOMPARE(slider->maximum(), 1000);
    QCOMPARE(view->freqSpin->minimum(), 0);
    QCOMPARE(view->freqSpin->maximum(), 500000);
    QCOMPARE(view->freqSpin->singleStep(), 1);
}

void TestBarControls::fixedSizes()
{
    QStringList fixed;
    for (const QWidget *control : view->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (control->sizePolicy() == QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed))
            fixed += control->metaObject()->className() + control->property("text").toString();
    }
    fixed.sort();
    QCOMPARE(fixed, (QStringList{"QCheckBoxLock Frequency", "QLabelFreq:", "QSpinBox"}));
}

void TestBarControls::frame()
{
    QCOMPARE(view->drawFrame->frameStyle(), 17);
    QCOMPARE(view->drawFrame->lineWidth(), 1);
    QCOMPARE(QByteArray(view->drawFrame->metaObject()->className()), QByteArray("QFrame"));
}

void TestBarControls::stateAtStart()
{
    QCOMPARE(signalsOf(view), QVector<int>(12, 0));
    QCOMPARE(view->textLine, QString());
    QCOMPARE(view->spinFrequency, 0);
    QCOMPARE(view->proxChar, '\0');
    QCOMPARE(view->frequency, qint64{0});
    QCOMPARE(view->frequencyRaw, qint16{0});
    QCOMPARE(view->reportWord8, -1);
    QCOMPARE(view->reportWord10, -1);
    QCOMPARE(view->voltageRaw, -1);
    QCOMPARE(view->voltageMin, -1);
    QCOMPARE(view->voltageMax, -1);
    QCOMPARE(view->viewFont.family(), QStringLiteral("Sans Serif"));
    QCOMPARE(view->viewFont.pointSize(), 10);
    QCOMPARE(view->viewFont.weight(), 50);
    QVERIFY(!view->viewFont.italic());
}

void TestBarControls::slotOrder()
{
    const QMetaObject *meta = view->metaObject();
    QByteArrayList names;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        QCOMPARE(meta->method(i).methodType(), QMetaMethod::Slot);
        names += meta->method(i).methodSignature();
    }
    QCOMPARE(names,
             (QByteArrayList{"OnClickedClassicMode(int)", "OnLockFrequency(int)", "OnSpinFrequency(int)",
                             "volts()", "on_displayThresholdSlider_valueChanged(int)"}));
    QCOMPARE(QByteArray(meta->superClass()->className()), QByteArray("qorvexwidget"));
}

void TestBarControls::firstStart()
{
    QCOMPARE(slider->value(), 50);
    QCOMPARE(view->displayThreshold, 50);
    QVERIFY(classicBox->isChecked());
    QVERIFY(view->classicMode);
    QVERIFY(!settings->contains(QStringLiteral("bargraph.displayThreshold")));
    QVERIFY(!settings->contains(QStringLiteral("Classic Mode")));
}

void TestBarControls::storedThreshold_data()
{
    addColumns<QVariant, int, int>("stored", "threshold", "slider");

    addRow("number", QVariant(200), 200, 200);
    addRow("text", QVariant(QStringLiteral("321")), 321, 321);
    addRow("below the slider", QVariant(1), 1, 5);
    addRow("above the slider", QVariant(2000), 2000, 1000);
    addRow("negative", QVariant(-7), -7, 5);
    addRow("no number", QVariant(QStringLiteral("fast")), 0, 5);
}

void TestBarControls::storedThreshold()
{
    QFETCH(QVariant, stored);
    settings->setValue(QStringLiteral("bargraph.displayThreshold"), stored);
    settings->setValue(QStringLiteral("monitor.displayThreshold"), 777);
    rebuild();
    QTEST(view->displayThreshold, "threshold");
    QTEST(slider->value(), "slider");
    // Reading alone writes nothing back.
    QCOMPARE(settings->value(QStringLiteral("bargraph.displayThreshold")).toString(), stored.toString());
}

void TestBarControls::storedMode_data()
{
    addColumns<QVariant, bool>("stored", "classic");

    addRow("true", QVariant(true), true);
    addRow("false", QVariant(false), false);
    addRow("one", QVariant(1), true);
    addRow("zero", QVariant(0), false);
    addRow("a word", QVariant(QStringLiteral("maybe")), true);
    addRow("no text", QVariant(QString(QLatin1String(""))), false);
}

void TestBarControls::storedMode()
{
    QFETCH(QVariant, stored);
    settings->setValue(QStringLiteral("Classic Mode"), stored);
    rebuild();
    QTEST(view->classicMode, "classic");
    QTEST(classicBox->isChecked(), "classic");
}

void TestBarControls::threshold()
{
    slider->setValue(321);
    QCOMPARE(view->displayThreshold, 321);
    QCOMPARE(window->settings.value(QStringLiteral("bargraph.displayThreshold")), QVariant(321));
    QVERIFY(!window->settings.contains(QStringLiteral("monitor.displayThreshold")));
    // The window learns of it with the next packet.
    QCOMPARE(window->displayThreshold, 50);
    display(view, hex("34 77 0c 00 01"));
    QCOMPARE(view->displayThresholdMs(), 321);
}

void TestBarControls::classicMode()
{
    settings->setValue(QStringLiteral("Classic Mode"), true);
    rebuild();
    classicBox->click();
    QVERIFY(!view->classicMode);
    QCOMPARE(window->settings.value(QStringLiteral("Classic Mode")).toBool(), true);
    view->OnClickedClassicMode(Qt::PartiallyChecked);
    QVERIFY(!view->classicMode);
    view->OnClickedClassicMode(3);
    QVERIFY(!view->classicMode);
    classicBox->click();
    QVERIFY(view->classicMode);
    view->OnClickedClassicMode(Qt::PartiallyChecked);
    QVERIFY(view->classicMode);

    classicBox->click();
    window->close();
    rebuild();
    QVERIFY(view->classicMode);

    settings->setValue(QStringLiteral("Classic Mode"), false);
    rebuild();
    classicBox->click();
    QVERIFY(view->classicMode);
    QCOMPARE(window->settings.value(QStringLiteral("Classic Mode")).toBool(), false);
}

void TestBarControls::noRepaintOfTheirOwn()
{
    PaintCounter paints(window.get());
    display(view, hex("34 77 0c 00 01"));
    QCOMPARE(paints.take(), 1);
    view->OnClickedClassicMode(Qt::Unchecked);
    view->resetMinMaxVoltage();
    view->OnLockFrequency(Qt::Checked);
    view->OnSpinFrequency(3);
    slider->setValue(500);
    QCOMPARE(paints.take(), 0);
    QCOMPARE(view->voltageMin, -1);
    QVERIFY(!view->classicMode);
}

PADSCOPE_TESTS(TestBarControls);
#include "tst_barcontrols.moc"
