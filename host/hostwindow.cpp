#include "host/hostwindow.h"

#include "host/complaint.h"
#include "host/thrown.h"
#include "plugin/tendroplugininterface.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>

namespace {

constexpr QSize comfortableSize{900, 700};

QString menuCaption(const QString &group)
{
    QString caption = group.at(0).toUpper() + group.mid(1);
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// What a call into a tool returns; nothing, with a line on standard error, when it throws.
template <typename Call>
auto answer(const LoadedPlugin &plugin, const char *operation, Call call)
{
    try {
        return call();
    } catch (...) {
        complain(
            QStringLiteral("%1: its %2 throws: %3").arg(plugin.file, QLatin1String(operation), thrownText()));
        return decltype(call())();
    }
}

} // namespace

HostWindow::HostWindow(const std::vector<LoadedPlugin> &plugins)
    : plugins_(plugins)
    , workArea_(new QStackedWidget)
{
    setWindowTitle(tr("Tendro Host"));
    auto *hint = new QLabel(tr("Choose a tool from the tool bar."));
    hint->setAlignment(Qt::AlignCenter);
    workArea_->addWidget(hint);
    setCentralWidget(workArea_);

    addFileMenu();
    QToolBar *toolBar = addToolBar(tr("Tools"));
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const LoadedPlugin &plugin : plugins_)
        addTool(plugin, *toolBar);
    addHelpMenu();
    statusBar();
}

HostWindow::~HostWindow()
{
    closeTool();
}

void HostWindow::addFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    closeAction_ = menu->addAction(tr("&Close Tool"), this, &HostWindow::closeTool, QKeySequence::Close);
    closeAction_->setEnabled(false);
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void HostWindow::addHelpMenu()
{
    menuBar()->addMenu(tr("&Help"))->addAction(tr("&About"), this, &HostWindow::showAbout);
}

void HostWindow::addTool(const LoadedPlugin &plugin, QToolBar &toolBar)
{
    QAction *action = launchAction(plugin);
    groupMenu(plugin.category.group)->addAction(action);
    toolBar.addAction(action);
    connect(action, &QAction::triggered, this, [this, &plugin] {
        if (!openTool(plugin))
            statusBar()->showMessage(tr("%1 has no window.").arg(plugin.id));
    });
}

QMenu *HostWindow::groupMenu(const QString &group)
{
    QMenu *&menu = groupMenus_[group];
    if (!menu)
        menu = menuBar()->addMenu(menuCaption(group));
    return menu;
}

QAction *HostWindow::launchAction(const LoadedPlugin &plugin)
{
    QAction *action = answer(plugin, "action()", [&] { return plugin.tool->action(); });
    return action ? action : new QAction(plugin.id, this);
}

QWidget *HostWindow::openTool(const LoadedPlugin &plugin)
{
    if (open_ == &plugin)
        return workArea_->currentWidget();
    QWidget *widget = widgetOf(plugin);
    if (!widget)
        return nullptr;
    closeTool();
    open_ = &plugin;
    if (workArea_->indexOf(widget) < 0)
        workArea_->addWidget(widget);
    workArea_->setCurrentWidget(widget);
    closeAction_->setEnabled(true);
    setWindowTitle(tr("%1 - Tendro Host").arg(plugin.id));
    growToFit();
    if (QWidget *inner = widget->focusWidget())
        inner->setFocus();
    return widget;
}

QWidget *HostWindow::widgetOf(const LoadedPlugin &plugin)
{
    bool answered = false;
    QWidget *widget = answer(plugin, "widget()", [&] {
        QWidget *given = plugin.tool->widget();
        answered = true;
        return given;
    });
    if (answered && !widget)
        complain(plugin.file + QStringLiteral(": its widget() gives no window"));
    return widget;
}

void HostWindow::closeTool()
{
    if (!open_)
        return;
    emit toolClosing(workArea_->currentWidget());
    answer(*open_, "closeWidget()", [this] { open_->tool->closeWidget(); });
    open_ = nullptr;
    workArea_->setCurrentIndex(0);
    closeAction_->setEnabled(false);
    setWindowTitle(tr("Tendro Host"));
}

void HostWindow::growToFit()
{
    const QSize wanted = size().expandedTo(sizeHint()).expandedTo(comfortableSize);
    // Rather larger than the screen than clipped.
    resize(wanted.boundedTo(screen()->availableSize()).expandedTo(sizeHint()));
}

QString HostWindow::aboutText() const
{
    QStringList tools;
    for (const LoadedPlugin &plugin : plugins_)
        tools += QStringList{plugin.id, plugin.description, plugin.copyright, plugin.version}.join(
            QLatin1Char('\n'));
    return tools.join(QLatin1String("\n\n"));
}

void HostWindow::showAbout()
{
    auto *box = new QMessageBox(QMessageBox::NoIcon, tr("About"), aboutText(), QMessageBox::Close, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}

void HostWindow::closeEvent(QCloseEvent *event)
{
    emit closing();
    closeTool();
    event->accept();
}
