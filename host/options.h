#pragma once

#include <optional>
#include <QString>
#include <QStringList>
#include <vector>

class QCommandLineParser;

/// A tab to show and for how long.
struct TabStop
{
    QString caption;
    int durationMs;
};

/// What the command line asks for.
struct Options
{
    /// Folders to scan; empty for the places where the build and the installation put plugins.
    QStringList pluginFolders;
    bool list = false;
    QString openId;
    QString driver;
    /// Whether the simulator is loaded as the driver library.
    bool simulate = false;
    /// Empty for the one that the environment chooses.
    QString scenario;
    bool listScenarios = false;
    QStringList typedLines;
    std::vector<TabStop> tabs;
    std::optional<int> closeAfterMs;
    /// Empty for no snapshots.
    QString snapshotFolder;
    bool rows = false;
    QString translation;

    /// Whether anything is to be done with a tool, so that one must be open.
    bool needsTool() const;
    /// Whether the host does things by itself and closes, rather than to be used.
    bool isScripted() const;
};

/// Declares all options, "--help" and "--version".
void declareOptions(QCommandLineParser &parser);

/// Reads the arguments, the program's name first; "--help" and "--version" are left to the caller.
/// \return empty, or what is wrong and what is allowed
QString readOptions(QCommandLineParser &parser, const QStringList &arguments, Options &options);
