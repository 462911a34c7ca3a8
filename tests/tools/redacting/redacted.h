#pragma once

#include <QTest>

#include "redactor.h"
#include "tools/decoding/records.h"

/// A packet as a redactor leaves it.
struct Redacted
{
    QByteArray header;
    QByteArray payload;
    bool isEdited = false;
};

/// \param lengthBefore of the payload before it was cut; -1 when it was not
inline Redacted redacted(redacting::Redactor &redactor, const QByteArray &packet, int lengthBefore = -1)
{
    OwnRecord own(packet);
    own.record.payloadLength = lengthBefore < 0 ? static_cast<std::uint32_t>(own.record.payload.size)
                                                : static_cast<std::uint32_t>(lengthBefore);
    const QByteArray bytes = QByteArray::fromStdString(redactor.redacted(own.record));
    if (bytes.size() != packet.size())
        qFatal("the length changes");
    return {bytes.left(40), bytes.mid(40), (bytes[5] & 128) != 0};
}

inline Redacted redacted(const QByteArray &packet, int lengthBefore = -1)
{
    redacting::Redactor redactor;
    return redacted(redactor, packet, lengthBefore);
}

inline QByteArray report(const QByteArray &payload, quint64 sequence = 0, int board = 1001)
{
    return packetBytes(1, 1, 0, board, 0, payload, 1, 0, sequence);
}

inline QByteArray fromHex(const char *digits)
{
    return QByteArray::fromHex(digits);
}
