#include "checker.h"

#include <algorithm>
#include <string_view>

#include "signatures.h"

namespace padscope {

namespace {

using capture::Kind;

/// A damaged file may have one for each of a million packets.
constexpr std::uint64_t maxPrintedFaults = 20;

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// "1 board", "5 reports"
std::string counted(std::uint64_t count, const std::string &noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

std::string boardText(std::int32_t board)
{
    return "board " + std::to_string(board);
}

bool isCall(const capture::Record &record)
{
    return record.header.kindOf() == Kind::Call || record.header.kindOf() == Kind::Return;
}

} // namespace

Checker::Checker(const InputFile &inputFile, const capture::RecordReader &recordReader)
    : input(inputFile)
    , reader(recordReader)
{
}

void Checker::follow(const capture::Record &record)
{
    Session &session = sessions[record.header.session];
    checkOrder(record, session);
    checkHeader(record);
    checkKind(record, session);
}

/// Among the packets of a capture there are no others.
void Checker::followPassedBy(std::uint64_t frame, capture::HeaderTrouble trouble)
{
    const std::uint64_t offset = reader.file().offset();
    const auto &interface = reader.file().interfaces()[reader.file().packet().interface];
    const bool isOurs = interface.linkType == capture::pcapng::linkTypeUser0 &&
                        startsWith(reader.file().section().comment, "padscope capture ");
    if (trouble == capture::HeaderTrouble::BadLength)
        reportFault(offset, frame, "its header is cut off, or of a wrong length");
    else if (trouble == capture::HeaderTrouble::Foreign && isOurs)
        reportFault(offset, frame, "no packet of a capture, among those of one");
}

void Checker::finish() const
{
    if (count > maxPrintedFaults)
        printError(input.name() + ": " + std::to_string(count - maxPrintedFaults) + " faults more");
}

void Checker::reportFault(const capture::Record &record, const std::string &what)
{
    reportFault(record.offset, record.frame, what);
}

void Checker::reportFault(std::uint64_t offset, std::uint64_t frame, const std::string &what)
{
    if (++count <= maxPrintedFaults)
        printError(input.name() + ": byte " + std::to_string(offset) + ", packet " + std::to_string(frame) +
                   ": " + what);
}

void Checker::checkOrder(const capture::Record &record, Session &session)
{
    if (session.hasEnd)
        reportFault(record, "it lies behind the end of its session");
    if (session.hasPackets && record.timeNs <= session.timeNs)
        reportFault(record, "its time is not later than the packet's before");
    session.timeNs = record.timeNs;
    checkSequence(record, session);
    if (record.dropCount != record.header.lost)
        reportFault(record, "its drop count is not what it says is lost");
    session.lost += record.header.lost;
}

void Checker::checkSequence(const capture::Record &record, Session &session)
{
    const std::uint64_t next = session.hasPackets ? session.sequence + 1 : 0;
    const std::uint64_t sequence = record.header.sequence;
    if (sequence < next)
        reportFault(record, "its sequence is not higher than the packet's before");
    else if (sequence - next < record.header.lost)
        reportFault(record, "more are lost than are missing");
    else if (sequence - next > record.header.lost)
        session.hasGaps = true;
    session.hasPackets = true;
    session.sequence = sequence;
}

void Checker::checkHeader(const capture::Record &record)
{
    const capture::Header &header = record.header;
    if (!nameOf(header.kindOf()))
        reportFault(record, "its kind is " + std::to_string(header.kind) + ", which the format has not");
    if (isCall(record) && !signatures::signatureOf(header.call))
        reportFault(record, "its call is " + std::to_string(header.call) + ", which the format has not");
    const std::string &interface = reader.file().interfaces()[reader.file().packet().interface].name;
    const bool isBoards = startsWith(interface, "board ");
    if (isBoards && (!header.has(capture::BoardIsValid) || interface != boardText(header.board)))
        reportFault(record, "it is not of the board of its interface, " + interface);
}

void Checker::checkKind(const capture::Record &record, Session &session)
{
    switch (record.header.kindOf()) {
    case Kind::Report:
        if (record.header.has(capture::BoardIsValid))
            ++session.reports[record.header.board];
        else
            reportFault(record, "a report without its board");
        break;
    case Kind::Call:
        session.openCalls[static_cast<std::uint32_t>(record.header.sequence)] = record.header.call;
        break;
    case Kind::Return:
        checkReturn(record, session);
        break;
    case Kind::Status:
        checkStatus(record, session);
        break;
    case Kind::End:
        checkEnd(record, session);
        session.hasEnd = true;
        break;
    default:
        break;
    }
}

void Checker::checkReturn(const capture::Record &record, Session &session)
{
    if (record.header.link == capture::lostLink)
        return;
    const auto call = session.openCalls.find(record.header.link);
    if (call == session.openCalls.end()) {
        if (!session.hasGaps)
            reportFault(record, "it returns from no call");
        return;
    }
    if (call->second != record.header.call)
        reportFault(record, "it returns from another call than it says");
    session.openCalls.erase(call);
}

void Checker::checkStatus(const capture::Record &record, const Session &session)
{
    const auto status = capture::statusOf(record.payload);
    if (!status) {
        reportFault(record, "a status packet that is too short");
        return;
    }
    if (!hasAllCounts(record, status->missingBoards) || session.hasGaps)
        return;
    for (const capture::BoardCounts &counts : status->boards)
        compareReports(record, session, counts);
}

void Checker::checkEnd(const capture::Record &record, const Session &session)
{
    const auto end = capture::endOf(record.payload);
    if (!end) {
        reportFault(record, "an end packet that is too short");
        return;
    }
    std::uint64_t lost = 0;
    for (const capture::BoardCounts &counts : end->boards) {
        lost += counts.lost;
        if (counts.recorded + counts.lost != counts.delivered)
            reportFault(record, boardText(counts.board) + ": recorded and lost are not delivered");
        if (!session.hasGaps)
            compareReports(record, session, counts);
    }
    if (!hasAllCounts(record, end->missingBoards))
        return;
    // Calls are lost too, so there may be fewer.
    if (!session.hasGaps && lost > session.lost)
        reportFault(record, "its boards have lost " + std::to_string(lost) + ", and the packets tell of " +
                                std::to_string(session.lost));
    if (!session.hasGaps && end->lost && *end->lost != session.lost)
        reportFault(record, "it tells of " + std::to_string(*end->lost) + " lost, and the packets of " +
                                std::to_string(session.lost));
    findUncounted(record, session, end->boards);
}

bool Checker::hasAllCounts(const capture::Record &record, std::uint32_t missing)
{
    if (missing > 0)
        reportFault(record, "it lacks the counts of " + counted(missing, "board"));
    return missing == 0;
}

void Checker::compareReports(const capture::Record &record, const Session &session,
                             const capture::BoardCounts &counts)
{
    const auto found = session.reports.find(counts.board);
    const std::uint64_t reports = found == session.reports.end() ? 0 : found->second;
    if (reports != counts.recorded)
        reportFault(record, boardText(counts.board) + " has " + counted(reports, "report") +
                                ", and not the recorded " + std::to_string(counts.recorded));
}

/// Boards of which there are reports, and no counts.
void Checker::findUncounted(const capture::Record &record, const Session &session,
                            const std::vector<capture::BoardCounts> &boards)
{
    std::map<std::int32_t, std::uint64_t> uncounted = session.reports;
    for (const capture::BoardCounts &counts : boards)
        uncounted.erase(counts.board);
    for (const auto &[board, reports] : uncounted)
        reportFault(record, boardText(board) + " has " + counted(reports, "report") +
                                ", and the end does not count it");
}

} // namespace padscope
