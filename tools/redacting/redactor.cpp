#include "redactor.h"

#include <algorithm>

#include "decoding.h"
#include "masks.h"

namespace redacting {

namespace {

reports::Bytes bytesOf(const capture::Record &record)
{
    return {record.payload.data, record.payload.size};
}

/// What a call or a return has beside numbers.
struct Contents
{
    std::string buffers;
    std::string kept; ///< texts and device records
};

Contents contentsOf(const signatures::Signature &signature, bool isCall)
{
    using signatures::Role;
    Contents contents;
    for (const signatures::Argument &argument : signature.arguments) {
        if (isFilledIn(argument.role) == isCall)
            continue;
        if (argument.role == Role::Buffer || argument.role == Role::OutBuffer)
            contents.buffers = argument.name;
        if (argument.role == Role::Text)
            contents.kept = argument.name;
        if (argument.role == Role::OutRecord)
            contents.kept = "the device record, which may have a serial number";
    }
    return contents;
}

} // namespace

bool Redactor::count(const std::string &name, bool isEdited, const std::string &blanked,
                     const std::string &left)
{
    Entry &entry = summary[name];
    if (entry.count++ == 0) {
        entry.blanked = blanked;
        entry.left = left;
    }
    entry.edited += isEdited ? 1 : 0;
    return isEdited;
}

bool Redactor::blankText(const capture::Record &report, std::string &payload)
{
    const auto board =
        report.header.has(capture::BoardIsValid) ? std::optional(report.header.board) : std::nullopt;
    const auto type = static_cast<std::uint8_t>(reports::read(reports::reportType, bytesOf(report)));
    TextLines &lines = sessions[report.header.session].texts[{board, type}];
    std::string text = payload.substr(std::min(payload.size(), reports::textOffset));
    const bool isEdited = lines.blank(text);
    payload.replace(payload.size() - text.size(), text.size(), text);
    return count("text", isEdited, "hexadecimal digits of lines that may be signals",
                 "lines of prose, other characters, words of letters, frequencies");
}

bool Redactor::blankReport(const capture::Record &report, std::string &payload)
{
    if (const reports::Layout *layout = reports::layoutOf(bytesOf(report))) {
        const LayoutRule &rule = ruleOf(*layout);
        return count(rule.name, applyMask(rule.mask, payload), rule.blanked, rule.left);
    }
    if (reports::formOf(bytesOf(report)) == reports::Form::Text)
        return blankText(report, payload);
    return count("unknown", applyMask(maskOfUnknown(report), payload), "all behind length and type", "");
}

bool Redactor::blankCall(const capture::Record &record, std::string &payload)
{
    const bool isCall = record.header.kindOf() == capture::Kind::Call;
    const signatures::Signature *signature = signatures::signatureOf(record.header.call);
    if (!signature)
        return count("unknown call", applyMask(Mask(), payload), "all", "");
    const bool isEdited = applyMask(maskOf(*signature, isCall, record.payload), payload);
    const Contents contents = contentsOf(*signature, isCall);
    if (contents.buffers.empty() && contents.kept.empty())
        return count(isCall ? "other calls" : "other returns", isEdited, "", "numbers");
    return count(signature->name + (isCall ? "()" : "() return"), isEdited, contents.buffers,
                 contents.kept.empty() ? "numbers" : "numbers, " + contents.kept);
}

bool Redactor::blank(const capture::Record &record, std::string &payload)
{
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        return blankReport(record, payload);
    case capture::Kind::Call:
    case capture::Kind::Return:
        return blankCall(record, payload);
    case capture::Kind::Hotplug:
    case capture::Kind::Status:
    case capture::Kind::End:
        return count(nameOf(record.header.kindOf()), false, "", "all");
    case capture::Kind::Mark:
        return count("mark", false, "", "its text");
    case capture::Kind::Board:
        return count("board", false, "", "the device record, which may have a serial number");
    }
    return count("unknown kind", applyMask(Mask(), payload), "all", "");
}

std::string Redactor::redacted(const capture::Record &record)
{
    Session &session = sessions[record.header.session];
    // What is missing may be the end of a line, and the beginning of the next.
    if (record.header.sequence != session.nextSequence)
        session.texts.clear();
    session.nextSequence = record.header.sequence + 1;
    std::string payload(record.payload.text());
    capture::Header header = record.header;
    if (blank(record, payload))
        header.flags |= capture::Edited;
    std::string packet;
    capture::append(packet, header);
    packet.resize(header.headerLength); // what a later version has there is unknown
    return packet + payload;
}

} // namespace redacting
