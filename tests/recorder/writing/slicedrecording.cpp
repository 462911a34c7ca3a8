#include "slicedrecording.h"

#include <fcntl.h>
#include <QDir>
#include <unistd.h>

#include "recorder/draining/recordedrun.h"
#include "recordreader.h"

namespace {

constexpr std::uint64_t nsPerMs = 1'000'000;

} // namespace

ring::Taken SlicedRecording::reportAt(std::uint64_t ms, const std::string &payload)
{
    ring::Taken taken;
    taken.kind = 1;
    taken.flags = capture::BoardIsValid;
    taken.board = 7;
    taken.clockNs = monotonicAt(ms);
    taken.payload = payload;
    taken.originalLength = static_cast<std::uint32_t>(payload.size());
    return taken;
}

void SlicedRecording::begin(std::uint64_t beforeMs, std::uint64_t afterMs, const std::string &note,
                            std::size_t maxBytes)
{
    const auto isMark = [](const capture::Header &header, capture::ByteView) {
        return header.kindOf() == capture::Kind::Mark;
    };
    recording.reset();
    folder = std::make_unique<QTemporaryDir>();
    control = std::make_unique<ring::Control>();
    slices = std::make_unique<recorder::Slices>(
        path().toStdString(), recorder::Trigger{beforeMs * nsPerMs, afterMs * nsPerMs, isMark, maxBytes},
        !note.empty(), *control);
    recording = std::make_unique<recorder::Recording>(*slices, 1, start);
    recording->writeStatus(start, *control);
    if (!note.empty())
        recording->writeMark({start.monotonicNs, note});
}

void SlicedRecording::passTime(std::uint64_t ms)
{
    recording->flush();
    recording->passTime(monotonicAt(ms));
}

QStringList SlicedRecording::files() const
{
    return QDir(folder->path()).entryList(QDir::Files, QDir::Name);
}

QByteArray SlicedRecording::checked(const char *name) const
{
    return outputOf(PADSCOPE_FILE, {"check", path(name)});
}

QStringList packetsOf(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    QStringList packets;
    while (reader.next() == capture::pcapng::Event::Packet) {
        const capture::Record &record = reader.record();
        // What follows in the same ns is a few ns later.
        const std::uint64_t ms = (record.timeNs + 100 - SlicedRecording::start.realNs) / nsPerMs;
        QString line =
            QString("%1 %2 %3").arg(record.header.sequence).arg(ms).arg(nameOf(record.header.kindOf()));
        if (record.header.kindOf() == capture::Kind::Mark || record.header.kindOf() == capture::Kind::Report)
            line += ' ' + QString::fromStdString(std::string(record.payload.text()));
        if (record.header.kindOf() == capture::Kind::Return)
            line += QString(" of %1").arg(record.header.link);
        if (record.header.lost > 0)
            line += QString(" lost %1").arg(record.header.lost);
        packets += line;
    }
    close(file);
    return packets;
}

capture::Status statusIn(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    reader.next();
    const auto status = capture::statusOf(reader.record().payload);
    close(file);
    return status.value_or(capture::Status());
}
