#include "reference/observed.h"

#include <QDebug>
#include <QHeaderView>
#include <QScrollBar>

#include "reference/reference.h"
#include "reference/shownwindow.h"

Observed observe(const ShownWindow &shown, qreal pixelRatio)
{
    Observed observed;
    const QTreeView *rows = shown.rows();
    const QLabel *label = shown.label();
    QDebug out(&observed.numbers);
    for (const QScrollBar *bar : {rows->verticalScrollBar(), rows->horizontalScrollBar()})
        out << bar->value() << bar->minimum() << bar->maximum() << bar->pageStep() << bar->isVisible();
    out << rows->geometry() << rows->viewport()->geometry() << rows->header()->geometry()
        << rows->columnWidth(0) << rows->currentIndex().row() << shown.model->rowCount() << label->geometry()
        << label->text() << shown.window->size();
    observed.anew = shown.picture(pixelRatio);
    observed.onScreen = shown.onScreen();
    return observed;
}

QString difference(const Observed &actual, const Observed &expected)
{
    if (actual.numbers != expected.numbers)
        return actual.numbers + QStringLiteral(" instead of ") + expected.numbers;
    QString different = reference::difference(actual.beforeEvents, expected.beforeEvents);
    if (!different.isEmpty())
        return QStringLiteral("grabbed: ") + different;
    different = reference::difference(actual.anew, expected.anew);
    if (!different.isEmpty())
        return QStringLiteral("painted anew: ") + different;
    different = reference::difference(actual.onScreen, expected.onScreen);
    return different.isEmpty() ? different : QStringLiteral("on the screen: ") + different;
}
