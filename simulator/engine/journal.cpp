#include "journal.h"

#include "ctext.h"

#include <algorithm>
#include <iterator>
#include <unistd.h>

namespace {

constexpr std::size_t mostCalls = 4096;
constexpr int mostShown = 100; // bytes or characters: no more fit into the text of a call

constexpr char hexDigits[] = "0123456789abcdef";

void appendHex(std::string &text, unsigned char byte)
{
    text += hexDigits[byte / 16];
    text += hexDigits[byte % 16];
}

} // namespace

void Journal::append(std::string &text, int number)
{
    text += std::to_string(number);
}

void Journal::append(std::string &text, unsigned int number)
{
    text += std::to_string(number);
}

void Journal::append(std::string &text, const char *characters)
{
    if (!characters) {
        text += "null";
        return;
    }
    text += '"';
    for (int i = 0; i < mostShown && characters[i] != 0; ++i) {
        const char character = characters[i];
        if (character == '\r') {
            text += "\\r";
        } else if (character == '"' || character == '\\') {
            text += {'\\', character};
        } else if (character < ' ' || character > '~') {
            text += "\\x";
            appendHex(text, static_cast<unsigned char>(character));
        } else {
            text += character;
        }
    }
    text += '"';
}

void Journal::append(std::string &text, const Hex &bytes)
{
    const auto *data = static_cast<const unsigned char *>(bytes.data);
    if (!data) {
        text += "null";
        return;
    }
    for (int i = 0; i < std::min(bytes.length, mostShown); ++i)
        appendHex(text, data[i]);
}

void Journal::append(std::string &text, const void *pointer)
{
    text += pointer ? "pointer" : "null";
}

void Journal::keep(const std::string &text)
{
    const auto since = Clock::now() - start;
    const std::lock_guard lock(mutex);
    OrvexsimCall call{};
    call.number = nextNumber++;
    call.microseconds =
        static_cast<unsigned long long>(std::chrono::duration_cast<std::chrono::microseconds>(since).count());
    call.thread = static_cast<unsigned long long>(gettid());
    copyText(text, call.text, sizeof call.text);
    if (calls.size() == mostCalls)
        calls.pop_front();
    calls.push_back(call);
}

std::uint64_t Journal::length() const
{
    const std::lock_guard lock(mutex);
    return nextNumber;
}

int Journal::read(std::uint64_t from, OrvexsimCall *written, int capacity) const
{
    const std::lock_guard lock(mutex);
    const auto first = std::find_if(calls.begin(), calls.end(),
                                    [from](const OrvexsimCall &call) { return call.number >= from; });
    const auto count = std::min<std::ptrdiff_t>(calls.end() - first, std::max(capacity, 0));
    std::copy(first, first + count, written);
    return static_cast<int>(count);
}
