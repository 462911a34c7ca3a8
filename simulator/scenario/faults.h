#pragma once

#include "scenario.h"

#include <chrono>
#include <string_view>
#include <vector>

/// A fault that scenarios and orvexsim_trigger() know by name, with the amounts that it has unless a scenario
/// gives others. An amount of 0 is one that the fault does not have.
struct Fault
{
    enum class Scope
    {
        FirstBoard, ///< or the one that a scenario names
        EveryBoard,
        Library,
    };

    std::string_view name;
    Scope scope;
    int reports;
    double seconds;   ///< for `flood` 0 is for good
    int index;        ///< of the enumeration
    int by;           ///< what is added to the count
    const char *text; ///< what happens, in a sentence
};

/// Marks a sentence for the host's translators; the simulator speaks English.
#define FAULT_TEXT(context, text) text

inline constexpr double floodSeconds = 5;
inline constexpr Fault faults[] = {
    {"vanish", Fault::Scope::FirstBoard, 0, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board is unplugged in the middle of a report.")},
    {"plug-storm", Fault::Scope::Library, 0, 0, 0, 0,
     FAULT_TEXT("Fault",
                "500 hot-plug notifications come within half a second, and board 9999 comes and goes.")},
    {"flood", Fault::Scope::EveryBoard, 0, floodSeconds, 0, 0,
     FAULT_TEXT("Fault", "The boards together send 10,000 reports a second for 5 s.")},
    {"garbage", Fault::Scope::FirstBoard, 650, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board sends 650 reports of random bytes at once.")},
    {"all-types", Fault::Scope::FirstBoard, 256, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board sends 256 reports at once, one of each type.")},
    {"text-endless", Fault::Scope::FirstBoard, 200, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board sends 200 texts at once that end no line.")},
    {"text-long", Fault::Scope::FirstBoard, 1, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board sends a line of 10,000 characters.")},
    {"text-markup", Fault::Scope::FirstBoard, 1, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board sends a line of markup.")},
    {"text-every-byte", Fault::Scope::FirstBoard, 1, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board sends a line of all byte values.")},
    {"slow-command", Fault::Scope::Library, 0, 2, 0, 0, FAULT_TEXT("Fault", "The next command takes 2 s.")},
    {"callback-in-command", Fault::Scope::Library, 0, 0, 0, 0,
     FAULT_TEXT("Fault", "Each command delivers a report on its caller's thread before it returns.")},
    {"enumeration-fails", Fault::Scope::Library, 0, 0, 0, 0,
     FAULT_TEXT("Fault", "The first board cannot be enumerated.")},
    {"lying-count", Fault::Scope::Library, 0, 0, 0, 2,
     FAULT_TEXT("Fault", "The library counts two boards more than there are.")},
};

/// Null when there is none of this name.
const Fault *faultNamed(std::string_view name);

/// What a fault does to each board that it concerns.
/// \param boardCount how many boards share a flood
std::vector<BoardEvent> boardEvents(const Fault &fault, std::chrono::nanoseconds at, int boardCount);
/// What a fault does to the library.
std::vector<LibraryEvent> libraryEvents(const Fault &fault, std::chrono::nanoseconds at);
