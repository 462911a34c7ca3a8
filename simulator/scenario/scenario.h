#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "boardplan.h"
#include "replay.h"

/// What is wrong with the library since a fault has happened.
struct StandingFaults
{
    std::set<int> failingIndexes; ///< of the enumeration
    int countLie = 0;             ///< is added to the count of boards
    int commandDelayMs = 0;       ///< of the next command
    bool callbackInCommand = false;
};

/// Something that happens to the library as a whole, or to which boards there are.
struct LibraryEvent
{
    enum class What
    {
        Plug,   ///< board `value`
        Unplug, ///< board `value`
        Notify, ///< the hot-plug callbacks are called
        Change, ///< `change` is done to the faults
    };

    std::chrono::nanoseconds at{0}; ///< since the attach
    What what = What::Notify;
    int value = 0;
    std::function<void(StandingFaults &faults)> change{};
    unsigned number = 0; ///< of the library, which knows by it what is still to come
};

struct Scenario
{
    std::string title;
    std::vector<BoardPlan> boards;
    std::vector<LibraryEvent> events;
    std::shared_ptr<const Replay> replay{}; ///< then there is neither of the two before
};
