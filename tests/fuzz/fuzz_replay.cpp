#include <algorithm>
#include <QDir>

#include "fuzz/fuzzing.h"
#include "replay.h"

// A capture of any bytes as a replay: it is refused in one line, or all of it can be played in order.

namespace {

using capture::ByteView;

void checkError(const std::string &error)
{
    fuzz::require(!error.empty(), "the error says something");
    fuzz::require(error.find('\n') == std::string::npos, "the error is one line");
}

void checkEntries(const Replay &replay, const QByteArray &file)
{
    ReplayBytes bytes(replay.file);
    std::int64_t timeNs = 0;
    std::uint64_t reports = 0;
    for (std::size_t i = replay.first; i < replay.end; ++i) {
        const ReplayEntry &entry = replay.entries[i];
        fuzz::require(entry.timeNs >= timeNs, "entries are in order");
        timeNs = entry.timeNs;
        reports += entry.kind == ReplayEntry::Report;
        if (entry.isNull)
            continue;
        const auto read = bytes.at(entry.offset, entry.recorded, entry.length);
        fuzz::require(read && read->data && read->size == entry.length, "an entry's bytes are in the file");
        QByteArray expected = file.mid(static_cast<int>(entry.offset), static_cast<int>(entry.recorded));
        expected += QByteArray(static_cast<int>(entry.length - entry.recorded), '\0');
        fuzz::require(read->text() == std::string_view(expected.constData(), entry.length),
                      "an entry's bytes are those of its place");
    }
    fuzz::require(timeNs == replay.lengthNs, "the last entry ends it");
    fuzz::require(reports == replay.reports, "reports are counted");
}

/// At each place there are so many boards, also where a report is due.
void checkBoards(const Replay &replay)
{
    std::size_t position = 0;
    for (int changes = 0; changes < 1000 && position != SIZE_MAX; ++changes) {
        fuzz::require(replay.boards.at(position).size() <= 2 * BoardHistory::maxBoards, "boards are few");
        const std::size_t next = replay.boards.changeAfter(position);
        fuzz::require(next > position, "changes are in order");
        position = next;
    }
    for (std::size_t i = replay.first; i < replay.end && i < 1000; ++i) {
        const ReplayEntry &entry = replay.entries[i];
        if (entry.kind != ReplayEntry::Report)
            continue;
        const auto present = replay.boards.at(i);
        fuzz::require(std::any_of(present.begin(), present.end(),
                                  [&](const auto &one) { return one.board->id == entry.board; }),
                      "a board that reports is there");
    }
}

void checkAnswers(const Replay &replay, const QByteArray &file)
{
    const std::string arguments = file.left(4).toStdString();
    for (unsigned call = 0; call < 48; ++call) {
        const RecordedAnswer *answer = replay.answers.find(call, arguments, replay.end, replay.lengthNs);
        fuzz::require(!answer || answer->position <= replay.entries.size(), "an answer has its place");
    }
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    const QString path = QDir::home().filePath("capture.pcapng");
    write(path, bytes);
    for (const bool isLockstep : {false, true}) {
        ReplayPlan plan;
        plan.capture = path.toStdString();
        plan.lockstep = isLockstep;
        if (isLockstep)
            plan.skipGaps = std::chrono::milliseconds(1);
        std::string error;
        const auto replay = readReplay(plan, error);
        if (!replay) {
            checkError(error);
            continue;
        }
        checkEntries(*replay, bytes);
        checkBoards(*replay);
        checkAnswers(*replay, bytes);
    }
}
