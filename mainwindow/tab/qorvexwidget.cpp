#include "mainwindow/tab/qorvexwidget.h"

#include "mainwindow/qorvexgraph.h"

qorvexwidget::qorvexwidget(qorvexgraph *window)
    : graph(window)
    , settings(window->settingsStore())
{
}
