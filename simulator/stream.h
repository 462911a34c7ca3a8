#pragma once

#include "simulator/boardplan.h"
#include "simulator/encoding.h"
#include "simulator/firmware.h"
#include "simulator/oddreports.h"
#include "simulator/sensor.h"

#include <chrono>
#include <string_view>
#include <vector>

/// What one board sends, report by report: the same bytes in the same order in every run from the same plan,
/// for the same commands at the same places. It has a clock of its own, which each report moves on by one
/// period, and knows nothing of threads, real time or the plan's events.
class Stream
{
public:
    explicit Stream(BoardPlan plan);

    /// The next report. The first of all is a text: the tool lets most kinds through only after one.
    Report next(std::chrono::nanoseconds period);
    /// A report out of turn.
    Report ofKind(Kind kind);

    /// Carries out commands.
    /// \return the answers as reports, to be sent at once
    std::vector<Report> command(std::string_view bytes);

    void skip(std::chrono::nanoseconds time) { clock += time; }
    std::chrono::nanoseconds time() const { return clock; }
    bool streaming() const { return firmware.switches().streaming; }
    /// Whether the pen of the last report touched the board.
    bool somethingOnBoard() const { return penOnBoard; }

private:
    using Time = std::chrono::nanoseconds;

    void postponeText();
    bool due(Time &at, Time again);
    Report greeting();
    Report scheduled();
    void shuffleDeck();
    Kind nextKind();
    Measurement measure();

    const BoardPlan plan;
    Random random;
    Sensor sensor;
    Firmware firmware;
    OddReports odd;
    std::vector<Kind> deck; ///< shuffled; dealt from the back
    Time clock{0};
    Time nextText{0};
    Time nextStatus{0};
    Time nextVoltage{0};
    Time nextUnknown{0};
    bool greeted = false;
    bool penOnBoard = false;
};
