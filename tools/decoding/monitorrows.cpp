#include "monitorrows.h"

#include <algorithm>
#include <utility>

#include "checksum.h"
#include "decoding.h"
#include "english.h"
#include "payloads.h"
#include "signatures.h"

namespace decoding {

namespace {

constexpr int firstLimitMs = 50; ///< until the Monitor's own is known, behind the first report that it shows
constexpr std::uint64_t nsPerMs = 1'000'000;
constexpr std::uint32_t closingDebugMode = 1; ///< with which the tool begins to detach
constexpr std::uint32_t everyDebugBit = 0xFFFFFFFF;

unsigned callNamed(const char *name)
{
    for (unsigned call = 1; call <= signatures::callCount; ++call) {
        if (signatures::signatureOf(call)->name == name)
            return call;
    }
    return 0;
}

/// Whether a thread did or got it, and was in no call of the library.
bool isOutsideCalls(const capture::Record &record)
{
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
    case capture::Kind::Call:
    case capture::Kind::Return:
    case capture::Kind::Hotplug:
        return !record.header.has(capture::WithinCall);
    default:
        return false;
    }
}

bool isClosingDebugMode(capture::ByteView payload)
{
    return capture::integerAt<std::uint32_t>(payload, 4) == closingDebugMode &&
           capture::integerAt<std::uint32_t>(payload, 8) == everyDebugBit;
}

/// When the Monitor's timer fires, in milliseconds of the monotonic clock. Qt rounds such a timer to a whole
/// second or a tenth of it, by a twentieth of its time at most, so that timers fire together.
std::uint64_t timerEnd(std::uint64_t startMs)
{
    constexpr std::uint64_t second = 1000;
    constexpr std::uint64_t tenth = second / 10;
    constexpr std::uint64_t most = reports::lineFlushDelayMs / 20;
    static_assert(reports::lineFlushDelayMs == 300, "other times are rounded to other parts of a second");
    const std::uint64_t exact = startMs + reports::lineFlushDelayMs;
    const std::uint64_t ms = exact % second;
    const std::uint64_t base = ms / tenth * tenth;
    if (ms <= most)
        return exact - ms;
    if (ms + most >= second)
        return exact - ms + second;
    if (ms < base + tenth / 2)
        return exact - ms + std::max(base, ms - most);
    return exact - ms + std::min(base + tenth, ms + most);
}

/// \param text UTF-8 of characters up to U+00FF
void appendLatin1(std::string &line, const std::string &text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80 || i + 1 == text.size())
            line += text[i];
        else
            line += static_cast<char>((byte << 6) | (static_cast<unsigned char>(text[++i]) & 0x3F));
    }
}

bool isEndOfSession(const capture::Record &record)
{
    const bool isEnd = record.header.kindOf() == capture::Kind::End;
    const auto end = isEnd ? capture::endOf(record.payload) : std::nullopt;
    return isEnd && !(end && end->reason == capture::EndReason::Slice);
}

} // namespace

void MonitorRows::follow(const capture::Record &record, Lines &lines)
{
    if (record.header.kindOf() == capture::Kind::Status) {
        if (const auto status = capture::statusOf(record.payload))
            monotonicOffsetNs = status->monotonicNs - record.timeNs;
    }
    followThread(record, lines);
    if (!isWithinCall && !pendingText.empty() && record.timeNs >= flushStampNs)
        flushText(lines);
    hasEnded = isEndOfSession(record);
    if (record.header.call != 0)
        followCall(record);
}

/// What is delivered while the tool's thread is within a call is shown once it has returned.
void MonitorRows::followThread(const capture::Record &record, Lines &lines)
{
    if (!isWithinCall || record.header.thread != toolThread || !isOutsideCalls(record))
        return;
    isWithinCall = false;
    if (std::exchange(hasKeptInCall, false) && intake == Intake::Shown)
        displayKept(record.timeNs, lines);
}

/// The tool's calls tell whether it takes reports.
void MonitorRows::followCall(const capture::Record &record)
{
    static const unsigned attach = callNamed("orvexAttach");
    static const unsigned detach = callNamed("orvexDetach");
    static const unsigned setDebugMode = callNamed("orvexSetDriverDebugMode");
    const bool isCall = record.header.kindOf() == capture::Kind::Call;
    const unsigned number = record.header.call;
    if (number == attach && isCall) {
        intake = Intake::Shown;
        toolThread = record.header.thread;
    } else if (number == detach)
        intake = isCall ? Intake::Kept : Intake::Dropped;
    else if (number == setDebugMode && isCall && isClosingDebugMode(record.payload) &&
             intake == Intake::Shown)
        intake = Intake::Kept;
    isWithinCall = isWithinCall || (isCall && record.header.thread == toolThread);
}

