#include "listenernumbers.h"

#include <atomic>
#include <cstddef>

namespace tap {

namespace {

constexpr std::size_t maxListeners = 256;
constexpr std::size_t minKept = 32; ///< no place is taken from one that has ended before so many are in use

constexpr std::uint64_t endedMark = std::uint64_t{1} << 32;
constexpr std::uint64_t isBeingFilled = std::uint64_t{1} << 33;

struct Place
{
    std::atomic<std::uint64_t> state; ///< number and `endedMark`; 0 is free, as all that follow it
    std::atomic<const void *> function;
    std::atomic<const void *> context;
};

Place places[maxListeners];
std::atomic<std::uint32_t> lastNumber{0};

std::uint32_t numberOf(std::uint64_t state)
{
    return static_cast<std::uint32_t>(state);
}

/// \param state what it was while it was this listener's
bool isOf(const Place &place, const void *function, const void *context, std::uint64_t state)
{
    return numberOf(state) != 0 && place.function.load() == function && place.context.load() == context &&
           numberOf(place.state.load()) == numberOf(state);
}

Place *find(const void *function, const void *context, std::uint64_t &state)
{
    for (Place &place : places) {
        state = place.state.load();
        if (state == 0)
            return nullptr;
        if (isOf(place, function, context, state))
            return &place;
    }
    return nullptr;
}

/// A free place, or that of the listener that was registered first among those that have ended.
Place *take()
{
    Place *oldest = nullptr;
    std::uint64_t oldestState = 0;
    std::size_t inUse = 0;
    for (; inUse < maxListeners; ++inUse) {
        const std::uint64_t state = places[inUse].state.load();
        if (state == 0)
            break;
        if ((state & endedMark) && (!oldest || state < oldestState)) {
            oldest = &places[inUse];
            oldestState = state;
        }
    }
    if (inUse >= minKept && oldest && oldest->state.compare_exchange_strong(oldestState, isBeingFilled))
        return oldest;
    for (; inUse < maxListeners; ++inUse) {
        std::uint64_t free = 0;
        if (places[inUse].state.compare_exchange_strong(free, isBeingFilled))
            return &places[inUse];
    }
    return nullptr;
}

} // namespace

std::uint32_t listenerNumber(const void *function, const void *context)
{
    if (!function)
        return 0;
    std::uint64_t state = 0;
    return find(function, context, state) ? numberOf(state) : unknownListener;
}

std::uint32_t addListener(const void *function, const void *context)
{
    if (!function)
        return 0;
    std::uint64_t state = 0;
    Place *place = find(function, context, state);
    if (place && !(state & endedMark))
        return numberOf(state);
    if (!place || !place->state.compare_exchange_strong(state, isBeingFilled))
        place = take();
    if (!place)
        return unknownListener;
    place->function.store(function);
    place->context.store(context);
    const std::uint32_t number = ++lastNumber;
    place->state.store(number);
    return number;
}

void endListener(const void *function, const void *context)
{
    std::uint64_t state = 0;
    if (Place *place = find(function, context, state))
        place->state.compare_exchange_strong(state, state | endedMark);
}

void endListeners()
{
    for (Place &place : places) {
        std::uint64_t state = place.state.load();
        if (numberOf(state) != 0)
            place.state.compare_exchange_strong(state, state | endedMark);
    }
}

} // namespace tap
