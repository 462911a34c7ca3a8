#pragma once

#include "simulator/encoding.h"
#include "simulator/firmware.h"
#include "simulator/sensor.h"

#include <chrono>
#include <string_view>
#include <vector>

/// What one board sends, report by report: the same bytes in the same order in every run from the same seed,
/// for the same commands at the same places. It has a clock of its own, which each report moves on by one
/// period, and knows nothing of threads or real time.
class Stream
{
public:
    /// \param id the board's, for its greeting
    Stream(int id, std::uint32_t seed);

    /// The next report. The first of all is a text: the tool lets most kinds through only after one.
    Report next(std::chrono::nanoseconds period);

    /// Carries out commands.
    /// \return the answers as reports, to be sent at once
    std::vector<Report> command(std::string_view bytes);

    bool streaming() const { return firmware.switches().streaming; }
    /// Whether the pen of the last report touched the board.
    bool somethingOnBoard() const { return penOnBoard; }

private:
    using Time = std::chrono::nanoseconds;

    void postponeText();
    bool due(Time &at, Time again);
    Report greeting();
    Report scheduled();
    Kind nextKind();
    Measurement measure();

    int id;
    Random random;
    Sensor sensor;
    Firmware firmware;
    std::vector<Kind> deck; ///< shuffled; dealt from the back
    Time clock{0};
    Time nextText{0};
    Time nextStatus{0};
    Time nextVoltage{0};
    Time nextUnknown{0};
    bool greeted = false;
    bool penOnBoard = false;
};
