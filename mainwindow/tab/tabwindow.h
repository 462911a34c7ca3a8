#pragma once

class QSettings;

/// What a tab uses of its window. GUI thread.
class TabWindow
{
public:
    /// Sends a text unchanged to the first board; does nothing without a board or while detached.
    virtual void SendCommand(const char *command) = 0;

    /// Settings store, owned by the window.
    virtual QSettings *settingsStore() = 0;

protected:
    ~TabWindow() = default;
};
