#pragma once

#include "qorvexgraph.h"

/// What the window shows nowhere.
struct Inspect
{
    static bool isAttached(const qorvexgraph &window) { return window.hardware && !window.paused; }
    static bool isDetached(const qorvexgraph &window) { return !window.hardware && window.paused; }
    static const OrvexWrapper *binding(const qorvexgraph &window) { return window.hardware; }
    static QList<int> deviceIds(const qorvexgraph &window) { return window.deviceIds; }
    static int displayThreshold(const qorvexgraph &window) { return window.displayThreshold; }
    static auto &packetQueue(qorvexgraph &window) { return window.packetQueue; }
    static bool hasWaitingCommands(const qorvexgraph &window) { return !window.waitingCommands.isEmpty(); }
    /// What a timer calls.
    static void attachAgain(qorvexgraph &window) { window.attachAgain(); }
};
