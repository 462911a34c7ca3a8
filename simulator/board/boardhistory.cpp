#include "boardhistory.h"

#include <algorithm>

#include "payloads.h"

namespace {

constexpr std::uint16_t getDeviceCountCall = 9; // numbers of the format
constexpr std::uint16_t enumDeviceInfoCall = 10;
constexpr std::size_t deviceIdOffset = 20; // of the device record

template <typename Boards>
auto findId(const Boards &boards, std::int32_t id)
{
    return std::find_if(boards.begin(), boards.end(), [id](const auto *board) { return board->id == id; });
}

} // namespace

BoardHistory::BoardHistory()
    : lists{{0, {}}}
{
}

void BoardHistory::follow(const capture::Record &record, std::size_t position)
{
    const capture::Header &header = record.header;
    switch (header.kindOf()) {
    case capture::Kind::Report:
        reported(header.board, position);
        break;
    case capture::Kind::Call:
        called(record);
        break;
    case capture::Kind::Return:
        returned(record, position);
        break;
    case capture::Kind::Board:
        changed(record, position);
        break;
    default:
        break;
    }
}

void BoardHistory::called(const capture::Record &record)
{
    const std::uint32_t thread = record.header.thread;
    if (record.header.call == getDeviceCountCall)
        passes[thread].origin = origin();
    else if (record.header.call == enumDeviceInfoCall)
        askedIndexes[thread] = capture::integerAt<std::int32_t>(record.payload, 0);
}

void BoardHistory::returned(const capture::Record &record, std::size_t position)
{
    const std::uint32_t thread = record.header.thread;
    if (record.header.call == getDeviceCountCall) {
        Pass &pass = passes.try_emplace(thread, Pass{origin()}).first->second;
        pass.count = record.header.result;
        pass.boards.clear();
        endPass(pass, position);
    } else if (record.header.call == enumDeviceInfoCall) {
        Pass &pass = passes.try_emplace(thread, Pass{origin()}).first->second;
        const auto asked = askedIndexes.find(thread);
        recordReturned(pass, asked == askedIndexes.end() ? -1 : asked->second, record, position);
    }
}

void BoardHistory::recordReturned(Pass &pass, std::int32_t index, const capture::Record &record,
                                  std::size_t position)
{
    const bool continuesPass = index == static_cast<std::int32_t>(pass.boards.size()) && index < pass.count;
    const bool isKnown = record.header.result != 0 && record.payload.size >= deviceIdOffset + 4;
    if (!isKnown || !continuesPass)
        pass.count = -1;
    if (!isKnown)
        return;
    const auto *board = known(capture::integerAt<std::int32_t>(record.payload, deviceIdOffset),
                              std::string(record.payload.text()));
    add(board, SIZE_MAX, pass.origin, position);
    if (!continuesPass)
        return;
    pass.boards.push_back(board);
    endPass(pass, position);
}

/// Takes over what a pass has shown, once it is complete.
void BoardHistory::endPass(Pass &pass, std::size_t position)
{
    if (pass.count != static_cast<std::int32_t>(pass.boards.size()))
        return;
    pass.count = -1;
    put(pass.origin, position, pass.boards);
    settledOrigin = pass.origin;
    isTold = true;
}

/// The recorder tells of a board when it is seen for the first time, also where the enumeration itself was
/// cut out of the file.
void BoardHistory::changed(const capture::Record &record, std::size_t position)
{
    const auto change = capture::boardChangeOf(record.payload);
    if (!change)
        return;
    const std::int32_t id = record.header.board;
    if (change->state == capture::BoardState::Gone) {
        remove(id, position);
    } else if (change->index >= 0) { // otherwise a report follows
        add(known(id, std::string(change->record.text())), placeOf(change->index), origin(), position);
        toldIndexes[id] = change->index;
    }
    isTold = true;
}

/// Boards are told of in any order.
/// \return index in the list as it is now
std::size_t BoardHistory::placeOf(std::int32_t index) const
{
    const auto isBehind = [&](const ReplayBoard *board) {
        const auto told = toldIndexes.find(board->id);
        return told != toldIndexes.end() && told->second > index;
    };
    const Boards &now = lists.back().boards;
    const auto place = std::find_if(now.begin(), now.end(), isBehind) - now.begin();
    return std::min(static_cast<std::size_t>(place), static_cast<std::size_t>(index));
}

