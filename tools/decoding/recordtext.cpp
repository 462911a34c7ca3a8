#include "recordtext.h"

#include <set>

#include "decoding.h"
#include "english.h"
#include "escaping.h"
#include "payloads.h"
#include "signatures.h"

namespace decoding {

namespace {

constexpr char unknownType[] = "unknown";

constexpr char rowSeparator[] = "   "; ///< as in the Monitor

reports::Bytes bytesOf(const capture::Record &record)
{
    return {record.payload.data, record.payload.size};
}

std::string reportText(const capture::Record &record)
{
    const reports::Bytes bytes = bytesOf(record);
    switch (reports::formOf(bytes)) {
    case reports::Form::Text: {
        std::string text;
        for (std::size_t i = reports::textOffset; i < bytes.length; ++i)
            reports::appendPrintable(text, bytes.data[i]);
        return text;
    }
    case reports::Form::Row: {
        const reports::Row row = reports::fieldRow(bytes, inEnglish);
        return row.second.empty() ? row.first : row.first + rowSeparator + row.second;
    }
    case reports::Form::Raw:
        break;
    }
    const reports::Row row = reports::rawRow(bytes);
    return row.first + rowSeparator + row.second;
}

std::string valueText(const signatures::Value &value)
{
    using signatures::Role;
    std::string text;
    if (value.isNull)
        return "null";
    switch (value.argument->role) {
    case Role::Text:
    case Role::Buffer:
    case Role::OutBuffer:
        appendQuoted(text, value.bytes.text());
        return text;
    case Role::OutRecord:
        return std::to_string(value.bytes.size) + " bytes";
    case Role::Listener:
        return value.number == 0 ? "null" : "listener " + std::to_string(value.number);
    default:
        return std::to_string(value.number);
    }
}

std::string listText(const std::vector<signatures::Value> &values, bool hasNames)
{
    std::string text;
    for (const signatures::Value &value : values) {
        if (!text.empty())
            text += ", ";
        if (hasNames)
            text += value.argument->name + ": ";
        text += valueText(value);
    }
    return text;
}

std::string callText(const capture::Record &record)
{
    const signatures::Signature *signature = signatures::signatureOf(record.header.call);
    const std::string name = signature ? signature->name : "call " + std::to_string(record.header.call);
    if (record.header.kindOf() == capture::Kind::Call)
        return name + '(' +
               (signature ? listText(signatures::argumentsOf(*signature, record.payload), false) : "") + ')';
    std::string text = name + "()";
    if (record.header.has(capture::ResultIsValid))
        text += " = " + std::to_string(record.header.result);
    const std::string filledIn =
        signature ? listText(signatures::filledInBy(*signature, record.payload), true) : "";
    return filledIn.empty() ? text : text + ", " + filledIn;
}

std::string countsText(const std::vector<capture::BoardCounts> &boards)
{
    std::string text;
    for (const capture::BoardCounts &counts : boards)
        text += ", board " + std::to_string(counts.board) + ": " + std::to_string(counts.delivered) +
                " delivered, " + std::to_string(counts.recorded) + " recorded, " +
                std::to_string(counts.lost) + " lost";
    return text;
}

std::string endText(const capture::Record &record)
{
    const auto end = capture::endOf(record.payload);
    if (!end)
        return "end";
    const std::string value = std::to_string(end->value);
    switch (end->reason) {
    case capture::EndReason::Exit:
        return "end: exit status " + value + countsText(end->boards);
    case capture::EndReason::Signal:
        return "end: signal " + value + countsText(end->boards);
    case capture::EndReason::Slice:
        return "end: slice" + countsText(end->boards);
    default:
        return "end: unknown" + countsText(end->boards);
    }
}

std::string boardText(const capture::Record &record)
{
    const auto change = capture::boardChangeOf(record.payload);
    if (!change)
        return "board";
    if (change->state == capture::BoardState::Gone)
        return "gone";
    return change->index < 0 ? "seen" : "seen, index " + std::to_string(change->index);
}

std::string ownText(const capture::Record &record)
{
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        return reportText(record);
    case capture::Kind::Call:
    case capture::Kind::Return:
        return callText(record);
    case capture::Kind::Hotplug:
        return "hot-plug notification, listener " + std::to_string(record.header.link);
    case capture::Kind::Status: {
        const auto status = capture::statusOf(record.payload);
        return status ? "status" + countsText(status->boards) : "status";
    }
    case capture::Kind::Mark: {
        std::string text = "mark: ";
        appendQuoted(text, record.payload.text());
        return text;
    }
    case capture::Kind::Board:
        return boardText(record);
    case capture::Kind::End:
        return endText(record);
    }
    return "kind " + std::to_string(record.header.kind);
}

} // namespace

std::string textOf(const capture::Record &record)
{
    std::string text;
    if (record.header.lost > 0)
        text += '[' + std::to_string(record.header.lost) + " lost] ";
    // A byte that is cut off is shown as the zero that a short report would have there.
    if (record.payload.size < record.payloadLength)
        text += "[cut] ";
    return text + ownText(record);
}

std::string callTextOf(const capture::Record &record)
{
    return callText(record);
}

const char *reportNameOf(const capture::Record &record)
{
    if (record.header.kindOf() != capture::Kind::Report)
        return nullptr;
    if (const reports::Layout *layout = reports::layoutOf(bytesOf(record)))
        return layout->report;
    const reports::TypeRule *rule = reports::ruleOf(reports::read(reports::reportType, bytesOf(record)));
    return rule ? rule->name : nullptr;
}

std::string_view reportTypeOf(const capture::Record &report)
{
    const char *name = reportNameOf(report);
    return name ? name : unknownType;
}

std::vector<std::string> reportTypes()
{
    std::set<std::string> names{unknownType};
    for (const reports::TypeRule &rule : reports::typeRules)
        names.emplace(rule.name);
    for (const reports::Layout *layout : reports::layouts)
        names.emplace(layout->report);
    return {names.begin(), names.end()};
}

std::string boardOf(const capture::Record &record)
{
    return record.header.has(capture::BoardIsValid) ? std::to_string(record.header.board) : "-";
}

} // namespace decoding
