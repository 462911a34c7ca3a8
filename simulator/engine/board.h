#pragma once

#include "entrypoints.h"
#include "listeners.h"
#include "script.h"
#include "tally.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <variant>

/// One attached board with its thread. All functions may be called on any thread.
///
/// The thread alone touches the script: commands wait in `inbox` until it takes them. It sends as long as
/// somebody listens; otherwise time stands still for the board. A board that is kept
/// waiting by its listeners catches up, unless it is late by more than a quarter of a second: then its time
/// stretches.
class Board : public std::enable_shared_from_this<Board>
{
public:
    using Vanish = std::function<void(Board &)>;

    /// \param vanish called on the board's thread when the board is to go
    Board(const BoardPlan &plan, Tally &tally, Vanish vanish);

    void start();
    /// Tells the thread to end and forgets all listeners.
    /// \return the thread, which the caller joins or keeps; it holds the board until it has ended
    std::thread stop();

    int id() const { return id_; }

    void addListener(Listeners::Function function, void *context);
    void removeListener(Listeners::Function function, void *context);
    /// Hands a report to the listeners on the calling thread.
    /// \return how many there were
    int deliver(const unsigned char *bytes, unsigned int length);

    /// Queues command text for the board; empty text when another board is about to answer.
    void command(std::string_view text);
    /// Queues a report, which the board's thread delivers.
    void send(Report report);
    /// Queues something that happens to the board; its time counts from when it is taken.
    void happen(const BoardEvent &event);

private:
    using Clock = std::chrono::steady_clock;
    using Message = std::variant<std::string, Report, BoardEvent>; // a command, a report, an event

    void post(Message message);
    void run();
    void step(std::unique_lock<std::mutex> &lock);
    void handle(const Message &message);
    std::chrono::nanoseconds sendNext();
    void deliver(const Report &report) { deliver(report.data(), static_cast<unsigned int>(report.size())); }

    const int id_;
    Tally &tally;
    const Vanish vanish;
    Listeners listeners;
    Script script; ///< of the thread alone

    std::mutex mutex; ///< of everything from here to `thread`
    std::condition_variable wake;
    std::deque<Message> inbox;
    Clock::time_point deadline;
    bool listening = false; ///< the deadline counts
    bool stopping = false;
    std::thread thread;
};
