#pragma once

#include <QByteArray>

#include "bargraph.h"
#include "datapacket.h"
#include "monitor.h"
#include "qorvexgraph.h"

/// The tool's window, detached; the benchmarks hand it what a board would send.
class Tool
{
public:
    Tool();
    ~Tool();
    Tool(const Tool &) = delete;
    Tool &operator=(const Tool &) = delete;

    /// Shows a tab in a window that is large enough for it, and waits until it is painted.
    void show(QWidget *tab);

    /// The next row is painted at once, as after a rest.
    void rest();
    /// Paints the rows that came since the frame began, as when it is over.
    void endFrame();

    qorvexgraph *const window;
    monitor *const rows;
    bargraph *const bars;
};

/// A report of type 164 for every number, as a pen gives when it moves.
QByteArray positionReport(int number);

/// A report of a type that no rule thins out and the monitor shows raw: 16 bytes.
QByteArray rawReport(int number);

/// The packet that the intake makes of a report.
_DataPacket packetOf(const QByteArray &report);

/// The texts of the rows that the monitor shows for such reports.
/// \param report makes the report with a number
QStringList rowTexts(QByteArray (*report)(int), int count);

/// Runs the event loop until nothing is left to do.
void settle();
