#pragma once

#include "program.h"

/// A SignalReport of sub-type 1 with its "yFine60", bytes 21 and 22, and its "xFine0", bytes 13 and 14.
inline QByteArray signalReport(int yFine60, int xFine0 = 0)
{
    return QByteArray::fromHex("282f01") + QByteArray(10, '\0') + blocks::number(quint64(xFine0), 2) +
           QByteArray(6, '\0') + blocks::number(quint64(yFine60), 2) + QByteArray(17, '\0');
}

inline QByteArray packetAt(quint64 ms, const QByteArray &data)
{
    return blocks::packet(examplecapture::startNs + ms * 1'000'000, data);
}

inline QByteArray reportAt(quint64 ms, const QByteArray &report, int board = 1001)
{
    return packetAt(ms, packetBytes(1, 1, 0, board, 0, report, 1));
}

/// Ten reports of a signal that rises, 10 ms apart.
inline QList<QByteArray> tenReports(int board = 1001)
{
    QList<QByteArray> packets;
    for (int i = 0; i < 10; ++i)
        packets += reportAt(quint64(10 * i), signalReport(100 + 2 * i), board);
    return packets;
}

inline QByteArray captureOf(const QList<QByteArray> &packets)
{
    return examplecapture::start() + packets.join();
}

/// `padscope diff` of two captures.
inline ProgramRun diff(const QList<QByteArray> &a, const QList<QByteArray> &b,
                       const QStringList &options = {})
{
    const Files files;
    return padscope(QStringList{"diff"} + options +
                    QStringList{files.write("a", captureOf(a)), files.write("b", captureOf(b))});
}
