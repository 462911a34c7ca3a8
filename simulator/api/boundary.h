#pragma once

#include <string_view>

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

/// Copies text into a caller's buffer, truncated to fit and zero-terminated.
/// \param buffer may be null when `size` is 0
/// \return the length of the whole text
inline int copyText(std::string_view text, char *buffer, std::size_t size)
{
    if (buffer && size > 0)
        buffer[text.copy(buffer, size - 1)] = 0;
    return static_cast<int>(text.size());
}
