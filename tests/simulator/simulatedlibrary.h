#pragma once

#include "driver/entrypoints.h"
#include "simulator/orvexsim.h"

#include <mutex>
#include <thread>
#include <vector>

/// The simulator, loaded with the dynamic loader and unloaded in the end.
class SimulatedLibrary
{
public:
    SimulatedLibrary();
    ~SimulatedLibrary();
    SimulatedLibrary(const SimulatedLibrary &) = delete;
    SimulatedLibrary &operator=(const SimulatedLibrary &) = delete;

    void unload();
    static bool isLoaded();

#define DECLARE_POINTER(name, returns, parameters) returns(*name) parameters = nullptr;
    ORVEX_POINTERS(DECLARE_POINTER)
#undef DECLARE_POINTER
    decltype(::orvexsim_plug) *plug;
    decltype(::orvexsim_unplug) *unplug;
    decltype(::orvexsim_set_rate) *setRate;
    decltype(::orvexsim_send) *send;

private:
    void *handle;
};

using Bytes = std::vector<unsigned char>;

/// A listener that keeps what it was called with.
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
    static void pnp(void *recorder);

    std::vector<Delivery> deliveries() const;
    std::size_t count() const;
    std::size_t notices() const;
    /// How often exactly these bytes came.
    int timesSeen(const Bytes &bytes) const;
    /// How often a report of this type whose bytes contain the text came.
    int timesSeen(int type, const char *text) const;

private:
    mutable std::mutex mutex;
    std::vector<Delivery> delivered;
    std::vector<std::thread::id> noticeThreads;
};
