#pragma once

#include <QByteArray>

#include "capture/blocks.h"
#include "recordreader.h"

/// The packet of a capture: the header's fields in the order of their bytes, and a payload.
inline QByteArray packetBytes(int kind, int flags, int call, int board, int result, const QByteArray &payload,
                              quint32 link = 0, quint32 lost = 0, quint64 sequence = 0)
{
    using blocks::number;
    return "PD\x01\x28" + number(quint64(kind), 1) + number(quint64(flags), 1) + number(quint64(call), 2) +
           number(quint64(qint64(board)), 4) + number(quint64(qint64(result)), 4) + number(sequence, 8) +
           number(0x5f0c93a1, 4) + number(1234, 4) + number(link, 4) + number(lost, 4) + payload;
}

/// A record whose bytes live as long as this.
struct OwnRecord
{
    explicit OwnRecord(QByteArray packet, quint64 timeNs = 0)
        : bytes(std::move(packet))
    {
        const capture::ByteView view{reinterpret_cast<const unsigned char *>(bytes.constData()),
                                     static_cast<std::size_t>(bytes.size())};
        record.frame = 1;
        record.timeNs = timeNs;
        record.header = capture::headerOf(view);
        record.payload = view.from(capture::headerSize);
    }

    QByteArray bytes;
    capture::Record record;
};
