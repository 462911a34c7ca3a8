#pragma once

#include <algorithm>
#include <chrono>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "boardplan.h"
#include "encoding.h"
#include "firmware.h"
#include "oddreports.h"
#include "sensor.h"

/// What one board sends, report by report: the same bytes in the same order in every run from the same plan,
/// for the same commands at the same places. It has a clock of its own, which each report moves on by one
/// period, and knows nothing of threads, real time or the plan's events.
class Stream
{
public:
    explicit Stream(BoardPlan plan);

    /// The next report. The first of all is a greeting: the tool lets most kinds through only after a text.
    Report next(std::chrono::nanoseconds period);
    /// A report out of turn.
    Report ofKind(Kind kind);

    /// Carries out commands and queues their answers, which next() returns when they are due. Holds back all
    /// other texts meanwhile, also when `bytes` is empty: another board is about to answer.
    void command(std::string_view bytes);
    bool answering() const { return !answers.empty(); }
    bool answerDue() const { return answering() && clock >= nextAnswer; }
    /// When there is one.
    std::chrono::nanoseconds untilAnswer() const { return std::max(nextAnswer - clock, Time::zero()); }

    void skip(std::chrono::nanoseconds time) { clock += time; }
    std::chrono::nanoseconds time() const { return clock; }
    bool streaming() const { return firmware.switches().streaming; }

private:
    using Time = std::chrono::nanoseconds;

    Time lineDelay();
    void holdTexts(Time until);
    void dropTexts();
    bool due(Time &at, Time again);
    Report scheduled();
    void shuffleDeck();
    Kind nextKind();
    Measurement measure();

    const BoardPlan plan;
    Random random;
    Sensor sensor;
    Firmware firmware;
    OddReports odd;
    std::vector<Kind> deck;          ///< shuffled; dealt from the back
    std::deque<std::string> answers; ///< not sent yet; at first the greeting
    Time clock{0};
    Time nextAnswer{0};
    Time nextLine{0};
    Time nextStatus{0};
    Time nextVoltage{0};
    Time nextUnknown{0};
};
