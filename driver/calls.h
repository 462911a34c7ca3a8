#pragma once

/// Reentrancy: when the library runs the event loop inside a call, its binding may be deleted there. The
/// library must stay loaded until the call has returned. GUI thread.
class CallInProgress
{
public:
    CallInProgress() { ++calls; }
    ~CallInProgress()
    {
        if (--calls == 0)
            closeLibraries();
    }

    CallInProgress(const CallInProgress &) = delete;
    CallInProgress &operator=(const CallInProgress &) = delete;

    /// Closes the library of a `dlopen` as soon as no call is in progress.
    static void closeAfterwards(void *library);

private:
    static void closeLibraries();

    static int calls;
};

/// Calls an entry point; a missing one does nothing.
template <typename... Parameters, typename... Arguments>
void call(void (*entryPoint)(Parameters...), Arguments... arguments)
{
    const CallInProgress inProgress;
    if (entryPoint)
        entryPoint(static_cast<Parameters>(arguments)...);
}

/// Calls an entry point; a missing one gives the fallback.
template <typename Result, typename... Parameters, typename... Arguments>
Result callOr(Result fallback, Result (*entryPoint)(Parameters...), Arguments... arguments)
{
    const CallInProgress inProgress;
    return entryPoint ? entryPoint(static_cast<Parameters>(arguments)...) : fallback;
}
