#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_set>

#include "boardhistory.h"
#include "recordedanswers.h"
#include "replayfile.h"
#include "replayplan.h"

/// Something that is played.
struct ReplayEntry
{
    enum Kind : std::uint8_t
    {
        Report,
        Notification, ///< the hot-plug callbacks are called
        Command,      ///< which the host sends; only in lockstep
        Nothing,      ///< a report in whose place another one is played
    };

    std::int64_t timeNs;  ///< since the clock's start; not below that of the entry before
    std::uint64_t offset; ///< of the bytes in the file
    std::int32_t board;
    std::uint32_t recorded; ///< bytes in the file
    std::uint32_t length;   ///< of the report; bytes that were not recorded are zero
    Kind kind;
    bool isNull; ///< a report without bytes, whatever its length is
};

/// A capture as it is played: what happens when, which boards there are, and what calls return. Any thread;
/// nothing changes once it is read.
struct Replay
{
    Replay(const ReplayPlan &plan_, std::string &error)
        : plan(plan_)
        , file(plan.capture, error)
    {
    }

    const ReplayPlan plan;
    const ReplayFile file;
    std::deque<ReplayEntry> entries; ///< of the whole capture
    std::size_t first = 0;           ///< of those that are played
    std::size_t end = 0;             ///< behind them
    std::int64_t lengthNs = 0;       ///< from the clock's start to the last
    std::uint64_t reports = 0;       ///< that are played
    std::uint64_t gaps = 0;          ///< that were shortened
    std::int64_t gapsNs = 0;         ///< by so much in all
    BoardHistory boards;
    std::unordered_set<std::int32_t> listened; ///< boards that had a callback when it was recorded
    RecordedAnswers answers;
};

/// Reads a capture.
/// \param error on failure why, with the offset in the file where there is one
/// \return null on failure
std::shared_ptr<const Replay> readReplay(const ReplayPlan &plan, std::string &error);
