#pragma once

#include <QByteArrayList>

#include "records.h"

/// A small capture: one session, a second long, with every kind of packet.
namespace examplecapture {

inline constexpr quint64 startNs = 1'700'000'000'000'000'000;

inline QByteArray counts(quint64 lost)
{
    using blocks::number;
    return number(1, 4) + number(1001, 4) + number(3 + lost, 8) + number(3, 8) + number(lost, 8);
}

inline QByteArray statusPayload()
{
    using blocks::number;
    return number(0, 8) + number(startNs, 8) + number(0, 8) + number(0, 4) + number(0, 4);
}

/// One packet each, in the order of their times.
inline QList<QByteArray> packets(quint64 lost = 0)
{
    const auto hex = [](const char *digits) { return QByteArray::fromHex(digits); };
    const auto stamped = [](quint64 ms, const QByteArray &data, const QByteArray &options = {}) {
        return blocks::packet(startNs + ms * 1'000'000, data, options);
    };
    return {
        stamped(0, packetBytes(5, 0, 0, 0, 0, statusPayload(), 0, 0, 0)),
        stamped(1, packetBytes(2, 0, 1, 0, 0, {}, 0, 0, 1)),
        stamped(2, packetBytes(3, 2, 1, 0, 1, {}, 1, 0, 2)),
        stamped(3, packetBytes(7, 1, 0, 1001, 0, hex("01000000 00000000"), 0, 0, 3)),
        stamped(100, packetBytes(1, 1, 0, 1001, 0, hex("0a2f040100ffff030009"), 1, 0, 4)),
        stamped(200, packetBytes(1, 1, 0, 1001, 0, hex("083248690d0a"), 1, 0, 5)),
        stamped(300, packetBytes(1, 1, 0, 1001, 0, hex("030141"), 1, quint32(lost), 6 + lost),
                lost > 0 ? blocks::option(4, blocks::number(lost, 8)) : QByteArray()),
        stamped(400, packetBytes(2, 1, 6, 1001, 0, hex("e9030000 02000000 3f0d"), 0, 0, 7 + lost)),
        stamped(500, packetBytes(4, 0, 0, 0, 0, {}, 2, 0, 8 + lost)),
        stamped(600, packetBytes(6, 0, 0, 0, 0, "hi", 0, 0, 9 + lost)),
        stamped(1000, packetBytes(8, 0, 0, 0, 0, hex("01000000 00000000") + counts(lost), 0, 0, 10 + lost)),
    };
}

inline QByteArray start()
{
    return blocks::section() + blocks::interface("driver");
}

inline QByteArray whole(quint64 lost = 0)
{
    return start() + packets(lost).join();
}

/// What `padscope decode` prints.
inline QList<QByteArray> textLines()
{
    return {
        "0.000000000  -  status",
        "0.001000000  -  orvexAttach()",
        "0.002000000  -  orvexAttach() = 1",
        "0.003000000  1001  seen, index 0",
        "0.100000000  1001  0:     1  60:    -1  120:     3  Integs:   9",
        "0.200000000  1001  Hi..",
        "0.300000000  1001  ..A   03 01 41 ",
        "0.400000000  1001  orvexSendCommand(1001, \"?\\r\")",
        "0.500000000  -  hot-plug notification, listener 2",
        "0.600000000  -  mark: \"hi\"",
        "1.000000000  -  end: exit status 0, board 1001: 3 delivered, 3 recorded, 0 lost",
    };
}

} // namespace examplecapture
