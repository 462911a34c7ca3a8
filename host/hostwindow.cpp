#include "hostwindow.h"

#include <algorithm>
#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>

#include "captions.h"
#include "printerror.h"
#include "tendroplugininterface.h"
#include "thrown.h"

namespace {

constexpr QSize comfortableSize{900, 700};
/// Room for the window manager's frame, whose size is not known before the window is shown.
constexpr QSize frameRoom{16, 40};

/// Marks as mnemonic the first letter that no other menu of the bar uses. It has two cases or is a digit:
/// kana and ideographs are on no key.
QString withMnemonic(QString caption, const QMenuBar &bar)
{
    QString taken;
    const QList<QAction *> menus = bar.actions();
    for (const QAction *menu : menus) {
        const int mark = menu->text().indexOf(QLatin1Char('&'));
        if (mark >= 0)
            taken += menu->text().at(mark + 1);
    }
    const auto free = std::find_if(caption.cbegin(), caption.cend(), [&](QChar letter) {
        const bool isOnKey = letter.toUpper() != letter.toLower() || letter.isDigit();
        return isOnKey && !taken.contains(letter, Qt::CaseInsensitive);
    });
    if (free != caption.cend())
        caption.insert(static_cast<int>(free - caption.cbegin()), QLatin1Char('&'));
    return caption;
}

/// Groups that are translated; others keep the name that their tool gives them.
[[maybe_unused]] constexpr const char *knownGroups[] = {
    QT_TRANSLATE_NOOP("Category", "advanced"),
    QT_TRANSLATE_NOOP("Category", "other"),
};

QString groupTitle(const QString &group)
{
    const QString title = QCoreApplication::translate("Category", group.toUtf8().constData());
    return title.at(0).toUpper() + title.mid(1);
}

/// Result of a call into a tool. When it throws, a default value, with a line on standard error.
template <typename Call>
auto answer(const LoadedPlugin &plugin, const char *operation, Call call)
{
    try {
        return call();
    } catch (...) {
        printError(
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
    auto *hint = new QLabel(tr("Choose a tool from the tool bar, or press Ctrl and its number."));
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    workArea_->addWidget(hint);
    workArea_->setAccessibleName(tr("Work area"));
    setCentralWidget(workArea_);

    addFileMenu();
    QToolBar *toolBar = addToolBar(tr("Tools"));
    toolBar->setAccessibleName(tr("Tools"));
    nameExtension(*toolBar, tr("More tools"));
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    addHelpMenu();
    for (const LoadedPlugin &plugin : plugins_)
        addTool(plugin, *toolBar);
    statusBar()->setAccessibleName(tr("Status"));
    connect(statusBar(), &QStatusBar::messageChanged, statusBar(), &QWidget::setAccessibleDescription);
    resize(comfortableSize.boundedTo(screen()->availableSize() - frameRoom));
}

HostWindow::~HostWindow()
{
    closeTool();
}

void HostWindow::addFileMenu()
{
    menuBar()->setAccessibleName(tr("Menus"));
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    nameByTitle(*menu);
    closeAction_ = menu->addAction(tr("&Close Tool"), this, &HostWindow::closeTool,
                                   QKeySequence(QStringLiteral("Ctrl+W")));
    closeAction_->setEnabled(false);
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence(QStringLiteral("Ctrl+Q")));
}

void HostWindow::addHelpMenu()
{
    helpMenu_ = menuBar()->addMenu(tr("&Help"));
    nameByTitle(*helpMenu_);
    helpMenu_->addAction(tr("&About"), this, &HostWindow::showAbout, QKeySequence(Qt::Key_F1));
}

void HostWindow::addTool(const LoadedPlugin &plugin, QToolBar &toolBar)
{
    QAction *action = launchAction(plugin);
    const int number = toolBar.actions().size() + 1;
    if (action->shortcut().isEmpty() && number <= 9)
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(number)));
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
        menu = addMenu(groupTitle(group));
    return menu;
}

QMenu *HostWindow::addMenu(const QString &name)
{
    auto *menu = new QMenu(withMnemonic(asCaption(name), *menuBar()), this);
    nameByTitle(*menu);
    menuBar()->insertMenu(helpMenu_->menuAction(), menu);
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
    addToWorkArea(plugin, widget);
    workArea_->setCurrentWidget(widget);
    closeAction_->setEnabled(true);
    setWindowTitle(tr("%1 - Tendro Host").arg(plugin.id));
    growToFit();
    focusTool(plugin);
    return widget;
}

void HostWindow::addToWorkArea(const LoadedPlugin &plugin, QWidget *widget)
{
    if (workArea_->indexOf(widget) >= 0)
        return;
    // Reparenting clears the widget's focus, so it is read first.
    initialFocus_[&plugin] = widget->focusWidget();
    workArea_->addWidget(widget);
}

void HostWindow::focusTool(const LoadedPlugin &plugin)
{
    QWidget *focused = initialFocus_.value(&plugin);
    if (!focused)
        return;
    focused->setFocus();
    if (auto *line = qobject_cast<QLineEdit *>(focused))
        line->selectAll();
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
        printError(plugin.file + QStringLiteral(": its widget() gives no window"));
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
    const QSize room = screen()->availableSize() - frameRoom;
    const QSize wanted = sizeHint().expandedTo(comfortableSize).boundedTo(room);
    // Before the window is shown, its size is Qt's default.
    resize(wanted.expandedTo(isVisible() ? size() : minimumSizeHint()));
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
