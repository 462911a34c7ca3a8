#include <sys/mman.h>
#include <unistd.h>

#include "collector.h"
#include "fuzz/fuzzing.h"
#include "redactedblock.h"
#include "redactor.h"

// A capture of any bytes is redacted and counted: lengths stay, a redacted packet has nothing more to blank,
// and the copy can be read.

namespace {

using capture::ByteView;
using capture::pcapng::Event;

/// The packet's block with what is left.
std::string redactedBlock(redacting::Redactor &redactor, const capture::RecordReader &reader)
{
    return redacting::packetBlock(reader.file().block(), reader.file().byteOrder(),
                                  redactor.redacted(reader.record()));
}

int newFile(ByteView bytes)
{
    const int file = memfd_create("capture", MFD_CLOEXEC);
    fuzz::require(write(file, bytes.data, bytes.size) == static_cast<ssize_t>(bytes.size),
                  "it can be written");
    lseek(file, 0, SEEK_SET);
    return file;
}

/// The whole blocks of a file, with the packets redacted.
std::string redacted(ByteView bytes, std::uint64_t &packets)
{
    const int file = newFile(bytes);
    capture::RecordReader reader(file);
    std::string copy;
    reader.onBlock = [&](ByteView block) { copy += block.text(); };
    redacting::Redactor redactor;
    statistics::Collector collector;
    packets = 0;
    while (reader.next() == Event::Packet) {
        const std::string block = redactedBlock(redactor, reader);
        copy.resize(copy.size() - reader.file().block().size);
        copy += block;
        collector.follow(reader.record());
        ++packets;
    }
    collector.take();
    close(file);
    return copy;
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    std::uint64_t packets = 0;
    const std::string copy = redacted(
        {reinterpret_cast<const unsigned char *>(bytes.constData()), static_cast<std::size_t>(bytes.size())},
        packets);
    std::uint64_t packetsOfCopy = 0;
    const std::string again = redacted(capture::viewOf(copy), packetsOfCopy);
    require(packetsOfCopy == packets, "the copy has every packet");
    require(again == copy, "nothing is left to blank");
}
