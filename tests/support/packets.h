#pragma once

#include "datapacket.h"

inline const QTime noon(12, 0);

inline QByteArray hex(const QByteArray &digits)
{
    return QByteArray::fromHex(digits);
}

/// A packet as the data callback builds it.
inline _DataPacket packetOf(const QByteArray &bytes, QTime time = noon)
{
    const auto length = static_cast<quint32>(bytes.size());
    return {bytes, length, qChecksum(bytes.constData(), length), 1001, time};
}
