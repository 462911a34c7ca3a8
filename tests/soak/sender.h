#pragma once

#include "orvexsim.h"

#include <atomic>
#include <thread>

/// Sends signal reports, each with other values than the one before, as those of a simulated board: so many a
/// second, on a thread of its own, while it lives.
class Sender
{
public:
    /// \param send orvexsim_send of the loaded library
    Sender(decltype(&orvexsim_send) send, int board, int perSecond);
    ~Sender();

private:
    void run(decltype(&orvexsim_send) send, int board, int perSecond);

    std::atomic<bool> stopping_{false};
    std::thread thread_;
};
