#pragma once

#include <utility>

#include <QCoreApplication>
#include <QFrame>
#include <QPaintEvent>
#include <QTest>

#include "bargraph.h"
#include "qorvexgraph.h"

/// Counts how often the picture of the bar graph is painted.
///
/// It shows the view by itself: when a label grows, the tabs around the view paint it once more.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(qorvexgraph *shown)
        : window(shown)
        , view(shown->barGraphView)
    {
        view->setParent(nullptr);
        view->resize(900, 600);
        view->installEventFilter(this);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view));
        QTRY_VERIFY(count > 0);
        take();
    }
    ~PaintCounter() override { view->setParent(window); }

    PaintCounter(const PaintCounter &) = delete;
    PaintCounter &operator=(const PaintCounter &) = delete;

    /// Paints what has been asked for.
    /// \return how often the picture was painted since the last call
    int take()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        return std::exchange(count, 0);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        // A control that is painted has what lies behind it painted too; that is not the picture.
        const QPoint middle = view->drawFrame->geometry().center();
        if (event->type() == QEvent::Paint && static_cast<QPaintEvent *>(event)->region().contains(middle))
            ++count;
        return false;
    }

private:
    qorvexgraph *window;
    bargraph *view;
    int count = 0;
};
