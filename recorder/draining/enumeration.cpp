#include "enumeration.h"

#include <algorithm>

#include "bytes.h"

namespace recorder {

namespace {

constexpr std::size_t deviceIdOffset = 20; // of the device record

} // namespace

std::vector<Enumeration::Change> Enumeration::countReturned(std::int32_t count)
{
    pass.clear();
    passCount = count;
    return count == 0 ? endPass() : std::vector<Change>();
}

std::vector<Enumeration::Change> Enumeration::recordReturned(std::int32_t index, const std::string &record)
{
    std::vector<Change> changes;
    const bool continuesPass = index == static_cast<std::int32_t>(pass.size()) && index < passCount;
    if (record.empty() || !continuesPass)
        passCount = -1;
    if (record.empty())
        return changes;
    const auto board = capture::integerAt<std::int32_t>(capture::viewOf(record), deviceIdOffset);
    const bool isNew = known.count(board) == 0;
    known[board] = record;
    const auto told = places.find(index);
    if (isNew || told == places.end() || told->second != record)
        changes.push_back({false, board, index, record});
    places[index] = record;
    if (!continuesPass)
        return changes;
    pass.push_back(board);
    if (static_cast<std::int32_t>(pass.size()) == passCount) {
        const std::vector<Change> gone = endPass();
        changes.insert(changes.end(), gone.begin(), gone.end());
    }
    return changes;
}

std::vector<Enumeration::Change> Enumeration::reported(std::int32_t board)
{
    if (!known.try_emplace(board).second)
        return {};
    return {{false, board, -1, {}}};
}

std::vector<Enumeration::Change> Enumeration::endPass()
{
    std::vector<Change> changes;
    for (auto place = known.begin(); place != known.end();) {
        if (std::find(pass.begin(), pass.end(), place->first) != pass.end()) {
            ++place;
            continue;
        }
        changes.push_back({true, place->first, -1, place->second});
        place = known.erase(place);
    }
    places.erase(places.lower_bound(static_cast<std::int32_t>(pass.size())), places.end());
    passCount = -1;
    return changes;
}

} // namespace recorder
