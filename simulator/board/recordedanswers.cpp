#include "recordedanswers.h"

#include <algorithm>

namespace {

constexpr std::uint16_t openSynchronousChannelCall = 15; // a number of the format

std::string keyOf(unsigned call, std::string_view arguments)
{
    std::string key;
    capture::append(key, static_cast<std::uint16_t>(call));
    key += arguments;
    return key;
}

/// A call's arguments without its listener, whose number differs from run to run.
std::string_view argumentsOf(const capture::Record &record)
{
    const std::string_view all = record.payload.text();
    return record.header.call == openSynchronousChannelCall ? all.substr(0, 4) : all;
}

} // namespace

void RecordedAnswers::follow(const capture::Record &record, std::size_t position, std::int64_t timeNs)
{
    const capture::Header &header = record.header;
    if (header.kindOf() == capture::Kind::Call && !header.has(capture::PayloadCut)) {
        open[static_cast<std::uint32_t>(header.sequence)] = keyOf(header.call, argumentsOf(record));
    } else if (header.kindOf() == capture::Kind::Return) {
        const auto call = open.find(header.link);
        if (header.link == capture::lostLink || call == open.end())
            return;
        add(call->second,
            {position, timeNs, header.result, header.flags, std::string(record.payload.text())});
        open.erase(call);
    }
}

/// An answer that equals the one before it changes nothing.
void RecordedAnswers::add(const std::string &key, RecordedAnswer answer)
{
    std::vector<RecordedAnswer> &list = answers[key];
    const auto isSame = [&answer](const RecordedAnswer &other) {
        return other.result == answer.result && other.flags == answer.flags &&
               other.filledIn == answer.filledIn;
    };
    if (list.empty() || !isSame(list.back()))
        list.push_back(std::move(answer));
}

void RecordedAnswers::finish(const std::function<std::int64_t(std::int64_t recordedNs)> &playedNs)
{
    open.clear();
    for (auto &[key, list] : answers) {
        for (RecordedAnswer &answer : list)
            answer.timeNs = playedNs(answer.timeNs);
    }
}

const RecordedAnswer *RecordedAnswers::find(unsigned call, std::string_view arguments, std::size_t position,
                                            std::int64_t timeNs) const
{
    const auto list = answers.find(keyOf(call, arguments));
    if (list == answers.end())
        return nullptr;
    using Place = std::pair<std::size_t, std::int64_t>;
    const auto isBehind = [](const Place &place, const RecordedAnswer &one) {
        return place < Place(one.position, one.timeNs);
    };
    const auto behind =
        std::upper_bound(list->second.begin(), list->second.end(), Place(position, timeNs), isBehind);
    return behind == list->second.begin() ? &*behind : &*(behind - 1);
}
