#include "mainwindow/tab/qorvexwidget.h"

#include "mainwindow/tab/tabwindow.h"

qorvexwidget::qorvexwidget(TabWindow *window)
    : graph(window)
    , settings(window->settingsStore())
{
}

void qorvexwidget::CommandTyped(const QString &) {}
