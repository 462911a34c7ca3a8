#pragma once

#include "simulator/listeners.h"
#include "simulator/settings.h"
#include "simulator/stream.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

inline constexpr int initialRate = 100;
inline constexpr int highestRate = 10000;

/// One attached board with its thread. All functions may be called on any thread.
///
/// The thread alone touches the stream: commands wait in `inbox` until it takes them. It sends as long as
/// somebody listens; without a listener time stands still for the board. A board that is kept waiting by its
/// listeners catches up, unless it is late by more than a quarter of a second: then its time stretches.
class Board : public std::enable_shared_from_this<Board>
{
public:
    Board(int id, int rate);

    void start();
    /// Tells the thread to end and forgets all listeners.
    /// \return the thread, which the caller joins or keeps; it holds the board until it has ended
    std::thread stop();

    int id() const { return id_; }
    void setRate(int perSecond);

    void addListener(Listeners::Function function, void *context);
    void removeListener(Listeners::Function function, void *context);
    /// Hands a report to the listeners on the calling thread.
    /// \return how many there were
    int deliver(const unsigned char *bytes, unsigned int length);

    /// Queues command text for the board.
    void command(std::string_view text);
    /// Queues bytes that come back as a report.
    void loopBack(const unsigned char *bytes, std::size_t length);

    bool somethingOnBoard() const { return penOnBoard; }

    /// `use(Settings &)` under the lock of the settings.
    template <typename Use>
    auto withSettings(Use use)
    {
        const std::lock_guard lock(settingsMutex);
        return use(settings);
    }

private:
    using Clock = std::chrono::steady_clock;
    struct Message
    {
        bool isCommand;
        Report bytes;
    };

    void post(Message message);
    void run();
    void step(std::unique_lock<std::mutex> &lock);
    void handle(const Message &message);
    void sendNext(std::chrono::nanoseconds step);
    void deliver(const Report &report);

    const int id_;
    Listeners listeners;
    Stream stream;                       ///< of the thread alone
    std::atomic<bool> penOnBoard{false}; ///< published by the thread

    std::mutex mutex; ///< of everything from here to `thread`
    std::condition_variable wake;
    std::deque<Message> inbox;
    std::chrono::nanoseconds period;
    Clock::time_point deadline;
    bool listening = false; ///< the deadline counts
    bool stopping = false;
    std::thread thread;

    std::mutex settingsMutex;
    Settings settings;
};
