#pragma once

#include <QWidget>

class QSettings;
class qorvexgraph;
struct _DataPacket;

/// Base of the views on the tabs of the main window.
class qorvexwidget : public QWidget
{
    Q_OBJECT

public:
    qorvexwidget() = default;
    /// Built without a Qt parent: the tab widget adopts the view.
    explicit qorvexwidget(qorvexgraph *window);

    /// Shows one packet, which stays the caller's. GUI thread.
    virtual void Display(_DataPacket *packet) = 0;

    /// Shortest time between two rate-limited reports while this view is shown, in milliseconds.
    int displayThresholdMs() const { return displayThreshold; }

protected:
    qorvexgraph *graph = nullptr;
    QSettings *settings = nullptr; ///< the main window's store
    int displayThreshold = 0;
};
