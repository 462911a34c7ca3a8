#include "times.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>

#include "payloads.h"

namespace decoding {

namespace {

constexpr std::uint64_t nsPerSecond = 1'000'000'000;

std::string seconds(std::uint64_t ns)
{
    constexpr std::size_t places = 9;
    char text[32];
    // The first digit of the thousand million is the point's place, and keeps the zeros behind it.
    char *point = std::to_chars(text, std::end(text), ns / nsPerSecond).ptr;
    std::to_chars(point, std::end(text), nsPerSecond + ns % nsPerSecond);
    *point = '.';
    return {text, point + 1 + places};
}

std::string difference(std::uint64_t from, std::uint64_t to)
{
    return to >= from ? seconds(to - from) : '-' + seconds(from - to);
}

std::string date(std::uint64_t ns, std::int32_t offsetSeconds, bool isUtc)
{
    const auto time = static_cast<std::time_t>(ns / nsPerSecond) + offsetSeconds;
    std::tm parts{};
    gmtime_r(&time, &parts);
    char text[64];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
    char rest[32];
    const int minutes = std::abs(offsetSeconds) / 60;
    if (isUtc)
        std::snprintf(rest, sizeof rest, ".%09lluZ", static_cast<unsigned long long>(ns % nsPerSecond));
    else
        std::snprintf(rest, sizeof rest, ".%09llu%c%02d:%02d",
                      static_cast<unsigned long long>(ns % nsPerSecond), offsetSeconds < 0 ? '-' : '+',
                      minutes / 60, minutes % 60);
    return std::string(text, length) + rest;
}

} // namespace

std::string utcText(std::uint64_t ns)
{
    return date(ns, 0, true);
}

void Times::follow(const capture::Record &record)
{
    if (!first)
        first = record.timeNs;
    if (record.header.kindOf() != capture::Kind::Status)
        return;
    if (const auto status = capture::statusOf(record.payload))
        clocks[record.header.session] = {static_cast<std::int64_t>(status->realNs - record.timeNs),
                                         status->localOffsetSeconds};
}

/// Before a session's first status, the stamps' and UTC.
Times::Clock Times::clockOf(const capture::Record &record) const
{
    const auto found = clocks.find(record.header.session);
    return found == clocks.end() ? Clock{} : found->second;
}

double Times::secondsOf(const capture::Record &record) const
{
    return static_cast<double>(static_cast<std::int64_t>(record.timeNs - first.value_or(0))) / 1e9;
}

int Times::timeOfDayMs(const capture::Record &record) const
{
    constexpr std::int64_t msPerDay = 86'400'000;
    const Clock clock = clockOf(record);
    const std::uint64_t wallNs = record.timeNs + static_cast<std::uint64_t>(clock.wallOffsetNs);
    const auto wallMs = static_cast<std::int64_t>(wallNs / 1'000'000);
    const std::int64_t ms = (wallMs + 1000 * std::int64_t{clock.localOffsetSeconds}) % msPerDay;
    return static_cast<int>(ms < 0 ? ms + msPerDay : ms);
}

std::string Times::textOf(const capture::Record &record)
{
    const std::uint64_t before = lastShown.value_or(record.timeNs);
    lastShown = record.timeNs;
    const Clock clock = clockOf(record);
    const std::uint64_t wall = record.timeNs + static_cast<std::uint64_t>(clock.wallOffsetNs);
    switch (style) {
    case TimeStyle::Relative:
        return difference(first.value_or(record.timeNs), record.timeNs);
    case TimeStyle::Delta:
        return difference(before, record.timeNs);
    case TimeStyle::Utc:
        return utcText(wall);
    case TimeStyle::Local:
        return date(wall, clock.localOffsetSeconds, false);
    case TimeStyle::Epoch:
        break;
    }
    return seconds(record.timeNs);
}

} // namespace decoding
