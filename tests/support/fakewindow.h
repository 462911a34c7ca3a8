#pragma once

#include <QByteArrayList>
#include <QSettings>
#include <utility>

#include "tabwindow.h"

/// What a test of a tab puts in the window's place: the settings store, and a record of the commands.
class FakeWindow : public TabWindow
{
public:
    void SendCommand(const char *command) override { commands += command; }
    QSettings *settingsStore() override { return &settings; }

    QByteArrayList takeCommands() { return std::exchange(commands, {}); }

    QSettings settings{"Corvane", "qorvexgraph"};
    QByteArrayList commands; ///< so far
};
