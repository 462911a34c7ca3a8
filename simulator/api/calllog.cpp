#include "calllog.h"

#include <algorithm>
#include <unistd.h>

#include "boundary.h"

namespace {

constexpr std::size_t maxCalls = 4096;

std::string escaped(char character)
{
    constexpr char hexDigits[] = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    if (character == '\r')
        return "\\r";
    if (character == '"' || character == '\\')
        return {'\\', character};
    if (character < ' ' || character > '~')
        return {'\\', 'x', hexDigits[byte / 16], hexDigits[byte % 16]};
    return {character};
}

} // namespace

CallLog &CallLog::instance()
{
    static CallLog log;
    return log;
}

std::string CallLog::text(const char *characters)
{
    if (!characters)
        return "null";
    std::string shown = "\"";
    for (; *characters; ++characters)
        shown += escaped(*characters);
    return shown + '"';
}

void CallLog::add(const std::string &text)
{
    const auto since = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
    const std::lock_guard lock(mutex);
    OrvexsimCall call{nextNumber++,
                      static_cast<unsigned long long>(since.count()),
                      static_cast<unsigned long long>(gettid()),
                      {}};
    copyText(text, call.text, sizeof call.text);
    if (calls.size() == maxCalls)
        calls.pop_front();
    calls.push_back(call);
}

unsigned long long CallLog::length() const
{
    const std::lock_guard lock(mutex);
    return nextNumber;
}

int CallLog::read(unsigned long long from, OrvexsimCall *written, int capacity) const
{
    const std::lock_guard lock(mutex);
    const auto first = std::find_if(calls.begin(), calls.end(),
                                    [from](const OrvexsimCall &call) { return call.number >= from; });
    const auto count = std::min<std::ptrdiff_t>(calls.end() - first, std::max(capacity, 0));
    std::copy(first, first + count, written);
    return static_cast<int>(count);
}
