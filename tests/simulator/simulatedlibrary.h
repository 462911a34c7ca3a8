#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "entrypoints.h"
#include "orvexsim.h"

/// X(member, name) for each function of the control.
#define ORVEXSIM_FUNCTIONS(X)                                                                                \
    X(plug, orvexsim_plug)                                                                                   \
    X(unplug, orvexsim_unplug)                                                                               \
    X(setRate, orvexsim_set_rate)                                                                            \
    X(boards, orvexsim_boards)                                                                               \
    X(send, orvexsim_send)                                                                                   \
    X(sendOn, orvexsim_send_on)                                                                              \
    X(totals, orvexsim_totals)                                                                               \
    X(counts, orvexsim_counts)                                                                               \
    X(waitDelivered, orvexsim_wait_delivered)                                                                \
    X(scenarioCount, orvexsim_scenario_count)                                                                \
    X(scenario, orvexsim_scenario)                                                                           \
    X(choose, orvexsim_choose)                                                                               \
    X(currentScenario, orvexsim_current_scenario)                                                            \
    X(fault, orvexsim_fault)                                                                                 \
    X(faultText, orvexsim_fault_text)                                                                        \
    X(faultIsOn, orvexsim_fault_is_on)                                                                       \
    X(trigger, orvexsim_trigger)                                                                             \
    X(lastError, orvexsim_last_error)                                                                        \
    X(replay, orvexsim_replay)                                                                               \
    X(replayIsOn, orvexsim_replay_is_on)                                                                     \
    X(replayPause, orvexsim_replay_pause)                                                                    \
    X(replayStep, orvexsim_replay_step)                                                                      \
    X(replaySeek, orvexsim_replay_seek)                                                                      \
    X(replayRate, orvexsim_replay_rate)                                                                      \
    X(replayRestart, orvexsim_replay_restart)                                                                \
    X(journalLength, orvexsim_journal_length)                                                                \
    X(journal, orvexsim_journal)                                                                             \
    X(calibration, orvexsim_calibration)

/// The simulator, loaded with the dynamic loader and unloaded in the end.
class SimulatedLibrary
{
public:
    /// \param file the complete library, or one of its variants
    explicit SimulatedLibrary(const char *file = SIMULATOR_FILE);
    ~SimulatedLibrary();
    SimulatedLibrary(const SimulatedLibrary &) = delete;
    SimulatedLibrary &operator=(const SimulatedLibrary &) = delete;

    void unload();
    static bool isLoaded();
    bool has(const char *name) const;

#define DECLARE_POINTER(name, returns, value, parameters, arguments) returns(*name) parameters = nullptr;
#define NO_POINTER(name, returns, value, parameters, arguments)
    ORVEX_POINTERS(DECLARE_POINTER, NO_POINTER)
#undef NO_POINTER
#undef DECLARE_POINTER
#define DECLARE_POINTER(member, name) decltype(::name) *member = nullptr;
    ORVEXSIM_FUNCTIONS(DECLARE_POINTER)
#undef DECLARE_POINTER

    std::vector<int> boardIds() const;
    /// The last error, as text.
    std::string error() const;
    /// Texts of the calls from this number on.
    std::vector<std::string> callsFrom(unsigned long long number) const;

private:
    void *handle;
};

using Bytes = std::vector<unsigned char>;

/// A listener that keeps what it was called with. It must outlive the library, which calls it.
class Recorder
{
public:
    struct Delivery
    {
        int device;
        Bytes bytes;
        std::thread::id thread;
    };

    static void data(int device, const unsigned char *bytes, unsigned int length, void *recorder);
    /// Another function that does the same.
    static void twin(int device, const unsigned char *bytes, unsigned int length, void *recorder);
    static void pnp(void *recorder);

    std::vector<Delivery> deliveries() const;
    std::size_t count() const;
    std::size_t notifications() const;
    /// How often exactly these bytes came.
    int timesSeen(const Bytes &bytes) const;
    /// How often a report of this type whose bytes contain the text came.
    int timesSeen(int type, const char *text) const;

    std::function<void(int device)> action; ///< done within each call; the device is 0 in a notification

private:
    mutable std::mutex mutex;
    std::vector<Delivery> delivered;
    std::size_t notified = 0;
};
