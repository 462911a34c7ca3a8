#pragma once

#include <QFile>
#include <QTemporaryDir>

#include "simulator/simulatedlibrary.h"
#include "tools/decoding/records.h"

/// A capture that is put together packet by packet, and the scenario that plays it.
class ReplayCapture
{
public:
    static constexpr quint64 startNs = 1'700'000'000'000'000'000;

    /// The packet after the one before, so many milliseconds behind the first.
    /// \return its sequence
    quint64 add(double ms, QByteArray packet);
    void report(double ms, int board, const char *hex, quint32 listener = 1)
    {
        add(ms, packetBytes(1, 1, 0, board, 0, QByteArray::fromHex(hex), listener));
    }
    void hotplug(double ms, quint32 listener = 9) { add(ms, packetBytes(4, 0, 0, 0, 0, {}, listener)); }
    /// A call and its return.
    void call(double ms, int call, int board, const QByteArray &arguments, int result,
              const QByteArray &filledIn = {}, int returnFlags = 3);
    /// Asks for the count and all records.
    void enumeration(double ms, const QList<int> &ids);
    /// The recorder has derived that a board was seen, or has gone.
    void seen(double ms, int board, int index);
    void gone(double ms, int board);

    static QByteArray deviceRecord(int id, char filling = 'x');

    QByteArray bytes() const { return blocks::section() + blocks::interface("driver") + packets.join(); }
    /// Written to a file of its own; its path.
    QByteArray file() const { return write("field.pcapng", bytes()); }
    /// A scenario in which the replay has more members, such as `"rate": 10`; its path.
    QByteArray scenario(const QByteArray &members) const;

    /// Writes a file beside the capture; its path.
    QByteArray write(const QString &name, const QByteArray &contents) const;

    QList<QByteArray> packets; ///< blocks
    quint32 session = 0x5f0c93a1;

private:
    QTemporaryDir folder;
    quint64 sequence = 0;
};

/// A scenario in which the replay begins paused; its path.
inline QByteArray paused(const ReplayCapture &capture)
{
    return capture.scenario("\"paused\": true");
}

/// Ten reports of two boards, 5 ms apart.
void addTen(ReplayCapture &capture);
/// As heard() has them.
extern const QList<QByteArray> ten;

/// The reports that a recorder got, such as "1001:04c801".
QList<QByteArray> heard(const Recorder &recorder);

/// Where the replay is.
OrvexsimReplay replayOf(const SimulatedLibrary &library);
/// Waits for its end.
bool ends(const SimulatedLibrary &library);

/// What the process prints on standard error meanwhile.
class StandardError
{
public:
    StandardError();
    ~StandardError();
    StandardError(const StandardError &) = delete;
    StandardError &operator=(const StandardError &) = delete;

    QByteArray text() const;

private:
    int file;
    int before;
};

/// Attached to a capture's or a scenario's replay, with a recorder as the callback of each board of the
/// start.
struct Playing
{
    explicit Playing(const QByteArray &path);

    void listen(int board) { library.orvexSetCallback(board, Recorder::data, &recorder); }
    /// Waits for so many reports.
    bool hears(std::size_t count) const;
    QList<int> ids() const;

    Recorder recorder; // it outlives the library
    SimulatedLibrary library;
};
