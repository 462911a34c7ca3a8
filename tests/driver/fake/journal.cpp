#include "driver/fake/journal.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <vector>

namespace journal {

namespace {

std::mutex mutex;
std::vector<std::string> calls;
std::string handedOut;
std::atomic<Observer> observerOfCalls{nullptr};

} // namespace

std::string text(const char *value)
{
    std::string result = "\"";
    for (const char *c = value; *c; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        char escaped[5] = {};
        if (byte < 32 || byte > 126)
            std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
        else if (byte == '"' || byte == '\\')
            std::snprintf(escaped, sizeof escaped, "\\%c", byte);
        else
            escaped[0] = *c;
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
    handedOut = calls.at(static_cast<std::size_t>(index));
    return handedOut.c_str();
}

void clear()
{
    const std::lock_guard lock(mutex);
    calls.clear();
}

} // namespace journal
