#include "driver/fake/calllog.h"

#include <atomic>
#include <cstdio>
#include <deque>
#include <mutex>

namespace calllog {

namespace {

std::mutex mutex;
std::deque<std::string> calls; // which keeps its elements where they are
std::atomic<Observer> observerOfCalls{nullptr};

} // namespace

std::string text(const char *value)
{
    std::string result = "\"";
    for (const char *c = value; *c; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        char escaped[5];
        const bool isPlain = byte >= 32 && byte <= 126;
        const bool isQuoted = byte == '"' || byte == '\\';
        std::snprintf(escaped, sizeof escaped, isQuoted ? "\\%c" : isPlain ? "%c" : "\\x%02x", byte);
        result += escaped;
    }
    return result + '"';
}

std::string text(const void *value)
{
    char result[32];
    std::snprintf(result, sizeof result, "%p", value);
    return result;
}

void setObserver(Observer observer)
{
    observerOfCalls = observer;
}

void append(const std::string &call)
{
    {
        const std::lock_guard lock(mutex);
        calls.push_back(call);
    }
    // Without the lock: the observer may make the tool call in again.
    if (const Observer observer = observerOfCalls)
        observer(call.c_str());
}

int count()
{
    const std::lock_guard lock(mutex);
    return static_cast<int>(calls.size());
}

const char *at(int index)
{
    const std::lock_guard lock(mutex);
    return calls.at(static_cast<std::size_t>(index)).c_str();
}

void clear()
{
    const std::lock_guard lock(mutex);
    calls.clear();
}

} // namespace calllog
