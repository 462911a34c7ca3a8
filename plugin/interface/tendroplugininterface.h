#pragma once

#include <QString>
#include <QtPlugin>

class QAction;
class QWidget;

/// The interface of a host diagnostics application to each of its tools.
///
/// The order of the operations is part of the binary interface. All of them are called on the GUI thread.
class TendroPluginInterface
{
public:
    virtual ~TendroPluginInterface() = default;

    /// Unique name of the tool.
    virtual QString id() const = 0;
    virtual QString description() const = 0;
    virtual QString copyright() const = 0;
    virtual QString version() const = 0;

    /// Place in the host's menus: an ordering number, a group and the tool's own key, joined by slashes.
    virtual QString category() const = 0;

    /// Closes the tool's window, which stays alive and can be shown again. Does nothing without one.
    virtual void closeWidget() = 0;

    /// The launch button, created once and owned by the plugin object.
    virtual QAction *action() = 0;

    /// The tool's window, without a parent; created by the first call, and anew once the host has deleted it.
    /// The host deletes it before it unloads the plugin.
    virtual QWidget *widget() = 0;
};

Q_DECLARE_INTERFACE(TendroPluginInterface, "com.corvane.tendro.plugin/1.1")
