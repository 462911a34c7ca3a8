#pragma once

#include <QByteArray>
#include <QTime>

/// One board report on its way from a thread of the driver library to a view.
///
/// Created by the data callback, deleted on the GUI thread once the current view has seen it.
struct _DataPacket
{
    const unsigned char *bytes() const { return reinterpret_cast<const unsigned char *>(data.constData()); }
    std::size_t byteCount() const { return static_cast<std::size_t>(data.size()); }

    QByteArray data;  ///< the report's bytes, a copy
    quint32 length;   ///< number of bytes that the driver library named
    quint32 checksum; ///< qChecksum() of the bytes (CRC-16, ISO 3309)
    qint32 device;    ///< id of the board that sent it
    QTime time;       ///< local time of day of its arrival, in milliseconds
};
