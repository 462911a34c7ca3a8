#include "mainwindow/qorvexgraph.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "bargraph/bargraph.h"
#include "mainwindow/livewindows.h"
#include "mainwindow/qlineupdownedit.h"
#include "mainwindow/settingsfile.h"
#include "monitor/monitor.h"

qorvexgraph::qorvexgraph()
{
    setAsideDamagedFile(settings);
    buildTabs();
    commandLine = new QLineUpDownEdit;
    loadHistory();
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
    barGraphView = new bargraph(this);
    tabs->addTab(barGraphView, tr("Bar Graph"));
    monitorView = new monitor(this);
    tabs->addTab(monitorView, tr("Monitor"));
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
        saveMonitorSettings();
    if (commandLine)
        saveHistory();
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

void qorvexgraph::saveMonitorSettings()
{
    settings.setValue(QLatin1String("Monitor Font"), monitorView->rowFont().family());
    settings.setValue(QLatin1String("Monitor Font Size"), monitorView->rowFont().pointSize());
    settings.setValue(QLatin1String("Log To File"), monitorView->isLogging());
}
