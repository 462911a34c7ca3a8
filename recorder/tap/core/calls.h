#pragma once

#include <cerrno>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "argumentbytes.h"
#include "entrypoints.h"
#include "header.h"
#include "session.h"

namespace tap {

/// Places in the order of the look-ups, from 1.
enum CallNumber : std::uint16_t
{
    NoCall = 0,
#define ENUMERATOR(name) name##Call,
    ORVEX_LOOKUPS(ENUMERATOR)
#undef ENUMERATOR
};

/// The type by which what is special about a call is found.
template <CallNumber Number>
struct Call
{
};

// What a call tells of its arguments, and its return of what was filled in. Special ones are overloads in
// forwarders.cpp, which change an argument where another is forwarded.

/// What was seen of a call's arguments before it was made.
struct Described
{
    std::uint8_t flags = 0;
    bool mayRead = true; ///< what the call fills in
};

template <CallNumber Number, typename... Arguments>
Described describeCall(Call<Number>, ArgumentBytes &bytes, Arguments &...arguments)
{
    (bytes.add(arguments), ...);
    return {};
}

/// \return the flags of the return
template <CallNumber Number, typename... Arguments>
std::uint8_t describeReturn(Call<Number>, ArgumentBytes &, Described, std::int32_t /*result*/,
                            const Arguments &...)
{
    return 0;
}

struct CallInfo
{
    CallNumber number;
    bool hasBoard; ///< the first argument names one
    std::int32_t board;
};

/// \return the crossing
ring::Put putCall(ring::Control &control, const CallInfo &call, std::uint8_t flags,
                  const ArgumentBytes &bytes);
void putReturn(ring::Control &control, const CallInfo &call, unsigned flags, std::int32_t result,
               ring::Put called, const ArgumentBytes &bytes);

constexpr bool beginsWithDevice(std::string_view arguments)
{
    return arguments.substr(0, 7) == "(device";
}

template <typename First, typename... Others>
std::int32_t firstOf(First first, Others...)
{
    if constexpr (std::is_integral_v<First>)
        return static_cast<std::int32_t>(first);
    else
        return 0;
}

inline std::int32_t firstOf()
{
    return 0;
}

/// Device 0 stands for no board where hot-plug callbacks are removed.
template <CallNumber Number>
constexpr bool isForHotplug(std::int32_t device)
{
    return Number == orvexClearCallbackCall && device == 0;
}

/// Records a call, makes it, and records its return. `errno` is what the real call leaves.
template <CallNumber Number, bool HasBoard, typename Result, typename... Parameters>
struct Forwarder
{
    Result (*call)(Parameters...);

    Result operator()(Parameters... arguments) const
    {
        ring::Control *control = recording();
        const std::int32_t board = firstOf(arguments...);
        const CallInfo info{Number, HasBoard && !isForHotplug<Number>(board), board};
        const int errorBefore = errno;
        ArgumentBytes bytes(control);
        const Described described = describeCall(Call<Number>(), bytes, arguments...);
        ring::Put called{};
        if (control)
            called = putCall(*control, info, described.flags, bytes);
        errno = errorBefore;

        ++callDepth();
        const auto finish = [&](std::int32_t result, std::uint8_t resultFlag) {
            const int error = errno;
            --callDepth();
            // Not in a child that was forked off within the call.
            const bool isRecorded = control && control == recording();
            ArgumentBytes filledIn(isRecorded);
            const std::uint8_t flags =
                describeReturn(Call<Number>(), filledIn, described, result, arguments...);
            if (isRecorded)
                putReturn(*control, info, flags | resultFlag, result, called, filledIn);
            errno = error;
        };
        if constexpr (std::is_void_v<Result>) {
            call(arguments...);
            finish(0, 0);
        } else {
            const Result result = call(arguments...);
            finish(static_cast<std::int32_t>(result), capture::ResultIsValid);
            return result;
        }
    }
};

template <CallNumber Number, bool HasBoard, typename Result, typename... Parameters>
Forwarder<Number, HasBoard, Result, Parameters...> forwardTo(Result (*call)(Parameters...))
{
    return {call};
}

} // namespace tap