void MonitorRows::show(const capture::Record &record, int timeOfDayMs, bool isWanted, Lines &lines)
{
    if (intake == Intake::Dropped || comesTooSoon({record.payload.data, record.payload.size}, timeOfDayMs))
        return;
    if (intake == Intake::Kept || isWithinCall) {
        hasKeptInCall = isWithinCall;
        kept.push_back({std::string(record.payload.text()), timeOfDayMs, isWanted});
        return;
    }
    displayKept(record.timeNs, lines);
    display({record.payload, timeOfDayMs, isWanted}, record.timeNs, lines);
}

void MonitorRows::displayKept(std::uint64_t stampNs, Lines &lines)
{
    for (const KeptReport &earlier : std::exchange(kept, {}))
        display({capture::viewOf(earlier.bytes), earlier.timeOfDayMs, earlier.isWanted}, stampNs, lines);
}

void MonitorRows::finish(Lines &lines)
{
    if (hasEnded)
        return;
    // The rest may have come later.
    if (isWithinCall && intake == Intake::Shown)
        displayKept(flushStampNs, lines);
    if (!pendingText.empty())
        flushText(lines);
}

bool MonitorRows::comesTooSoon(const reports::Bytes &bytes, int timeOfDayMs)
{
    if (!limitMs)
        return false;
    const reports::RateLimit rateLimit = reports::rateLimitOf(read(reports::reportType, bytes));
    const int thresholdMs = hasPrevious ? *limitMs : firstLimitMs;
    // None of the limited ones comes before the clock was started once.
    if (rateLimit == reports::RateLimit::Limited &&
        timeOfDayMs - lastKeptMs.value_or(timeOfDayMs) <= thresholdMs)
        return true;
    if (rateLimit != reports::RateLimit::None)
        lastKeptMs = timeOfDayMs;
    return false;
}

/// \param stampNs of the packet with which it is shown
void MonitorRows::display(const Report &report, std::uint64_t stampNs, Lines &lines)
{
    // What the Monitor takes for the report before the first.
    static constexpr unsigned char dummy[] = {'H', 'H'};
    if (!std::exchange(hasPrevious, true))
        remember({dummy, sizeof dummy}, report.timeOfDayMs);
    const reports::Bytes bytes{report.bytes.data, report.bytes.size};
    const bool isKnown = reports::ruleOf(read(reports::reportType, bytes)) != nullptr;
    if (isKnown && checksumOf(report.bytes) == previousChecksum)
        return;
    switch (reports::formOf(bytes)) {
    case reports::Form::Raw:
        addRow(reports::rawRow(bytes), report.isWanted, lines);
        break;
    case reports::Form::Text:
        addText(report, stampNs, lines);
        break;
    case reports::Form::Row:
        addRow(reports::fieldRow(bytes, inEnglish), report.isWanted, lines);
        break;
    }
    remember(report.bytes, report.timeOfDayMs);
}

void MonitorRows::addText(const Report &report, std::uint64_t stampNs, Lines &lines)
{
    for (std::size_t i = reports::textOffset; i < report.bytes.size; ++i) {
        reports::appendPrintable(pendingText, report.bytes.data[i]);
        if (report.bytes.data[i] == '\n')
            completeLine(report, lines);
    }
    isPendingWanted = report.isWanted;
    flushStampNs = flushStampOf(stampNs);
}

void MonitorRows::completeLine(const Report &report, Lines &lines)
{
    // A line that ends too soon after the previous report is dropped.
    if (report.timeOfDayMs - previousMs > reports::lineGapMs) {
        addRow({pendingText, {}}, report.isWanted, lines);
        remember(report.bytes, report.timeOfDayMs);
    }
    pendingText.clear();
}

void MonitorRows::remember(capture::ByteView bytes, int timeOfDayMs)
{
    previousChecksum = checksumOf(bytes);
    previousMs = timeOfDayMs;
}

/// \param stampNs at which the timer starts. Where no status tells the monotonic time, the timer is not
/// rounded.
std::uint64_t MonitorRows::flushStampOf(std::uint64_t stampNs) const
{
    if (!monotonicOffsetNs)
        return (stampNs / nsPerMs + reports::lineFlushDelayMs) * nsPerMs;
    return timerEnd((stampNs + *monotonicOffsetNs) / nsPerMs) * nsPerMs - *monotonicOffsetNs;
}

void MonitorRows::flushText(Lines &lines)
{
    addRow({std::exchange(pendingText, {}), {}}, isPendingWanted, lines);
}

void MonitorRows::addRow(const reports::Row &row, bool isWanted, Lines &lines)
{
    if (lines.left == 0 || !isWanted)
        return;
    --lines.left;
    appendLatin1(lines.text, row.first);
    lines.text += '\n';
    if (row.second.empty())
        return;
    appendLatin1(lines.text, row.second);
    lines.text += '\n';
}

} // namespace decoding
