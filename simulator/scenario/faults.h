#pragma once

#include <chrono>
#include <string_view>
#include <vector>

#include "scenario.h"

/// What a fault does to each board that it concerns, or to the library.
struct FaultEvents
{
    std::vector<BoardEvent> ofBoards;
    std::vector<LibraryEvent> ofLibrary;
};

/// How much of a fault there is; a scenario may give it under `key`.
struct Amount
{
    const char *key; ///< null for a fault without one
    double usual;
    double min;
    double max;
    bool whole = true;
};

/// A fault that scenarios and orvexsim_trigger() know by name.
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
    Amount amount;
    const char *text; ///< what happens, in a sentence
    /// \param boardCount how many boards share a flood
    FaultEvents (*events)(const Fault &fault, double amount, std::chrono::nanoseconds at, int boardCount);
    /// Of a fault of the library.
    void (*change)(StandingFaults &faults, double amount) = nullptr;
    /// Null for one that passes; any other lasts until it is triggered again.
    bool (*isOn)(const StandingFaults &faults) = nullptr;
};

/// All of them, in the order in which menus and tables show them.
const std::vector<Fault> &faults();
/// Null when there is none of this name.
const Fault *faultNamed(std::string_view name);
/// "vanish, plug-storm", and so on.
std::string faultNames();
