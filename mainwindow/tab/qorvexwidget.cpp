#include "qorvexwidget.h"

#include "tabwindow.h"

qorvexwidget::qorvexwidget(TabWindow *window)
    : graph(window)
    , settings(window->settingsStore())
{
}

void qorvexwidget::CommandTyped(const QString &) {}
