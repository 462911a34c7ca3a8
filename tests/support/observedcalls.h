#pragma once

#include <functional>

#include "support/driverlibrary.h"

/// Does something inside the calls that the fake driver library receives, while it lives; one at a time.
///
///   const ObservedCalls observed(library, [&](const QString &call) { if (call == "orvexDetach()") ... });
class ObservedCalls
{
public:
    using Function = std::function<void(const QString &call)>;

    ObservedCalls(const DriverLibrary &library, Function function)
        : boards(library.operator->())
    {
        current() = std::move(function);
        boards->setObserver([](const char *call) { current()(QString::fromLatin1(call)); });
    }
    ~ObservedCalls() { boards->setObserver(nullptr); }

    ObservedCalls(const ObservedCalls &) = delete;
    ObservedCalls &operator=(const ObservedCalls &) = delete;

private:
    static Function &current()
    {
        static Function function;
        return function;
    }

    const FakeBoards *boards;
};
