#pragma once

/// What a test makes of the fake driver library: tells it which boards there are, and asks what it was told.
///
/// The library exports it under the name "fake_boards", as a function without parameters that returns a
/// pointer to this table. All functions may be called on any thread.
struct FakeBoards
{
    /// Forgets boards, results, registrations and call log.
    void (*reset)();
    /// The boards that are plugged in, by their ids; `count` of them.
    void (*setBoards)(const int *ids, int count);
    /// Index at which orvexEnumDeviceInfo fails; -1 for none.
    void (*setFailingIndex)(int index);
    /// What an entry point returns from now on; narrow results are cut to their width.
    void (*setResult)(const char *entryPoint, int result);

    /// Number of calls seen so far.
    int (*callCount)();
    /// The call `index` as text: the name, then the arguments in order, such as
    /// `orvexSendCommand(7, "A\r")`. Pointers are written as printf's %p does, numbers in decimal.
    /// Valid until the next call or clearCalls().
    const char *(*callText)(int index);
    void (*clearCalls)();

    /// The 840 bytes of the record as the call number `index` of orvexEnumDeviceInfo found it.
    const unsigned char *(*recordSeen)(int index);
    /// Where that call found it.
    const void *(*recordAddress)(int index);

    /// Number of data callbacks registered for a board; the same one with the same context counts once.
    int (*dataCallbackCount)(int device);
    int (*pnpCallbackCount)();
    /// Calls every data callback registered for a board once, on each of `threads` new threads at the same
    /// time, or on the caller's thread when that is 0. Returns when all are done.
    void (*deliver)(int device, const unsigned char *data, unsigned int length, int threads);
    /// Calls every plug-and-play callback once on a new thread. Returns when that is done.
    void (*plug)();

    /// Starts `threads` threads that deliver reports of all kinds for all boards, until stopFlood(). A report
    /// has 64 bytes: byte 2 is the number of the thread, bytes 4 to 7 count its turns in the machine's order.
    void (*startFlood)(int threads);
    /// Stops and joins them.
    /// \return the number of callbacks made
    long (*stopFlood)();

    /// Calls `observer` with the text of each call from now on, on the caller's thread and while the call is
    /// in progress; null for none.
    void (*setObserver)(void (*observer)(const char *call));
};

using FakeBoardsFunction = const FakeBoards *(*)();
