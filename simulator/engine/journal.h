#pragma once

#include "orvexsim.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>

/// Bytes that stand in the journal in hexadecimal.
struct Hex
{
    const void *data;
    int length;
};

/// The calls of entry points, the last 4096 of them.
class Journal
{
public:
    template <typename... Arguments>
    void add(const char *function, const Arguments &...arguments)
    {
        std::string text = std::string(function) + '(';
        bool first = true;
        ((text += first ? "" : ", ", first = false, append(text, arguments)), ...);
        keep(text + ')');
    }

    std::uint64_t length() const;
    /// \return how many calls were written
    int read(std::uint64_t from, OrvexsimCall *calls, int capacity) const;

private:
    using Clock = std::chrono::steady_clock;

    static void append(std::string &text, int number);
    static void append(std::string &text, unsigned int number);
    static void append(std::string &text, const char *characters);
    static void append(std::string &text, const Hex &bytes);
    /// An address would differ from run to run: it is there, or it is null.
    static void append(std::string &text, const void *pointer);
    template <typename... Parameters>
    static void append(std::string &text, void (*function)(Parameters...))
    {
        text += function ? "callback" : "null";
    }
    void keep(const std::string &text);

    const Clock::time_point start = Clock::now();
    mutable std::mutex mutex; ///< of everything below
    std::uint64_t nextNumber = 0;
    std::deque<OrvexsimCall> calls;
};
