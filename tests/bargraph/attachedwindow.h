#pragma once

#include <QCoreApplication>
#include <QSpinBox>

#include "bargraph.h"
#include "qorvexgraph.h"
#include "support/driverlibrary.h"

/// The tool's window, attached to board 7 of the recording driver library.
class AttachedWindow
{
public:
    AttachedWindow()
    {
        window.AttachHardware();
        library.takeCalls();
    }
    ~AttachedWindow() { window.close(); }

    AttachedWindow(const AttachedWindow &) = delete;
    AttachedWindow &operator=(const AttachedWindow &) = delete;

    bargraph *view() const { return window.barGraphView; }

    DriverLibrary library{"complete", {7}};
    qorvexgraph window;
};

/// A command to board 7, as the journal writes it.
inline QString sent(const char *escapedCommand)
{
    return QStringLiteral("orvexSendCommand(7, \"%1\")").arg(QLatin1String(escapedCommand));
}
