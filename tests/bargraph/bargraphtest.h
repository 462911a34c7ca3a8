#pragma once

#include <memory>

#include "bargraph/display.h"

/// Tests of the bar graph, each with a window of its own.
class BarGraphTest : public QObject
{
    Q_OBJECT

protected slots:
    void init()
    {
        window = std::make_unique<qorvexgraph>();
        view = window->barGraphView;
    }
    void cleanup() { window.reset(); }

protected:
    std::unique_ptr<qorvexgraph> window;
    bargraph *view = nullptr;
};
