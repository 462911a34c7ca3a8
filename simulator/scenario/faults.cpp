#include "faults.h"

#include <algorithm>
#include <cmath>

#include "listed.h"

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

/// Marks a sentence for the host's translators; the simulator speaks English.
#define FAULT_TEXT(context, text) text

namespace {

#ifdef ORVEXSIM_SANITIZED
constexpr int floodRate = 1000; // a sanitizer takes its time with each of them
#else
constexpr int floodRate = 10000;
#endif

// Each notification makes the tool attach once more, and each attach adds a connection: a longer storm would
// measure nothing but that.
constexpr int stormLength = 500;
constexpr auto stormPeriod = 1ms;
constexpr int notificationsPerPlug = 50; // in each second batch of so many the board is there
constexpr int stormBoard = 9999;

constexpr Amount noAmount{nullptr, 0, 0, 0};

constexpr Amount reportsAtOnce(double usual)
{
    return {"reports", usual, 1, 100000};
}

FaultEvents plugStorm(const Fault &, double, nanoseconds at, int)
{
    using Change = LibraryEvent::What;
    FaultEvents events;
    for (int i = 0; i < stormLength; ++i) {
        const bool comes = i / notificationsPerPlug % 2 == 0;
        const Change change = i % notificationsPerPlug != 0 ? Change::Notify
                              : comes                       ? Change::Plug
                                                            : Change::Unplug;
        events.ofLibrary.push_back({at + i * stormPeriod, change, stormBoard});
    }
    return events;
}

FaultEvents flood(const Fault &, double seconds, nanoseconds at, int boardCount)
{
    FaultEvents events;
    events.ofBoards.push_back({at, Rate{std::clamp(floodRate / boardCount, 1, maxRate)}});
    if (seconds > 0)
        events.ofBoards.push_back({at + nanoseconds(std::llround(seconds * 1e9)), Rate{0}});
    return events;
}

/// Of the kind that has the fault's name.
FaultEvents burst(const Fault &fault, double reports, nanoseconds at, int)
{
    return {{{at, Burst{static_cast<int>(reports), kindNamed(fault.name)}}}, {}};
}

/// What the fault does to the library's standing faults.
FaultEvents change(const Fault &fault, double amount, nanoseconds at, int)
{
    const auto done = [change = fault.change, amount](StandingFaults &now) { change(now, amount); };
    return {{}, {{at, LibraryEvent::What::Change, 0, done}}};
}

void enumerationFails(StandingFaults &now, double index)
{
    const auto failing = static_cast<int>(index);
    if (now.failingIndexes.erase(failing) == 0)
        now.failingIndexes.insert(failing);
}

} // namespace

const std::vector<Fault> &faults()
{
    using Scope = Fault::Scope;
    static const std::vector<Fault> all{
        {"vanish", Scope::FirstBoard, noAmount,
         FAULT_TEXT("Fault", "The first board is unplugged in the middle of a report."),
         [](const Fault &, double, nanoseconds at, int) {
             return FaultEvents{{{at, Vanish{}}}, {}};
         }},
        {"plug-storm", Scope::Library, noAmount,
         FAULT_TEXT("Fault",
                    "500 hot-plug notifications come within half a second, and board 9999 comes and goes."),
         plugStorm},
        {"flood", Scope::EveryBoard, Amount{"seconds", 5, 0, 60, false},
         FAULT_TEXT("Fault", "The boards together send 10,000 reports a second for 5 s."), flood},
        {"garbage", Scope::FirstBoard, reportsAtOnce(650),
         FAULT_TEXT("Fault", "The first board sends 650 reports of random bytes at once."), burst},
        {"all-types", Scope::FirstBoard, reportsAtOnce(256),
         FAULT_TEXT("Fault", "The first board sends 256 reports at once, one of each type."), burst},
        {"text-endless", Scope::FirstBoard, reportsAtOnce(200),
         FAULT_TEXT("Fault", "The first board sends 200 texts at once that end no line."), burst},
        {"text-long", Scope::FirstBoard, reportsAtOnce(1),
         FAULT_TEXT("Fault", "The first board sends a line of 10,000 characters."), burst},
        {"text-markup", Scope::FirstBoard, reportsAtOnce(1),
         FAULT_TEXT("Fault", "The first board sends a line of markup."), burst},
        {"text-every-byte", Scope::FirstBoard, reportsAtOnce(1),
         FAULT_TEXT("Fault", "The first board sends a line of all byte values."), burst},
        {"slow-command", Scope::Library, Amount{"seconds", 2, 0.001, 60, false},
         FAULT_TEXT("Fault", "The next command takes 2 s."), change,
         [](StandingFaults &now, double s) { now.commandDelayMs = static_cast<int>(std::lround(s * 1000)); }},
        {"callback-in-command", Scope::Library, noAmount,
         FAULT_TEXT("Fault", "Each command delivers a report on its caller's thread before it returns."),
         change, [](StandingFaults &now, double) { now.callbackInCommand = !now.callbackInCommand; },
         [](const StandingFaults &now) { return now.callbackInCommand; }},
        {"enumeration-fails", Scope::Library, Amount{"index", 0, 0, maxBoards - 1},
         FAULT_TEXT("Fault", "The first board cannot be enumerated."), change, enumerationFails,
         [](const StandingFaults &now) { return now.failingIndexes.count(0) > 0; }},
        {"lying-count", Scope::Library, Amount{"by", 2, -64, 64},
         FAULT_TEXT("Fault", "The library counts two boards more than there are."), change,
         [](StandingFaults &now, double by) { now.countLie = now.countLie == 0 ? static_cast<int>(by) : 0; },
         [](const StandingFaults &now) { return now.countLie != 0; }},
    };
    return all;
}

const Fault *faultNamed(std::string_view name)
{
    const auto match = std::find_if(faults().begin(), faults().end(),
                                    [name](const Fault &fault) { return fault.name == name; });
    return match == faults().end() ? nullptr : &*match;
}

std::string faultNames()
{
    std::vector<std::string_view> names;
    for (const Fault &fault : faults())
        names.push_back(fault.name);
    return listed(names);
}
