#pragma once

class qorvexgraph;

/// The windows that exist, in the whole process.
///
/// The driver library keeps the callbacks of a window for as long as it is loaded, so it may call them with a
/// window that is gone. No lock is held while a callback runs: it is counted, and the destructor of its
/// window waits for it.
namespace livewindows {

struct Entry;

/// Adds a window to the list. Waits for no callback. GUI thread, the one that will remove it.
void add(const qorvexgraph *window);

/// Takes a window off the list and waits for its callbacks in progress on other threads. Does nothing for a
/// window that is not listed. GUI thread.
///
/// Once all of them have reached their signal, it waits for at most a second: a slot of the host may itself
/// wait for the GUI thread, and QObject allows the destruction of a sender while one of its slots runs.
void remove(const qorvexgraph *window);

/// Keeps a callback's window alive while in scope. Any thread; may be nested.
class Guard
{
public:
    explicit Guard(void *context);
    ~Guard();

    Guard(const Guard &) = delete;
    Guard &operator=(const Guard &) = delete;

    /// Null when the window is gone.
    qorvexgraph *window() const { return listed; }

    /// To be called once, right before the window's signal is emitted.
    void beforeSignal();

private:
    qorvexgraph *listed = nullptr;
    Entry *counted = nullptr; ///< null on the GUI thread, which can't wait for itself
    bool isSignalling = false;
};

} // namespace livewindows
