#pragma once

#include <fcntl.h>
#include <QFile>
#include <QList>
#include <unistd.h>

#include "recordreader.h"

/// What crossed in a capture, in its order.
struct CapturedReports
{
    /// Board and bytes of each: "1001: 04c80102".
    QList<QByteArray> reports;
    QList<quint64> timesNs; ///< of the reports
    int withoutFlag = 0;    ///< reports, calls, returns and notifications that are not "from a replay"

    double seconds() const { return double(timesNs.last() - timesNs.first()) / 1e9; }
};

inline CapturedReports reportsOf(const QString &path)
{
    CapturedReports captured;
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    while (reader.next() == capture::pcapng::Event::Packet) {
        const capture::Record &record = reader.record();
        const bool hasCrossed = record.header.kind >= 1 && record.header.kind <= 4;
        captured.withoutFlag += hasCrossed && (record.header.flags & 64) == 0 ? 1 : 0;
        if (record.header.kind != 1)
            continue;
        const std::string bytes(record.payload.text());
        captured.reports +=
            QByteArray::number(record.header.board) + ": " + QByteArray::fromStdString(bytes).toHex();
        captured.timesNs += record.timeNs;
    }
    close(file);
    return captured;
}