void BoardHistory::reported(std::int32_t id, std::size_t position)
{
    isTold = true; // the first enumeration was cut out
    lastReports[id] = position;
    const Boards &now = lists.back().boards;
    if (findId(now, id) != now.end())
        return;
    const auto gone = lastDepartures.find(id);
    if (gone == lastDepartures.end())
        addFromStart(id);
    else
        departures[gone->second].until = position + 1;
}

/// \param place index that it gets at most
void BoardHistory::add(const ReplayBoard *board, std::size_t place, std::size_t origin, std::size_t position)
{
    Boards now = lists.back().boards;
    if (findId(now, board->id) != now.end())
        return;
    now.insert(now.begin() + static_cast<std::ptrdiff_t>(std::min(place, now.size())), board);
    put(origin, position, std::move(now));
}

void BoardHistory::remove(std::int32_t id, std::size_t position)
{
    if (findId(lists.back().boards, id) == lists.back().boards.end()) {
        if (lastDepartures.count(id) > 0)
            return;
        addFromStart(id);
    }
    toldIndexes.clear();
    Boards now = lists.back().boards;
    now.erase(std::remove_if(now.begin(), now.end(), [id](const auto *board) { return board->id == id; }),
              now.end());
    put(lastNotification, position, std::move(now));
}

/// \param position of what was learned; it holds from the notification before it, unless that is known to
///        have been otherwise
void BoardHistory::put(std::size_t origin, std::size_t position, Boards now)
{
    List &last = lists.back();
    if (now == last.boards)
        return;
    tooMany = tooMany || now.size() > maxBoards;
    const std::size_t from = std::max(settledOrigin == origin ? position : origin, last.from);
    for (const ReplayBoard *board : last.boards) {
        if (findId(now, board->id) != now.end())
            continue;
        const auto report = lastReports.find(board->id);
        lastDepartures[board->id] = departures.size();
        departures.push_back({board, from, report == lastReports.end() ? from : report->second + 1});
    }
    if (last.from == from)
        last.boards = std::move(now);
    else
        lists.push_back({from, std::move(now)});
}

/// A board of which nothing is told but that it reported, or that it is gone.
void BoardHistory::addFromStart(std::int32_t id)
{
    const ReplayBoard *board = known(id, {});
    for (List &list : lists) {
        if (findId(list.boards, id) == list.boards.end())
            list.boards.push_back(board);
        tooMany = tooMany || list.boards.size() > maxBoards;
    }
}

const ReplayBoard *BoardHistory::known(std::int32_t id, const std::string &record)
{
    const auto [place, isNew] = byRecord.try_emplace({id, record}, nullptr);
    if (isNew) {
        boards.push_back({id, record});
        place->second = &boards.back();
    }
    return place->second;
}

/// Most boards that go have no reports to come.
void BoardHistory::finish()
{
    const auto isEmpty = [](const Departure &gone) { return gone.until <= gone.from; };
    departures.erase(std::remove_if(departures.begin(), departures.end(), isEmpty), departures.end());
    tooMany = tooMany || hasTooManyDepartures();
    for (const Departure &gone : departures)
        changes.push_back(gone.until);
    for (const List &list : lists)
        changes.push_back(list.from);
    std::sort(changes.begin(), changes.end());
}

bool BoardHistory::hasTooManyDepartures() const
{
    std::vector<std::size_t> ends; // of those that are open
    for (const Departure &gone : departures) {
        const auto isOver = [&gone](std::size_t until) { return until <= gone.from; };
        ends.erase(std::remove_if(ends.begin(), ends.end(), isOver), ends.end());
        ends.push_back(gone.until);
        if (ends.size() > maxBoards)
            return true;
    }
    return false;
}

std::vector<BoardHistory::Present> BoardHistory::at(std::size_t position) const
{
    const auto isBehind = [](std::size_t wanted, const List &list) { return wanted < list.from; };
    const auto list = std::upper_bound(lists.begin(), lists.end(), position, isBehind) - 1;
    std::vector<Present> present;
    for (const ReplayBoard *board : list->boards)
        present.push_back({board, true});
    for (auto gone = departures.rbegin(); gone != departures.rend(); ++gone) {
        const auto isIt = [&gone](const Present &one) { return one.board->id == gone->board->id; };
        const bool isOpen = gone->from <= position && position < gone->until;
        if (isOpen && std::none_of(present.begin(), present.end(), isIt))
            present.push_back({gone->board, false});
    }
    return present;
}

std::size_t BoardHistory::changeAfter(std::size_t position) const
{
    const auto next = std::upper_bound(changes.begin(), changes.end(), position);
    return next == changes.end() ? SIZE_MAX : *next;
}
