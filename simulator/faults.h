#pragma once

#include "simulator/scenario.h"

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
    double seconds; ///< for `flood` 0 is for good
    int index;      ///< of the enumeration
    int by;         ///< what is added to the count
};

inline constexpr double floodSeconds = 5;
inline constexpr Fault faults[] = {
    {"vanish", Fault::Scope::FirstBoard, 0, 0, 0, 0},
    {"plug-storm", Fault::Scope::Library, 0, 0, 0, 0},
    {"flood", Fault::Scope::EveryBoard, 0, floodSeconds, 0, 0},
    {"garbage", Fault::Scope::FirstBoard, 650, 0, 0, 0},
    {"all-types", Fault::Scope::FirstBoard, 256, 0, 0, 0},
    {"text-endless", Fault::Scope::FirstBoard, 200, 0, 0, 0},
    {"text-long", Fault::Scope::FirstBoard, 1, 0, 0, 0},
    {"text-markup", Fault::Scope::FirstBoard, 1, 0, 0, 0},
    {"text-every-byte", Fault::Scope::FirstBoard, 1, 0, 0, 0},
    {"slow-command", Fault::Scope::Library, 0, 2, 0, 0},
    {"callback-in-command", Fault::Scope::Library, 0, 0, 0, 0},
    {"enumeration-fails", Fault::Scope::Library, 0, 0, 0, 0},
    {"lying-count", Fault::Scope::Library, 0, 0, 0, 2},
};

/// Null when there is none of this name.
const Fault *faultNamed(std::string_view name);

/// What a fault does to each board that it concerns.
/// \param boardCount how many boards share a flood
std::vector<BoardEvent> boardEvents(const Fault &fault, std::chrono::nanoseconds at, int boardCount);
/// What a fault does to the library.
std::vector<LibraryEvent> libraryEvents(const Fault &fault, std::chrono::nanoseconds at);
