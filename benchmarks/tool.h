#pragma once

#include <QByteArray>

#include "bargraph.h"
#include "datapacket.h"
#include "monitor.h"
#include "qorvexgraph.h"

constexpr int fullView = 151; ///< rows that the monitor shows at most

/// The tool's window, detached. The benchmarks hand it the reports.
class Tool
{
public:
    Tool();
    ~Tool();
    Tool(const Tool &) = delete;
    Tool &operator=(const Tool &) = delete;

    /// Shows a tab at the window's size hint, and waits until it is painted.
    void show(QWidget *tab);

    /// Makes the next row paint at once, as after a pause.
    void rest();
    /// Ends the frame: paints the rows that arrived in it.
    void endFrame();

    qorvexgraph *const window;
    monitor *const rows;
    bargraph *const bars;
};

/// A report of type 164, as of a moving pen; differs by number.
QByteArray positionReport(int number);

/// A report of 16 bytes that is not rate-limited and that the monitor shows raw.
QByteArray rawReport(int number);

/// The packet that the intake makes of a report.
_DataPacket packetOf(const QByteArray &report);

/// The texts of the rows that the monitor shows for such reports.
/// \param report makes the report with a number
QStringList rowTexts(QByteArray (*report)(int), int count);

/// Runs the event loop until it is idle.
void settle();
