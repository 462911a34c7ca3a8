#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <variant>

#include "callbackthread.h"
#include "script.h"
#include "tally.h"

/// One attached board with its thread. All functions may be called on any thread.
///
/// The thread alone touches the script: messages wait in `inbox` until it takes them. It sends as long as
/// somebody listens; otherwise time stands still for the board. A board that is kept waiting by its listeners
/// catches up, unless it is late by more than a quarter of a second: then its time stretches.
class Board : public CallbackThread
{
public:
    using Vanish = std::function<void(Board &)>;
    /// Command text (empty when another board is about to answer), a report to be delivered, or something
    /// that happens from now on.
    using Message = std::variant<std::string, Report, BoardEvent>;

    /// \param vanish called on the board's thread when the board is to go
    Board(const BoardPlan &plan, Tally &tally, Vanish vanish);

    int id() const { return boardId; }

    /// Queues a message for the board's thread.
    void post(Message message);
    /// Hands a report to the listeners on the calling thread.
    /// \return how many there were
    int deliver(const unsigned char *bytes, unsigned int length);
    void deliver(const Report &report) { deliver(report.data(), static_cast<unsigned int>(report.size())); }

private:
    using Clock = std::chrono::steady_clock;

    void step(std::unique_lock<std::mutex> &lock) override;
    void handle(const std::string &command) { script.command(command); }
    void handle(const BoardEvent &event) { script.add(event); }
    void handle(const Report &report) { deliver(report); }

    const int boardId;
    Tally &tally;
    const Vanish vanish;
    Script script; ///< of the thread alone

    std::deque<Message> inbox; ///< under the mutex, as are the two after
    Clock::time_point deadline;
    bool listening = false; ///< the deadline counts
};
