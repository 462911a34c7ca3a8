#include "payloads.h"

namespace capture {

namespace {

constexpr std::size_t boardCountsSize = 28;

void appendCounts(std::string &payload, const std::vector<BoardCounts> &boards)
{
    append(payload, static_cast<std::uint32_t>(boards.size()));
    for (const BoardCounts &counts : boards) {
        append(payload, counts.board);
        append(payload, counts.delivered);
        append(payload, counts.recorded);
        append(payload, counts.lost);
    }
}

/// \param missing gets how many are not there of those that are promised
std::vector<BoardCounts> boardCounts(PayloadReader &reader, std::uint32_t &missing)
{
    std::vector<BoardCounts> boards;
    const auto count = reader.number<std::uint32_t>();
    for (std::uint32_t i = 0; i < count && reader.remaining().size >= boardCountsSize; ++i) {
        BoardCounts counts;
        counts.board = reader.number<std::int32_t>();
        counts.delivered = reader.number<std::uint64_t>();
        counts.recorded = reader.number<std::uint64_t>();
        counts.lost = reader.number<std::uint64_t>();
        boards.push_back(counts);
    }
    missing = count - static_cast<std::uint32_t>(boards.size());
    return boards;
}

} // namespace

std::string payloadOf(const Status &status)
{
    std::string payload;
    append(payload, status.monotonicNs);
    append(payload, status.realNs);
    append(payload, status.bootNs);
    append(payload, status.localOffsetSeconds);
    appendCounts(payload, status.boards);
    return payload;
}

std::string payloadOf(const BoardChange &change)
{
    std::string payload;
    append(payload, static_cast<std::uint32_t>(change.state));
    append(payload, change.index);
    payload += change.record.text();
    return payload;
}

std::string payloadOf(const End &end)
{
    std::string payload;
    append(payload, static_cast<std::uint32_t>(end.reason));
    append(payload, end.value);
    appendCounts(payload, end.boards);
    if (end.lost)
        append(payload, *end.lost);
    return payload;
}

std::optional<Status> statusOf(ByteView payload)
{
    PayloadReader reader(payload);
    Status status;
    status.monotonicNs = reader.number<std::uint64_t>();
    status.realNs = reader.number<std::uint64_t>();
    status.bootNs = reader.number<std::uint64_t>();
    status.localOffsetSeconds = reader.number<std::int32_t>();
    status.boards = boardCounts(reader, status.missingBoards);
    return reader.isWhole() ? std::optional(status) : std::nullopt;
}

std::optional<BoardChange> boardChangeOf(ByteView payload)
{
    PayloadReader reader(payload);
    BoardChange change;
    change.state = static_cast<BoardState>(reader.number<std::uint32_t>());
    change.index = reader.number<std::int32_t>();
    change.record = reader.remaining();
    return reader.isWhole() ? std::optional(change) : std::nullopt;
}

std::optional<End> endOf(ByteView payload)
{
    PayloadReader reader(payload);
    End end;
    end.reason = static_cast<EndReason>(reader.number<std::uint32_t>());
    end.value = reader.number<std::int32_t>();
    end.boards = boardCounts(reader, end.missingBoards);
    if (end.missingBoards == 0 && reader.remaining().size >= sizeof(std::uint64_t))
        end.lost = reader.number<std::uint64_t>();
    return reader.isWhole() ? std::optional(end) : std::nullopt;
}

void appendText(std::string &payload, std::string_view text)
{
    append(payload, static_cast<std::uint32_t>(text.size()));
    payload += text;
}

void appendNullText(std::string &payload)
{
    append(payload, nullText);
}

void PayloadReader::skip(std::size_t count)
{
    whole = whole && count <= rest.size;
    rest = rest.from(count);
}

std::optional<ByteView> PayloadReader::text()
{
    const auto length = number<std::uint32_t>();
    if (length == nullText)
        return std::nullopt;
    const ByteView bytes = rest.first(length);
    skip(length);
    return bytes;
}

} // namespace capture
