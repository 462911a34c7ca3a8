#pragma once

#include <QSettings>

#include "tabwindow.h"

/// What the "Monitor" tab needs of the window: settings, and no board.
class SettingsWindow : public TabWindow
{
public:
    void SendCommand(const char *) override {}
    QSettings *settingsStore() override { return &settings; }

private:
    QSettings settings{"Corvane", "qorvexgraph"};
};
