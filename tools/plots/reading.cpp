#include "reading.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

#include "collector.h"
#include "progress.h"

namespace plots {

using capture::pcapng::Event;
using padscope::Status;

CaptureReading::CaptureReading(const std::string &path)
    : input(path)
{
}

CaptureReading::~CaptureReading()
{
    if (copy)
        std::fclose(copy);
}

int CaptureReading::descriptor() const
{
    return copy ? fileno(copy) : input.descriptor();
}

/// Into a file without a name, which goes with the process.
bool CaptureReading::copyPipe()
{
    copy = std::tmpfile();
    if (!copy)
        return false;
    char bytes[65'536];
    ssize_t count = 0;
    while ((count = ::read(input.descriptor(), bytes, sizeof bytes)) != 0) {
        const bool isWritten = count > 0 && std::fwrite(bytes, 1, static_cast<std::size_t>(count), copy) ==
                                                static_cast<std::size_t>(count);
        if (!isWritten && errno != EINTR)
            return false;
    }
    return std::fflush(copy) == 0;
}

Status CaptureReading::failure(const std::string &what) const
{
    padscope::printError(input.name() + ": " + what);
    return padscope::Usage;
}

template <typename Use>
Event CaptureReading::read(capture::RecordReader &reader, Use use)
{
    padscope::Progress progress(input.size());
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next()) {
        use(reader.record());
        progress.follow(reader.file().block().size);
    }
    return last;
}

Status CaptureReading::survey(Contents &contents, bool withStatistics)
{
    if (!input.isOpen())
        return padscope::Usage;
    contents.name = input.name();
    begin = lseek(input.descriptor(), 0, SEEK_CUR);
    if (begin < 0) {
        begin = 0;
        if (!copyPipe() || lseek(descriptor(), 0, SEEK_SET) < 0)
            return failure(std::strerror(errno));
    }
    capture::RecordReader reader(descriptor());
    padscope::Completeness completeness;
    statistics::Collector collector;
    const Event last = read(reader, [&](const capture::Record &record) {
        completeness.follow(record);
        contents.survey.follow(record);
        if (withStatistics)
            collector.follow(record);
        const capture::pcapng::Section &section = reader.file().section();
        if (contents.sections.empty() || contents.sections.back().offset != section.offset)
            contents.sections.push_back(section);
    });
    contents.statistics = collector.take();
    contents.skipped = reader.skipped();
    contents.isCutOff = last == Event::End && reader.file().endsWithinBlock();
    return completeness.statusOfWhole(input, reader, last);
}

void CaptureReading::draw(Pictures &pictures)
{
    lseek(descriptor(), begin, SEEK_SET);
    capture::RecordReader reader(descriptor());
    read(reader, [&](const capture::Record &record) { pictures.follow(record); });
    pictures.finish();
}

} // namespace plots
