#pragma once

#include <memory>
#include <QStringList>
#include <QTemporaryDir>

#include "recording.h"
#include "slices.h"

/// A recording that is put together crossing by crossing, and the slices that are written of it, in a folder
/// of its own. Times are milliseconds since its start. Reports are board 7's unless they say otherwise.
class SlicedRecording
{
public:
    static constexpr recorder::Clocks start{5'000'000'000, 1'700'000'000'000'000'000, 9'000'000'000, 3600};

    static std::uint64_t monotonicAt(std::uint64_t ms) { return start.monotonicNs + ms * 1'000'000; }
    static ring::Taken reportAt(std::uint64_t ms, const std::string &payload = "report");

    /// Marks are the events.
    void begin(std::uint64_t beforeMs, std::uint64_t afterMs, const std::string &note = {},
               std::size_t maxBytes = recorder::defaultKeptBytes);
    void mark(std::uint64_t ms) { recording->writeMark({monotonicAt(ms), "now"}); }
    void report(std::uint64_t ms, const std::string &payload = "report")
    {
        recording->write(reportAt(ms, payload));
    }
    /// Nothing else comes up to then.
    void passTime(std::uint64_t ms);

    QString path(const char *name = "x.pcapng") const { return folder->filePath(name); }
    QStringList files() const;
    /// What `padscope check` says.
    QByteArray checked(const char *name = "x.pcapng") const;

    std::unique_ptr<ring::Control> control;
    std::unique_ptr<recorder::Slices> slices;
    std::unique_ptr<recorder::Recording> recording;

private:
    std::unique_ptr<QTemporaryDir> folder;
};

/// A file's packets: sequence, milliseconds since the recording's start, kind, and what was lost or is told.
QStringList packetsOf(const QString &path);

/// Of the first packet, which is one.
capture::Status statusIn(const QString &path);
