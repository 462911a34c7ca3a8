#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/fuzzing.h"
#include "overview.h"
#include "writers.h"

// A capture of any bytes, in every format: the reader comes to an end, and tells where within the file.

namespace {

using capture::pcapng::Event;

struct Reading
{
    std::string text;
    std::uint64_t packets = 0;
    std::uint64_t offset = 0;
    Event last = Event::Packet;
};

Reading readAs(decoding::Format format, int file)
{
    char *text = nullptr;
    std::size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    decoding::WriterOptions options;
    options.format = format;
    decoding::Writer writer(options, stream);
    decoding::Overview overview;
    capture::RecordReader reader(file);
    Reading reading;
    while ((reading.last = reader.next()) == Event::Packet) {
        const std::uint64_t offset = reader.record().offset;
        fuzz::require(reading.packets == 0 || offset > reading.offset,
                      "each packet lies behind the one before");
        reading.offset = offset;
        ++reading.packets;
        overview.follow(reader.record());
        writer.follow(reader.record());
        writer.write(reader.record());
    }
    if (reading.last == Event::Damage)
        reading.offset = reader.damage().offset;
    writer.finish();
    fuzz::require(writer.flush(), "everything is written");
    std::fclose(stream);
    reading.text.assign(text, size);
    std::free(text);
    return reading;
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    const int file = memfd_create("capture", MFD_CLOEXEC);
    const auto size = static_cast<std::size_t>(bytes.size());
    require(::write(file, bytes.constData(), size) == bytes.size(), "the input can be written");
    std::uint64_t packets = 0;
    for (const decoding::Format format : {decoding::Format::Text, decoding::Format::Rows,
                                          decoding::Format::Csv, decoding::Format::JsonLines}) {
        lseek(file, 0, SEEK_SET);
        const Reading reading = readAs(format, file);
        require(reading.offset <= size, "damage lies within the file");
        require(format == decoding::Format::Text || reading.packets == packets, "each format reads the same");
        packets = reading.packets;
        const auto lines =
            static_cast<std::uint64_t>(std::count(reading.text.begin(), reading.text.end(), '\n'));
        require(format != decoding::Format::JsonLines || lines == packets, "a line for each packet");
    }
    close(file);
}
