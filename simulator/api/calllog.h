#pragma once

#include <chrono>
#include <deque>
#include <mutex>
#include <string>

#include "orvexsim.h"

/// The last 4096 calls of entry points. Any thread.
class CallLog
{
public:
    static CallLog &instance();

    /// Logs a call when the result is called with its arguments: `call("orvexSetXferMask")(1001, 255)`.
    auto call(const char *function)
    {
        return [this, function](const auto &...arguments) {
            std::string list;
            ((list += (list.empty() ? "" : ", ") + text(arguments)), ...);
            add(function + ('(' + list + ')'));
        };
    }

    unsigned long long length() const;
    /// The calls from this number on, oldest first.
    /// \return how many were written
    int read(unsigned long long from, OrvexsimCall *written, int capacity) const;

private:
    using Clock = std::chrono::steady_clock;

    static std::string text(int number) { return std::to_string(number); }
    static std::string text(unsigned int number) { return std::to_string(number); }
    /// In double quotes, with escapes for what is not printable.
    static std::string text(const char *characters);
    /// An address would differ from run to run.
    static std::string text(const void *pointer) { return pointer ? "pointer" : "null"; }
    template <typename... Parameters>
    static std::string text(void (*function)(Parameters...))
    {
        return function ? "callback" : "null";
    }
    void add(const std::string &text);

    const Clock::time_point start = Clock::now();
    mutable std::mutex mutex; ///< of everything below
    unsigned long long nextNumber = 0;
    std::deque<OrvexsimCall> calls;
};
