#include "qorvexgraph.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "bargraph.h"
#include "history.h"
#include "livewindows.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "settingsfile.h"

qorvexgraph::qorvexgraph()
{
    quarantineDamagedFile(settings);
    setAccessibleName(tr("Padscope"));
    buildTabs();
    commandLine = new QLineUpDownEdit;
    commandLine->setAccessibleName(tr("Command"));
    loadHistory(*commandLine, settings);
    connect(commandLine, SIGNAL(returnPressed()), this, SLOT(TypedCommand()));
    arrangeWidgets();
    connect(this, SIGNAL(PnpHappened()), this, SLOT(AttachHardware()));
    commandLine->setFocus(Qt::OtherFocusReason);
    livewindows::add(this);
}

qorvexgraph::~qorvexgraph()
{
    livewindows::remove(this);
}

void qorvexgraph::buildTabs()
{
    tabs = new QTabWidget;
    tabs->setAccessibleName(tr("Views"));
    barGraphView = new bargraph(this);
    addTab(barGraphView, tr("Bar Graph"));
    monitorView = new monitor(this);
    addTab(monitorView, tr("Monitor"));
}

void qorvexgraph::addTab(QWidget *view, const QString &caption)
{
    view->setAccessibleName(caption);
    tabs->addTab(view, caption);
}

void qorvexgraph::arrangeWidgets()
{
    auto *mainLayout = new QVBoxLayout;
    mainLayout->addLayout(new QHBoxLayout);
    statusLabel = new QLabel(QLatin1String("Devices found"));
    mainLayout->addWidget(statusLabel);
    mainLayout->addWidget(tabs);
    tabs->setMinimumSize(300, 200);
    mainLayout->addWidget(commandLine);
    setLayout(mainLayout);
}

void qorvexgraph::closeEvent(QCloseEvent *event)
{
    detachFromHardware();
    if (monitorView)
        monitorView->saveSettings();
    if (commandLine)
        saveHistory(*commandLine, settings);
    event->accept();
}

void qorvexgraph::hideEvent(QHideEvent *event)
{
    // The window system hides a window that is minimised; its boards stay attached.
    if (!event->spontaneous())
        detachFromHardware();
}

void qorvexgraph::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == attachTimer.timerId()) {
        attachAgain();
    } else if (event->timerId() == dispatchTimer.timerId() && dispatchDepth == 0) {
        dispatchTimer.stop();
        OnDataReceived();
    }
}
