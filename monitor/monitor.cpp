#include "monitor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QSlider>
#include <QStandardItemModel>

#include "boundedtext.h"
#include "rowannouncer.h"
#include "rowdelegate.h"
#include "rowview.h"
#include "steadylayout.h"

namespace {

constexpr char thresholdKey[] = "monitor.displayThreshold";
constexpr char logKey[] = "Log To File";
constexpr char fontKey[] = "Monitor Font";
constexpr char fontSizeKey[] = "Monitor Font Size";

QLabel *newLastRowLabel()
{
    auto *label = new BoundedLabel;
    // Board text is never markup, and a long row must not widen the window.
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, label->sizePolicy().verticalPolicy());
    return label;
}

RowView *newRowView()
{
    auto *view = new RowView;
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    return view;
}

QLabel *newFontLabel()
{
    auto *label = new QLabel(QLatin1String("Font"));
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return label;
}

QFontComboBox *newFontBox()
{
    auto *box = new QFontComboBox;
    box->setFontFilters(QFontComboBox::MonospacedFonts);
    box->setEditable(false);
    return box;
}

QComboBox *newSizeBox()
{
    auto *box = new QComboBox;
    box->setEditable(false);
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    for (const char *size : {"6", "8", "10", "12"})
        box->addItem(QLatin1String(size));
    return box;
}

/// Makes the entry with exactly this text current. Returns false, and changes nothing, without such an entry.
bool select(QComboBox *box, const QString &text)
{
    const int index = box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index >= 0)
        box->setCurrentIndex(index);
    return index >= 0;
}

} // namespace

monitor::monitor(TabWindow *window)
    : qorvexwidget(window)
{
    auto *rowView = newRowView();
    treeView = rowView;
    pacer = rowView->framePacer();
    column = new SteadyLayout;
    addControls();
    addRows();
    setLayout(column);
    connect(&pendingTextTimer, SIGNAL(timeout()), this, SLOT(OnTimerAddRest()));
    // Finds the slider by its name, so only after setLayout() has made it a child of this view.
    QMetaObject::connectSlotsByName(this);
}

void monitor::addControls()
{
    auto *bar = new QHBoxLayout;
    addLogControl(bar);
    addThresholdControl(bar);
    bar->addStretch();
    addFontControls(bar);
    column->addLayout(bar);
}

void monitor::addRows()
{
    treeView->setItemDelegate(new RowDelegate(styleSheet(), treeView));
    model = new QStandardItemModel(0, 1, this);
    model->setHeaderData(0, Qt::Horizontal, tr("Data"), Qt::EditRole);
    treeView->setModel(model);
    treeView->setAccessibleName(tr("Rows"));
    column->addWidget(treeView);
    lastRowLabel = newLastRowLabel();
    pacer->addWidget(lastRowLabel);
    // With a name of its own the label does not announce each of its texts.
    lastRowLabel->setAccessibleName(tr("Newest row"));
    announcer = new RowAnnouncer(lastRowLabel);
    column->addWidget(lastRowLabel);
}

void monitor::addLogControl(QHBoxLayout *bar)
{
    logCheckBox = new QCheckBox(tr("Log to file"));
    logEnabled = settings->value(QLatin1String(logKey), false).toBool();
    logCheckBox->setChecked(logEnabled);
    connect(logCheckBox, SIGNAL(stateChanged(int)), this, SLOT(LogToFile(int)));
    bar->addWidget(logCheckBox);
}

void monitor::addThresholdControl(QHBoxLayout *bar)
{
    displayThreshold = settings->value(QLatin1String(thresholdKey), 100).toInt();
    bar->addWidget(new QLabel(tr("Fast Computer")));
    auto *slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(QLatin1String("displayThresholdSlider"));
    slider->setRange(0, 1000);
    slider->setValue(displayThreshold);
    slider->setAccessibleName(tr("Fast Computer") + QLatin1String(" - ") + tr("Slow Computer"));
    slider->setAccessibleDescription(tr("Milliseconds between two reports"));
    bar->addWidget(slider);
    bar->addWidget(new QLabel(tr("Slow Computer")));
}

void monitor::addFontControls(QHBoxLayout *bar)
{
    QLabel *fontLabel = newFontLabel();
    bar->addWidget(fontLabel);
    auto *fontBox = newFontBox();
    fontLabel->setBuddy(fontBox);
    connect(fontBox, SIGNAL(currentFontChanged(QFont)), this, SLOT(OnChangedFont(QFont)));
    bar->addWidget(fontBox);
    auto *sizeBox = newSizeBox();
    sizeBox->setAccessibleDescription(tr("Font size"));
    connect(sizeBox, SIGNAL(currentIndexChanged(QString)), this, SLOT(OnChangedFontSize(QString)));
    bar->addWidget(sizeBox);
    applyStoredFont(fontBox, sizeBox);
}

void monitor::applyStoredFont(QFontComboBox *fontBox, QComboBox *sizeBox)
{
    const QString family = settings->value(QLatin1String(fontKey), QLatin1String("Courier")).toString();
    const QString size = settings->value(QLatin1String(fontSizeKey), QLatin1String("10")).toString();
    // Pixels here, points in the boxes, by design. Qt decides which applies.
    setStyleSheet(QString::fromLatin1("QTreeView {color: white; background-color: black; font-size: %1px; "
                                      "font-family: \"%2\";}")
                      .arg(size, family));
    if (select(fontBox, family))
        OnChangedFont(fontBox->currentFont());
    if (select(sizeBox, size))
        OnChangedFontSize(size);
}

void monitor::OnChangedFont(const QFont &font)
{
    const int pointSize = monitorFont.pointSize();
    monitorFont = font;
    monitorFont.setPointSize(pointSize);
    treeView->setFont(monitorFont);
}

void monitor::OnChangedFontSize(const QString &text)
{
    monitorFont.setPointSize(text.toInt());
    treeView->setFont(monitorFont);
}

void monitor::LogToFile(int state)
{
    if (state == Qt::Checked)
        LogToFile(true);
    else if (state == Qt::Unchecked)
        LogToFile(false);
}

void monitor::LogToFile(bool on)
{
    if (on == logEnabled)
        return;
    logCheckBox->setChecked(on);
    logEnabled = on;
}

void monitor::on_displayThresholdSlider_valueChanged(int value)
{
    displayThreshold = value;
    settings->setValue(QLatin1String(thresholdKey), value);
}

void monitor::saveSettings()
{
    settings->setValue(QLatin1String(fontKey), monitorFont.family());
    settings->setValue(QLatin1String(fontSizeKey), monitorFont.pointSize());
    settings->setValue(QLatin1String(logKey), logEnabled);
}
