#include "faults.h"

#include <algorithm>
#include <cmath>
#include <iterator>

using namespace std::chrono_literals;

namespace {

#ifdef ORVEXSIM_SANITIZED
constexpr int floodRate = 1000; // a sanitizer takes its time with each of them
#else
constexpr int floodRate = 10000;
#endif

// Each notice makes the tool attach once more, and each attach adds a connection: a longer storm would
// measure nothing but that.
constexpr int stormNotices = 500;
constexpr auto stormPeriod = 1ms;
constexpr int stormNoticesPerPlug = 50; // in each second batch of so many the board is there
constexpr int stormBoard = 9999;

std::vector<LibraryEvent> plugStorm(std::chrono::nanoseconds at)
{
    using What = LibraryEvent::What;
    std::vector<LibraryEvent> events;
    for (int i = 0; i < stormNotices; ++i) {
        const auto now = at + i * stormPeriod;
        if (i % stormNoticesPerPlug != 0)
            events.push_back({now, What::Notice, 0});
        else if (i / stormNoticesPerPlug % 2 == 0)
            events.push_back({now, What::Plug, stormBoard});
        else
            events.push_back({now, What::Unplug, stormBoard});
    }
    return events;
}

std::vector<BoardEvent> flood(const Fault &fault, std::chrono::nanoseconds at, int boardCount)
{
    BoardEvent event{at, BoardEvent::What::Rate, std::clamp(floodRate / boardCount, 1, highestRate)};
    std::vector<BoardEvent> events{event};
    if (fault.seconds > 0) {
        event.at += std::chrono::nanoseconds(std::llround(fault.seconds * 1e9));
        event.amount = 0;
        events.push_back(event);
    }
    return events;
}

} // namespace

const Fault *faultNamed(std::string_view name)
{
    const auto match = std::find_if(std::begin(faults), std::end(faults),
                                    [name](const Fault &fault) { return fault.name == name; });
    return match == std::end(faults) ? nullptr : match;
}

std::vector<BoardEvent> boardEvents(const Fault &fault, std::chrono::nanoseconds at, int boardCount)
{
    if (fault.name == "vanish")
        return {{at, BoardEvent::What::Vanish}};
    if (fault.name == "flood")
        return flood(fault, at, boardCount);
    return {{at, BoardEvent::What::Burst, fault.reports, {}, kindNamed(fault.name)}};
}

std::vector<LibraryEvent> libraryEvents(const Fault &fault, std::chrono::nanoseconds at)
{
    using What = LibraryEvent::What;
    if (fault.name == "plug-storm")
        return plugStorm(at);
    if (fault.name == "slow-command")
        return {{at, What::SlowCommand, static_cast<int>(std::lround(fault.seconds * 1000))}};
    if (fault.name == "callback-in-command")
        return {{at, What::CallbackInCommand, 0}};
    if (fault.name == "enumeration-fails")
        return {{at, What::EnumerationFails, fault.index}};
    return {{at, What::CountLies, fault.by}};
}
