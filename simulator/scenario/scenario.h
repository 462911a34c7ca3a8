#pragma once

#include "boardplan.h"

#include <chrono>
#include <string>
#include <vector>

/// Something that happens to the library as a whole, or to which boards there are.
struct LibraryEvent
{
    enum class What
    {
        Plug,             ///< board `value`
        Unplug,           ///< board `value`
        Notice,           ///< the plug-and-play callbacks are called
        EnumerationFails, ///< for index `value`; again, and it works
        CountLies,        ///< by `value`; again, and it is true
        SlowCommand,      ///< the next one takes `value` milliseconds
        CallbackInCommand ///< every command delivers a report within it; again, and none does
    };

    std::chrono::nanoseconds at{0}; ///< since the attach
    What what = What::Notice;
    int value = 0;
};

struct Scenario
{
    struct Place
    {
        BoardPlan plan;
        bool plugged = true; ///< at first
    };

    std::string title;
    std::vector<Place> boards;
    std::vector<LibraryEvent> events;
};
