#pragma once

#include <algorithm>
#include <iterator>
#include <limits>
#include <QCoreApplication>
#include <QFrame>
#include <QTimerEvent>

#include "bargraph.h"
#include "datapacket.h"
#include "framepacer.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"

/// What the benchmarks reach of the tool's private members.
struct Inspect
{
    static monitor *rowsOf(qorvexgraph *window) { return window->monitorView; }
    static bargraph *barsOf(qorvexgraph *window) { return window->barGraphView; }
    static QTabWidget *tabsOf(qorvexgraph *window) { return window->tabs; }
    static QTreeView *treeOf(monitor *view) { return view->treeView; }
    static QStandardItemModel *modelOf(monitor *view) { return view->model; }

    static const QList<int> &deviceIdsOf(qorvexgraph *window) { return window->deviceIds; }
    static QWidget *commandLineOf(qorvexgraph *window) { return window->commandLine; }
    static QCheckBox *logBoxOf(monitor *view) { return view->logCheckBox; }

    static auto &queueOf(qorvexgraph *window) { return window->packetQueue; }
    /// Keeps reports that come no sooner than so many milliseconds after the one before.
    static void receive(qorvexgraph *window, int thresholdMs)
    {
        window->paused = false;
        window->displayThreshold = thresholdMs;
    }
    static constexpr int keepAll = std::numeric_limits<int>::min();

    static bool hasSignals(const bargraph *view)
    {
        const auto isSet = [](qint16 component) { return component != 0; };
        return std::any_of(std::begin(view->channelSignals), std::end(view->channelSignals), isSet);
    }
    static void setPicture(bargraph *view, bool isClassic, QSize size)
    {
        view->classicMode = isClassic;
        view->drawFrame->setFixedSize(size);
    }

    static void forgetPacket(monitor *view)
    {
        delete view->previousPacket;
        view->previousPacket = nullptr;
    }
    static void forgetFrame(monitor *view) { view->pacer->sinceFrame.invalidate(); }
    static void endFrame(monitor *view)
    {
        QTimerEvent over(view->pacer->frameEnd.timerId());
        QCoreApplication::sendEvent(view->pacer, &over);
    }
};
