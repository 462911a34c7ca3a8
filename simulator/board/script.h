#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <string_view>
#include <vector>

#include "stream.h"

/// A board's stream together with the events of its plan and those from outside, in the board's own time.
/// Knows nothing of threads or real time.
class Script
{
public:
    struct Step
    {
        std::optional<Report> report;
        std::chrono::nanoseconds wait{0}; ///< from here to the next step
        bool vanishes = false;            ///< the board is gone after this report
    };

    explicit Script(BoardPlan plan_);

    Step next();
    /// Lets something happen from now on: the event's time counts from here.
    void add(BoardEvent event);
    /// Carries out commands; next() returns their answers when they are due.
    void command(std::string_view bytes) { stream.command(bytes); }

    /// Whether next() may be called: a board that is stopped only answers.
    bool active() const { return stream.streaming() || stream.answering(); }

private:
    void performDue();
    void perform(const BoardEvent &event);
    void happen(const Burst &burst) { bursts.push_back(burst); }
    void happen(const Pause &silence) { pause += silence.duration; }
    void happen(const Raw &raw) { out.push_back(raw.bytes); }
    void happen(const Rate &rate);
    void happen(const Vanish &) { vanishing = true; }
    Step stopped();
    Step burst();
    Step vanish();

    const BoardPlan plan;
    std::vector<BoardEvent> added; ///< from outside, to come, in the order of their times
    std::chrono::nanoseconds period{0};
    Stream stream;
    std::deque<Report> out; ///< of the events, to be sent first
    std::deque<Burst> bursts;
    std::chrono::nanoseconds pause{0};
    bool vanishing = false;
};
