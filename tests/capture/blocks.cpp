#include "blocks.h"

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// Zero above those that a number has.
unsigned byteOf(quint64 value, int index)
{
    return index < 8 ? (value >> (8 * index)) & 0xFF : 0;
}

} // namespace

namespace blocks {

QByteArray number(quint64 value, int size, bool isBigEndian)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(byteOf(value, isBigEndian ? size - 1 - i : i)));
    return bytes;
}

QByteArray block(quint32 type, const QByteArray &body, bool isBigEndian)
{
    const QByteArray length = number(static_cast<quint64>(body.size()) + 12, 4, isBigEndian);
    return number(type, 4, isBigEndian) + length + body + length;
}

QByteArray option(quint16 code, const QByteArray &value, bool isBigEndian)
{
    return number(code, 2, isBigEndian) + number(static_cast<quint64>(value.size()), 2, isBigEndian) + value +
           QByteArray((4 - value.size() % 4) % 4, '\0');
}

QByteArray section(bool isBigEndian)
{
    return block(0x0A0D0D0A,
                 number(0x1A2B3C4D, 4, isBigEndian) + number(1, 2, isBigEndian) + number(0, 2, isBigEndian) +
                     QByteArray(8, '\xFF'),
                 isBigEndian);
}

QByteArray interface(const QByteArray &name, bool isBigEndian)
{
    return block(1,
                 number(147, 2, isBigEndian) + number(0, 2) + number(65535, 4, isBigEndian) +
                     option(2, name, isBigEndian) + option(9, "\x09", isBigEndian) + number(0, 4),
                 isBigEndian);
}

QByteArray packet(quint64 time, const QByteArray &data, const QByteArray &options, bool isBigEndian)
{
    const QByteArray length = number(static_cast<quint64>(data.size()), 4, isBigEndian);
    return block(6,
                 number(0, 4) + number(time >> 32, 4, isBigEndian) +
                     number(time & 0xFFFFFFFF, 4, isBigEndian) + length + length + data +
                     QByteArray((4 - data.size() % 4) % 4, '\0') + options,
                 isBigEndian);
}

} // namespace blocks

MemoryFile::MemoryFile(const QByteArray &bytes)
    : file(memfd_create("test", MFD_CLOEXEC))
{
    append(bytes);
}

MemoryFile::~MemoryFile()
{
    close(file);
}

void MemoryFile::append(const QByteArray &bytes)
{
    if (pwrite(file, bytes.constData(), static_cast<std::size_t>(bytes.size()), end) != bytes.size())
        qFatal("the file in memory cannot be written");
    end += bytes.size();
}
