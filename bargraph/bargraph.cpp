#include "bargraph.h"

#include <cstdio>
#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

#include "tabwindow.h"

namespace {

constexpr char thresholdKey[] = "bargraph.displayThreshold";

/// Fixes a control at its size hint.
template <typename Control>
Control *fixedSize(Control *control)
{
    control->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return control;
}

} // namespace

bargraph::bargraph(TabWindow *window)
    : qorvexwidget(window)
{
    auto *layout = new QVBoxLayout;
    auto *row = new QHBoxLayout;
    displayThreshold = settings->value(QLatin1String(thresholdKey), 50).toInt();
    addModeControls(row);
    row->addStretch();
    addFrequencyControls(row);
    layout->addLayout(row);
    drawFrame = new QFrame;
    drawFrame->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    drawFrame->setLineWidth(1);
    layout->addWidget(drawFrame, 1);
    setLayout(layout);
    // Only now is it known as the picture's: a name makes the accessible object.
    drawFrame->setAccessibleName(tr("Signals"));
    viewFont = QFont(QLatin1String("Sans Serif"), 10);
    QMetaObject::connectSlotsByName(this);
}

void bargraph::addModeControls(QHBoxLayout *row)
{
    auto *classicBox = new QCheckBox(tr("Classic Mode"));
    classicMode = settings->value(QLatin1String("Classic Mode"), true).toBool();
    classicBox->setChecked(classicMode);
    connect(classicBox, SIGNAL(stateChanged(int)), this, SLOT(OnClickedClassicMode(int)));
    row->addWidget(classicBox);
    row->addWidget(new QLabel(tr("Fast Computer")));
    auto *slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(QLatin1String("displayThresholdSlider"));
    slider->setRange(5, 1000);
    slider->setValue(displayThreshold);
    slider->setAccessibleName(tr("Fast Computer") + QLatin1String(" - ") + tr("Slow Computer"));
    slider->setAccessibleDescription(tr("Milliseconds between two reports"));
    row->addWidget(slider);
    row->addWidget(new QLabel(tr("Slow Computer")));
}

void bargraph::addFrequencyControls(QHBoxLayout *row)
{
    proxLabel = new QLabel(QLatin1String("Prox:"));
    row->addWidget(proxLabel);
    auto *lockBox = fixedSize(new QCheckBox(tr("Lock Frequency")));
    connect(lockBox, SIGNAL(stateChanged(int)), this, SLOT(OnLockFrequency(int)));
    row->addWidget(lockBox);
    freqLabel = fixedSize(new QLabel(QLatin1String("Freq:")));
    row->addWidget(freqLabel);
    freqSpin = fixedSize(new QSpinBox);
    freqSpin->setRange(0, 500000);
    freqSpin->setAccessibleName(tr("Frequency"));
    connect(freqSpin, SIGNAL(valueChanged(int)), this, SLOT(OnSpinFrequency(int)));
    row->addWidget(freqSpin);
}

bool bargraph::event(QEvent *event)
{
    const bool known = qorvexwidget::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange)
        keepFrameTransparent();
    return known;
}

/// A host's style sheet may give every widget a background, and the frame's would cover the picture. Without
/// one the frame must have no style sheet of its own, or it would not inherit its palette.
void bargraph::keepFrameTransparent()
{
    const QLatin1String sheet(testAttribute(Qt::WA_StyleSheet) ? "background: transparent" : "");
    if (drawFrame->styleSheet() != sheet)
        drawFrame->setStyleSheet(sheet);
}

void bargraph::OnClickedClassicMode(int c)
{
    if (c == Qt::Checked)
        classicMode = true;
    else if (c == Qt::Unchecked)
        classicMode = false;
}

void bargraph::OnLockFrequency(int c)
{
    if (c == Qt::Checked)
        graph->SendCommand(".\rU8\r");
    else if (c == Qt::Unchecked)
        graph->SendCommand(".\rU0\r");
    graph->SendCommand("B\r");
}

void bargraph::OnSpinFrequency(int s)
{
    if (s == spinFrequency)
        return;
    std::printf("%d -> %d\n", spinFrequency, s);
    graph->SendCommand(s < spinFrequency ? "<" : ">");
    spinFrequency = s;
}

void bargraph::CommandTyped(const QString &command)
{
    if (command == QLatin1String(":RMM\r"))
        resetMinMaxVoltage();
}

void bargraph::resetMinMaxVoltage()
{
    voltageMin = -1;
    voltageMax = -1;
}

bool bargraph::hasPictureIn(const QObject *frame) const
{
    return frame == drawFrame;
}

void bargraph::on_displayThresholdSlider_valueChanged(int val)
{
    displayThreshold = val;
    settings->setValue(QLatin1String(thresholdKey), val);
}
