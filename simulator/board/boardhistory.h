#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "recordreader.h"

struct ReplayBoard
{
    std::int32_t id = 0;
    std::string record; ///< the library's device record; empty when it is unknown
};

/// Which boards there were in a capture, so that a host that asks sooner or later than the recorded one sees
/// the same. What an enumeration showed holds from the hot-plug notification before it, and what the first
/// showed from the start, unless something has told of boards before. Built packet by packet; then any thread
/// may look.
///
/// Positions are indexes of the entry that comes next.
class BoardHistory
{
public:
    struct Present
    {
        const ReplayBoard *board;
        bool isListed; ///< false: it has gone, and some of its reports are still to come
    };

    static constexpr std::size_t maxBoards = 256; ///< that are listed at once, and that have gone

    BoardHistory();

    /// Follows what tells of boards: reports, calls and returns of the enumeration, and boards seen or gone.
    void follow(const capture::Record &record, std::size_t position);
    /// A notification was entered before `position`.
    void notified(std::size_t position)
    {
        lastNotification = position;
        toldIndexes.clear();
    }
    bool hasTooMany() const { return tooMany; }
    /// The last packet has been followed.
    void finish();

    // After finish().

    std::vector<Present> at(std::size_t position) const;
    /// The next position behind this one at which something changes; SIZE_MAX when there is none.
    std::size_t changeAfter(std::size_t position) const;

private:
    using Boards = std::vector<const ReplayBoard *>;

    struct List
    {
        std::size_t from;
        Boards boards; ///< in the order of the enumeration
    };
    /// Reports that came behind the notification that their board was gone.
    struct Departure
    {
        const ReplayBoard *board;
        std::size_t from;
        std::size_t until;
    };
    /// An enumeration by one thread, as long as no record is missing.
    struct Pass
    {
        std::size_t origin = 0; ///< what it shows holds from there
        std::int32_t count = -1;
        Boards boards{};
    };

    std::size_t origin() const { return isTold ? lastNotification : 0; }
    void called(const capture::Record &record);
    void returned(const capture::Record &record, std::size_t position);
    void recordReturned(Pass &pass, std::int32_t index, const capture::Record &record, std::size_t position);
    void changed(const capture::Record &record, std::size_t position);
    void reported(std::int32_t id, std::size_t position);
    void add(const ReplayBoard *board, std::size_t place, std::size_t origin, std::size_t position);
    std::size_t placeOf(std::int32_t index) const;
    void remove(std::int32_t id, std::size_t position);
    void endPass(Pass &pass, std::size_t position);
    void put(std::size_t origin, std::size_t position, Boards boards);
    void addFromStart(std::int32_t id);
    const ReplayBoard *known(std::int32_t id, const std::string &record);
    bool hasTooManyDepartures() const;

    std::deque<ReplayBoard> boards; ///< each with each of its records
    std::map<std::pair<std::int32_t, std::string>, const ReplayBoard *> byRecord;
    std::vector<List> lists;            ///< in the order of `from`, of which the first is 0
    std::vector<Departure> departures;  ///< in the order of `from`
    std::vector<std::size_t> changes{}; ///< positions at which something changes, in order
    std::unordered_map<std::int32_t, std::size_t> lastDepartures; ///< indexes, by id
    std::unordered_map<std::int32_t, std::size_t> lastReports;
    std::unordered_map<std::int32_t, std::int32_t> toldIndexes; ///< since the last change, by id
    std::size_t lastNotification = 0;
    bool isTold = false;                  ///< which boards there are
    std::size_t settledOrigin = SIZE_MAX; ///< an enumeration has shown all that holds from there
    std::map<std::uint32_t, Pass> passes; ///< by thread
    std::map<std::uint32_t, std::int32_t> askedIndexes; ///< of open calls, by thread
    bool tooMany = false;
};
