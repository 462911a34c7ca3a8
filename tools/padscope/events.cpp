#include "events.h"

#include <algorithm>

#include "layoutnames.h"
#include "options.h"
#include "payloads.h"
#include "signatures.h"

namespace padscope {

namespace {

/// "call:orvexAttach" in two.
struct EventName
{
    explicit EventName(const std::string &text)
        : kind(text.substr(0, text.find(':')))
        , name(text.substr(std::min(kind.size() + 1, text.size())))
        , hasName(text.size() > kind.size())
    {
    }

    std::string kind;
    std::string name;
    bool hasName;
};

std::vector<std::string> callNames()
{
    std::vector<std::string> names;
    for (unsigned call = 1; call <= signatures::callCount; ++call)
        names.push_back(signatures::signatureOf(call)->name);
    return names;
}

IsEvent isMark()
{
    return [](const capture::Header &header, capture::ByteView) {
        return header.kindOf() == capture::Kind::Mark;
    };
}

/// Of an unknown end the status of the host is known, which may be a wrapper that tells of the signal.
bool isOfSignal(const capture::End &end)
{
    constexpr int signalStatus = 128;
    constexpr int maxSignal = 64;
    if (end.reason == capture::EndReason::Unknown)
        return end.value > signalStatus && end.value <= signalStatus + maxSignal;
    return end.reason == capture::EndReason::Signal;
}

/// One that has ended the host, or has set a mark.
IsEvent isSignal()
{
    return [](const capture::Header &header, capture::ByteView payload) {
        if (header.kindOf() == capture::Kind::Mark)
            return header.has(capture::ResultIsValid);
        const auto end = header.kindOf() == capture::Kind::End ? capture::endOf(payload) : std::nullopt;
        return end && isOfSignal(*end);
    };
}

IsEvent isCallOf(const std::string &name)
{
    const std::vector<std::string> names = callNames();
    const auto number = std::find(names.begin(), names.end(), name) - names.begin() + 1;
    return [number](const capture::Header &header, capture::ByteView) {
        return header.kindOf() == capture::Kind::Call && header.call == number;
    };
}

IsEvent isReportOf(const std::string &type)
{
    return [type](const capture::Header &header, capture::ByteView payload) {
        capture::Record record;
        record.header = header;
        record.payload = payload;
        return header.kindOf() == capture::Kind::Report && decoding::isOfType(record, type);
    };
}

IsEvent isEventOf(const EventName &event)
{
    if (event.kind == "mark")
        return isMark();
    if (event.kind == "signal")
        return isSignal();
    return event.kind == "call" ? isCallOf(event.name) : isReportOf(event.name);
}

} // namespace

CLI::Validator eventName()
{
    const auto check = [](const std::string &text) -> std::string {
        const EventName event(text);
        const bool isPlain = event.kind == "mark" || event.kind == "signal";
        if (isPlain && !event.hasName)
            return {};
        if (event.kind == "call" || event.kind == "type") {
            std::string name = event.name;
            return oneOf(event.kind == "call" ? callNames() : decoding::typeNames())(name);
        }
        return text + " is none of mark, signal, call:NAME, type:NAME";
    };
    return {check, ""};
}

IsEvent isAnyOf(const std::vector<std::string> &names)
{
    std::vector<IsEvent> events(names.size());
    std::transform(names.begin(), names.end(), events.begin(),
                   [](const std::string &name) { return isEventOf(EventName(name)); });
    return [events](const capture::Header &header, capture::ByteView payload) {
        return std::any_of(events.begin(), events.end(),
                           [&](const IsEvent &isEvent) { return isEvent(header, payload); });
    };
}

} // namespace padscope
