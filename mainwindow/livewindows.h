#pragma once

class qorvexgraph;

/// The windows that exist, in the whole process.
///
/// The driver library keeps the callbacks of a window for as long as it is loaded, so it may call them with a
/// window that is gone. Windows are built, destroyed and listed on the GUI thread; a callback on any other
/// thread holds off their destruction with a lock that the callbacks share.
namespace livewindows {

/// Lists a window. GUI thread; waits for the callbacks that are in progress on other threads.
void add(const qorvexgraph *window);
/// Takes a window off the list; afterwards no callback on another thread is at work on it. Nothing
/// happens to one that is not listed. GUI thread.
void remove(const qorvexgraph *window);

/// What a callback was registered with, kept from destruction while this lives. Any thread; not to be nested
/// on a thread other than the GUI thread.
class Guard
{
public:
    explicit Guard(void *context);
    ~Guard();

    Guard(const Guard &) = delete;
    Guard &operator=(const Guard &) = delete;

    /// Null when the window is gone.
    qorvexgraph *window() const { return listed; }

private:
    bool onForeignThread;
    qorvexgraph *listed = nullptr;
};

} // namespace livewindows
