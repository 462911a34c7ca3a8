#pragma once

#include <QByteArray>

/// Bytes of pcapng files, put together by hand.
namespace blocks {

/// An integer of `size` bytes.
QByteArray number(quint64 value, int size, bool isBigEndian = false);

/// Type, length, body, and the length again.
QByteArray block(quint32 type, const QByteArray &body, bool isBigEndian = false);

/// An option, padded.
QByteArray option(quint16 code, const QByteArray &value, bool isBigEndian = false);

/// A section header without options, of version 1.0.
QByteArray section(bool isBigEndian = false);

/// An interface of link type 147 with its name, and times in nanoseconds.
QByteArray interface(const QByteArray &name, bool isBigEndian = false);

/// An enhanced packet of interface 0.
QByteArray packet(quint64 time, const QByteArray &data, const QByteArray &options = {},
                  bool isBigEndian = false);

} // namespace blocks

/// A descriptor from which bytes can be read.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    /// Behind those that are there; reading goes on where it was.
    void append(const QByteArray &bytes);

    int descriptor() const { return file; }

private:
    int file;
    int end = 0;
};
