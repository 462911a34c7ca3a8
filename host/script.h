#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <vector>

class HostWindow;
class QTabWidget;
struct LoadedPlugin;
struct Options;

/// Runs what the command line asks for: opens a tool, types, shows tabs in turn, waits, and closes. Before
/// the tool closes, also when the user closes it, rows are printed and snapshots taken.
class Script : public QObject
{
    Q_OBJECT

public:
    /// All three must outlive the script.
    Script(HostWindow &window, const std::vector<LoadedPlugin> &plugins, const Options &options);

    /// Opens the tool and looks up the parts that the script needs. Called once, before start().
    /// \return empty, or what is missing and what there is
    QString prepare();

    /// Begins as soon as the event loop runs. The window closes after the last step.
    void start();

    /// Whether a step failed. Its error has been printed.
    bool failed() const { return failed_; }

private:
    QString openTool();
    QString findTabs();
    void typeLines();
    void showTab(std::size_t stop);
    void closeInTime();
    void reportBeforeClosing(QWidget *tool);

    HostWindow &window_;
    const std::vector<LoadedPlugin> &plugins_;
    const Options &options_;
    QWidget *tool_ = nullptr;
    QTabWidget *tabs_ = nullptr;
    std::vector<int> tabIndices_;
    QElapsedTimer clock_;
    bool failed_ = false;
};
