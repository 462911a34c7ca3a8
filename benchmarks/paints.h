#pragma once

#include <QEvent>
#include <QPaintEvent>
#include <QWidget>

/// Counts a widget's paint events and their pixels, so that skipped work shows.
class Paints : public QObject
{
public:
    explicit Paints(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            for (const QRect &rect : static_cast<QPaintEvent *>(event)->region())
                pixels += qint64{rect.width()} * rect.height();
        }
        return false;
    }

    int count = 0;
    qint64 pixels = 0;
};
