#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "entrypoints.h"
#include "library.h"
#include "payloads.h"

/// What calls returned when a capture was recorded, for a host that a replay is played to.
namespace recordedcalls {

/// Places in the order of the look-ups, from 1.
enum Number : std::uint16_t
{
    NoCall = 0,
#define ENUMERATOR(name) name##Call,
    ORVEX_LOOKUPS(ENUMERATOR)
#undef ENUMERATOR
};

// A call's arguments as they stand in a capture, without contexts and callbacks and without what is filled
// in.

template <typename Argument>
void addArgument(std::string &bytes, Argument argument)
{
    if constexpr (std::is_integral_v<Argument>)
        capture::append(bytes, static_cast<std::uint32_t>(static_cast<std::int64_t>(argument)));
    else if constexpr (std::is_same_v<Argument, const char *>)
        argument ? capture::appendText(bytes, argument) : capture::appendNullText(bytes);
}

inline void addBuffer(std::string &bytes, const void *data, std::size_t length)
{
    if (data)
        capture::appendText(bytes, {static_cast<const char *>(data), length});
    else
        capture::appendNullText(bytes);
}

template <typename... Arguments>
void addArguments(std::string &bytes, Arguments... arguments)
{
    (addArgument(bytes, arguments), ...);
}

/// orvexWritePacket
inline void addArguments(std::string &bytes, int device, const void *data, int length)
{
    addArgument(bytes, device);
    addBuffer(bytes, data, length > 0 ? static_cast<std::size_t>(length) : 0);
    addArgument(bytes, length);
}

/// orvexEcho and those like it
inline void addArguments(std::string &bytes, int device, std::uint8_t length, const unsigned char *data)
{
    addArgument(bytes, device);
    addArgument(bytes, length);
    addBuffer(bytes, data, length);
}

// What a call fills in.

template <typename Place>
void fill(capture::PayloadReader &reader, bool wasLeftOut, Place place)
{
    if constexpr (std::is_pointer_v<Place>) {
        using Value = std::remove_pointer_t<Place>;
        if constexpr (std::is_integral_v<Value> && !std::is_const_v<Value>) {
            const auto value = static_cast<Value>(reader.number<std::uint32_t>());
            if (place && reader.isWhole() && !(wasLeftOut && value == 0))
                *place = value;
        }
    }
}

template <typename... Arguments>
void fillIn(const RecordedAnswer &answer, Arguments... arguments)
{
    capture::PayloadReader reader(capture::viewOf(answer.filledIn));
    // A number that had no place stands there as 0.
    [[maybe_unused]] const bool wasLeftOut =
        (answer.flags & (capture::PointerWasNull | capture::NotRead)) != 0;
    (fill(reader, wasLeftOut, arguments), ...);
}

/// orvexReadSynchronousPacket
inline void fillIn(const RecordedAnswer &answer, int, int, void *buffer, int size, unsigned int)
{
    capture::PayloadReader reader(capture::viewOf(answer.filledIn));
    const auto bytes = reader.text();
    if (bytes && buffer && size > 0 && bytes->size > 0)
        std::memcpy(buffer, bytes->data, std::min(bytes->size, static_cast<std::size_t>(size)));
}

/// What the call returned near the place where the replay is, or `otherwise()`.
template <typename Returns, typename Otherwise, typename... Arguments>
Returns answer(Number call, Otherwise otherwise, Arguments... arguments)
{
    const auto player = Library::isReplaying() ? Library::instance().player() : nullptr;
    if (!player)
        return otherwise();
    std::string bytes;
    addArguments(bytes, arguments...);
    const auto recorded = player->answer(call, bytes);
    if (!recorded)
        return otherwise();
    fillIn(*recorded, arguments...);
    return static_cast<Returns>(recorded->result);
}

} // namespace recordedcalls
