#include "packet.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>

#include "decoding.h"
#include "fieldindex.h"
#include "recordtext.h"
#include "signatures.h"

namespace comparing {

namespace {

using capture::Kind;

constexpr unsigned comparedFlags =
    capture::ResultIsValid | capture::PayloadCut | capture::PointerWasNull | capture::NotRead;
constexpr std::uint64_t hashFactor = 0x9E3779B97F4A7C15; ///< odd, with its bits spread evenly

reports::Bytes bytesOf(std::string_view payload)
{
    const capture::ByteView view = capture::viewOf(payload);
    return {view.data, view.size};
}

/// Zeros where a rule applies: what differs there may be equal all the same.
void blankFieldsWithRules(std::string &payload, const FieldRules &rules)
{
    const reports::Layout *layout = reports::layoutOf(bytesOf(payload));
    for (std::size_t i = 0; i < std::min(payload.size(), FieldRules::headerSize); ++i) {
        if (rules.hasRule(FieldRules::headerField(i)))
            payload[i] = 0;
    }
    if (!layout)
        return;
    const std::size_t first = decoding::index().layouts.at(layout);
    for (std::size_t i = 0; i < layout->fieldCount; ++i) {
        const reports::Field &field = layout->fields[i];
        for (std::size_t at = field.offset; at < field.offset + reports::widthInBytes(field); ++at) {
            if (rules.hasRule(first + i) && at < payload.size())
                payload[at] = 0;
        }
    }
}

std::uint64_t hashOf(const Packet &packet, const FieldRules &rules)
{
    std::uint64_t hash = std::uint64_t{packet.call} << 8 | packet.flags;
    if (!rules.isEmpty() && packet.kind != Kind::Report)
        return hash * hashFactor;
    std::string blanked;
    std::string_view bytes = packet.payload;
    if (!rules.isEmpty()) {
        blanked = packet.payload;
        blankFieldsWithRules(blanked, rules);
        bytes = blanked;
    }
    for (const std::uint64_t part : {std::uint64_t{packet.length}, static_cast<std::uint64_t>(packet.result),
                                     static_cast<std::uint64_t>(std::hash<std::string_view>()(bytes))})
        hash = (hash ^ part) * hashFactor;
    return hash;
}

/// The board is compared as such, under the number that it has in A.
void renumberArgument(std::string &payload, std::uint16_t call, std::int32_t board, std::int32_t boardInA)
{
    const signatures::Signature *signature = signatures::signatureOf(call);
    if (!signature || !signature->hasBoard || payload.size() < sizeof board ||
        capture::integerAt<std::int32_t>(capture::viewOf(payload), 0) != board)
        return;
    std::string number;
    capture::append(number, boardInA);
    payload.replace(0, number.size(), number);
}

/// The length of a report of text follows from its characters.
void dropCharacters(Packet &packet)
{
    if (packet.payload.size() < reports::textOffset ||
        reports::formOf(bytesOf(packet.payload)) != reports::Form::Text)
        return;
    packet.payload.resize(reports::textOffset);
    packet.payload[0] = 0;
    packet.length = reports::textOffset;
}

/// Several layouts of one type have its sub-type in their names.
bool hasSeveralLayouts(const reports::Layout &layout)
{
    return std::count_if(std::begin(reports::layouts), std::end(reports::layouts),
                         [&layout](const reports::Layout *other) { return other->type == layout.type; }) > 1;
}

std::string reportTypeOf(const Packet &packet)
{
    std::string name(decoding::reportTypeOf(recordOf(packet)));
    const reports::Layout *layout = reports::layoutOf(bytesOf(packet.payload));
    if (layout && hasSeveralLayouts(*layout))
        name += ' ' + std::to_string(layout->subType);
    return name;
}

} // namespace

Packet packetOf(const capture::Record &record, std::int64_t timeNs, std::int32_t board,
                const FieldRules &rules)
{
    const capture::Header &header = record.header;
    Packet packet;
    packet.timeNs = timeNs;
    packet.length = record.payloadLength;
    packet.kind = header.kindOf();
    packet.flags = static_cast<std::uint8_t>(header.flags & comparedFlags);
    packet.payload = record.payload.text();
    if (packet.kind == Kind::Call || packet.kind == Kind::Return)
        packet.call = header.call;
    if (packet.kind == Kind::Return && header.has(capture::ResultIsValid))
        packet.result = header.result;
    if (packet.kind == Kind::Call && header.has(capture::BoardIsValid) && board != header.board)
        renumberArgument(packet.payload, header.call, header.board, board);
    if (packet.kind == Kind::Report && rules.isIgnored(decoding::index().characters))
        dropCharacters(packet);
    packet.hash = hashOf(packet, rules);
    return packet;
}

bool areIdentical(const Packet &a, const Packet &b)
{
    return a.hash == b.hash && a.kind == b.kind && a.call == b.call && a.flags == b.flags &&
           a.result == b.result && a.length == b.length && a.payload == b.payload;
}

capture::Record recordOf(const Packet &packet)
{
    capture::Record record;
    record.header = capture::newHeader(packet.kind);
    record.header.call = packet.call;
    record.header.result = packet.result;
    record.header.flags = packet.flags;
    record.payload = capture::viewOf(packet.payload);
    record.payloadLength = packet.length;
    return record;
}

std::string typeOf(const Packet &packet)
{
    if (packet.kind == Kind::Report)
        return reportTypeOf(packet);
    const char *kind = nameOf(packet.kind);
    if (packet.kind != Kind::Call && packet.kind != Kind::Return)
        return kind;
    const signatures::Signature *signature = signatures::signatureOf(packet.call);
    return kind + (' ' + (signature ? signature->name : std::to_string(packet.call)));
}

} // namespace comparing
