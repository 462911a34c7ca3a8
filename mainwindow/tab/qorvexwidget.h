#pragma once

#include <QWidget>

class QSettings;
class TabWindow;
struct _DataPacket;

/// Base of the views on the tabs of the main window. GUI thread only.
class qorvexwidget : public QWidget
{
    Q_OBJECT

public:
    qorvexwidget() = default;
    /// Built without a Qt parent: the tab widget adopts the view.
    explicit qorvexwidget(TabWindow *window);

    /// Shows one packet. The caller keeps ownership.
    virtual void Display(_DataPacket *packet) = 0;

    /// Called on the current tab before a typed command is sent. Does nothing unless a view overrides it.
    /// \param command with its carriage return
    virtual void CommandTyped(const QString &command);

    /// Rate limit while this view is shown: milliseconds that must pass between two rate-limited reports.
    int displayThresholdMs() const { return displayThreshold; }

protected:
    TabWindow *graph = nullptr;
    QSettings *settings = nullptr; ///< the main window's store
    int displayThreshold = 0;
};
