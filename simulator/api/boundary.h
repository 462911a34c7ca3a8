#pragma once

#define ORVEXSIM_EXPORT __attribute__((visibility("default")))

/// What `action()` returns, or `fallback()` when it throws: no exception may leave the library.
template <typename Fallback, typename Action>
auto guarded(Fallback fallback, Action action) noexcept -> decltype(fallback())
{
    try {
        return action();
    } catch (...) {
        return fallback();
    }
}
