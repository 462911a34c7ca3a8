#pragma once

#include "entrypoints.h"
#include "library.h"

/// The C boundary: what every exported function is made with.

#define ORVEXSIM_EXPORT __attribute__((visibility("default")))

#define DECLARE_ENTRY_POINT(name, returns, parameters, arguments)                                            \
    extern "C" ORVEXSIM_EXPORT returns name parameters;
#define NO_ENTRY_POINT(name, returns, parameters, arguments)
ORVEX_POINTERS(DECLARE_ENTRY_POINT, NO_ENTRY_POINT)
#undef DECLARE_ENTRY_POINT
#undef NO_ENTRY_POINT

namespace boundary {

/// What `action()` returns, or the fallback when it throws: no exception may leave the library.
template <typename Result, typename Action>
Result guarded(Result fallback, Action action) noexcept
{
    try {
        return action();
    } catch (...) {
        return fallback;
    }
}

template <typename Action>
void guarded(Action action) noexcept
{
    try {
        action();
    } catch (...) {
        return;
    }
}

/// `action(board)` for each board with this id.
template <typename Action>
void forBoards(int device, Action action) noexcept
{
    guarded([&] {
        for (const auto &board : Library::instance().boardsWith(device))
            action(*board);
    });
}

/// `action(board)` for each board with this id.
/// \return 0, or -1 when there is none
template <typename Action>
int tellBoards(int device, Action action) noexcept
{
    return guarded(-1, [&] {
        const auto boards = Library::instance().boardsWith(device);
        for (const auto &board : boards)
            action(*board);
        return boards.empty() ? -1 : 0;
    });
}

/// `question(board)` of the first board with this id, or the fallback when there is none.
template <typename Result, typename Question>
Result askBoard(int device, Result fallback, Question question) noexcept
{
    return guarded(fallback, [&]() -> Result {
        const auto boards = Library::instance().boardsWith(device);
        return boards.empty() ? fallback : question(*boards.front());
    });
}

/// Puts a call into the journal; every entry point does so first.
template <typename... Arguments>
void called(const char *function, const Arguments &...arguments) noexcept
{
    guarded([&] { Library::instance().journal.add(function, arguments...); });
}

template <typename Callback>
Listeners::Function asFunction(Callback callback)
{
    return reinterpret_cast<Listeners::Function>(callback);
}

} // namespace boundary
