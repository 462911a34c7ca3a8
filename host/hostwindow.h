#pragma once

#include <QHash>
#include <QMainWindow>
#include <QPointer>

#include "pluginloading.h"

class QMenu;
class QStackedWidget;
class QToolBar;

/// The host's window: menus, a tool bar, and a work area that shows one tool at a time.
///
/// A tool is always closed before its widget is hidden, replaced or deleted. The first nine tools open by
/// Ctrl and their number, unless their actions have shortcuts already.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The plugins must outlive the window, which owns the widgets that it asked them for.
    explicit HostWindow(const std::vector<LoadedPlugin> &plugins);
    ~HostWindow() override;

    /// Shows the tool in the work area, after closing the one that is there.
    /// \return its widget, or null if the tool has none (the work area is then left as it was)
    QWidget *openTool(const LoadedPlugin &plugin);

    /// The tool in the work area, or null.
    const LoadedPlugin *openPlugin() const { return open_; }

    /// Adds an empty menu before "Help", with a mnemonic of its own.
    QMenu *addMenu(const QString &name);

    /// Id, description, copyright and version of each tool, as plain text.
    QString aboutText() const;

public slots:
    /// Closes the tool in the work area; without one it does nothing.
    void closeTool();
    void showAbout();

signals:
    /// The tool is about to be closed; it still runs.
    void toolClosing(QWidget *widget);
    /// The window is about to close; its tool is still open.
    void closing();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void addFileMenu();
    void addTool(const LoadedPlugin &plugin, QToolBar &toolBar);
    void addHelpMenu();
    QMenu *groupMenu(const QString &group);
    QWidget *widgetOf(const LoadedPlugin &plugin);
    QAction *launchAction(const LoadedPlugin &plugin);
    void addToWorkArea(const LoadedPlugin &plugin, QWidget *widget);
    /// Focuses the widget that had the focus when the tool's window was created. Selects the text of a line
    /// edit, so that typing replaces it.
    void focusTool(const LoadedPlugin &plugin);
    void growToFit();

    const std::vector<LoadedPlugin> &plugins_;
    const LoadedPlugin *open_ = nullptr;
    QStackedWidget *workArea_;
    QAction *closeAction_ = nullptr;
    QMenu *helpMenu_ = nullptr;
    QHash<QString, QMenu *> groupMenus_;
    QHash<const LoadedPlugin *, QPointer<QWidget>> initialFocus_;
};
