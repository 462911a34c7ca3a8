#include "monitorrows.h"

#include <utility>

#include "checksum.h"
#include "decoding.h"
#include "payloads.h"
#include "signatures.h"

namespace decoding {

namespace {

constexpr std::uint64_t nsPerMs = 1'000'000;
constexpr std::uint32_t closingDebugMode = 1; ///< with which the tool begins to detach
constexpr std::uint32_t everyDebugBit = 0xFFFFFFFF;

std::string inEnglish(const char *english)
{
    return english;
}

unsigned callNamed(const char *name)
{
    for (unsigned call = 1; call <= signatures::callCount; ++call) {
        if (signatures::signatureOf(call)->name == name)
            return call;
    }
    return 0;
}

bool isClosingDebugMode(capture::ByteView payload)
{
    return capture::integerAt<std::uint32_t>(payload, 4) == closingDebugMode &&
           capture::integerAt<std::uint32_t>(payload, 8) == everyDebugBit;
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

} // namespace

void MonitorRows::follow(const capture::Record &record, Lines &lines)
{
    if (!pendingText.empty() &&
        record.timeNs / nsPerMs >= pendingSinceMs + static_cast<std::uint64_t>(reports::lineFlushDelayMs))
        flushText(lines);
    hasEnded = record.header.kindOf() == capture::Kind::End;
    if (record.header.call != 0)
        followCall(record);
}

/// The tool's calls tell whether it takes reports.
void MonitorRows::followCall(const capture::Record &record)
{
    static const unsigned attach = callNamed("orvexAttach");
    static const unsigned detach = callNamed("orvexDetach");
    static const unsigned setDebugMode = callNamed("orvexSetDriverDebugMode");
    const bool isCall = record.header.kindOf() == capture::Kind::Call;
    const unsigned number = record.header.call;
    if (number == attach && isCall)
        intake = Intake::Shown;
    else if (number == detach && !isCall)
        intake = Intake::Dropped;
    else if ((number == detach || (number == setDebugMode && isClosingDebugMode(record.payload))) && isCall &&
             intake == Intake::Shown)
        intake = Intake::Kept;
}

void MonitorRows::show(const capture::Record &report, int timeOfDayMs, Lines &lines)
{
    const reports::Bytes bytes{report.payload.data, report.payload.size};
    if (intake == Intake::Dropped || comesTooSoon(bytes, timeOfDayMs))
        return;
    if (intake == Intake::Kept) {
        kept.push_back({std::string(report.payload.text()), timeOfDayMs});
        return;
    }
    const std::uint64_t shownMs = report.timeNs / nsPerMs;
    for (const KeptReport &earlier : std::exchange(kept, {})) {
        const capture::ByteView view = capture::viewOf(earlier.bytes);
        display({view.data, view.size}, earlier.timeOfDayMs, shownMs, lines);
    }
    display(bytes, timeOfDayMs, shownMs, lines);
}

void MonitorRows::finish(Lines &lines)
{
    if (!hasEnded && !pendingText.empty())
        flushText(lines);
}

bool MonitorRows::comesTooSoon(const reports::Bytes &bytes, int timeOfDayMs)
{
    if (!limitMs)
        return false;
    const reports::RateLimit rateLimit = reports::rateLimitOf(read(reports::reportType, bytes));
    // None of the limited ones comes before the clock was started once.
    if (rateLimit == reports::RateLimit::Limited &&
        timeOfDayMs - lastKeptMs.value_or(timeOfDayMs) <= *limitMs)
        return true;
    if (rateLimit != reports::RateLimit::None)
        lastKeptMs = timeOfDayMs;
    return false;
}

void MonitorRows::display(const reports::Bytes &bytes, int timeOfDayMs, std::uint64_t shownMs, Lines &lines)
{
    // What the Monitor takes for the report before the first.
    static constexpr unsigned char dummy[] = {'H', 'H'};
    if (!std::exchange(hasPrevious, true))
        remember({dummy, sizeof dummy}, timeOfDayMs);
    const bool isKnown = reports::ruleOf(read(reports::reportType, bytes)) != nullptr;
    if (isKnown && checksumOf({bytes.data, bytes.length}) == previousChecksum)
        return;
    switch (reports::formOf(bytes)) {
    case reports::Form::Raw:
        addRow(reports::rawRow(bytes), lines);
        break;
    case reports::Form::Text:
        addText(bytes, timeOfDayMs, shownMs, lines);
        break;
    case reports::Form::Row:
        addRow(reports::fieldRow(bytes, inEnglish), lines);
        break;
    }
    remember(bytes, timeOfDayMs);
}

void MonitorRows::addText(const reports::Bytes &bytes, int timeOfDayMs, std::uint64_t shownMs, Lines &lines)
{
    for (std::size_t i = reports::textOffset; i < bytes.length; ++i) {
        reports::appendPrintable(pendingText, bytes.data[i]);
        if (bytes.data[i] == '\n')
            completeLine(bytes, timeOfDayMs, lines);
    }
    pendingSinceMs = shownMs;
}

void MonitorRows::completeLine(const reports::Bytes &bytes, int timeOfDayMs, Lines &lines)
{
    // A line that ends too soon after the previous report is dropped.
    if (timeOfDayMs - previousMs > reports::lineGapMs) {
        addRow({pendingText, {}}, lines);
        remember(bytes, timeOfDayMs);
    }
    pendingText.clear();
}

void MonitorRows::remember(const reports::Bytes &bytes, int timeOfDayMs)
{
    previousChecksum = checksumOf({bytes.data, bytes.length});
    previousMs = timeOfDayMs;
}

void MonitorRows::flushText(Lines &lines)
{
    addRow({std::exchange(pendingText, {}), {}}, lines);
}

void MonitorRows::addRow(const reports::Row &row, Lines &lines)
{
    if (lines.left == 0)
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
