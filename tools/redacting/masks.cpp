#include "masks.h"

#include <algorithm>
#include <unordered_map>

#include "decisions.h"
#include "decoding.h"
#include "fields.h"
#include "payloads.h"

namespace redacting {

namespace {

constexpr char kept = '\xFF';
constexpr char blank = '\0';
constexpr std::size_t numberSize = 4; ///< also of the length of a text or a buffer

/// Length and type, and the sub-type where no field has its byte.
Mask headerMask(const reports::Layout &layout)
{
    const std::size_t subType = reports::reportSubType.offset;
    const auto coversSubType = [subType](const reports::Field &field) {
        return field.offset <= subType && subType < field.offset + reports::widthInBytes(field);
    };
    const bool isField = std::any_of(layout.fields, layout.fields + layout.fieldCount, coversSubType);
    return Mask(subType, kept) + (isField ? blank : kept);
}

LayoutRule newRule(const Decision &decision)
{
    const reports::Layout &layout = *decision.layout;
    LayoutRule rule{headerMask(layout), decoding::prefixOf(layout), {}, {}};
    rule.mask.resize(layout.sentLength, blank);
    for (std::size_t i = 0; i < layout.fieldCount; ++i) {
        const reports::Field &field = layout.fields[i];
        const bool isKept = countOf(field.name, decision.kept) > 0;
        std::string &names = isKept ? rule.left : rule.blanked;
        names += (names.empty() ? "" : ", ") + std::string(field.name);
        for (unsigned byte = 0; isKept && byte < reports::widthInBytes(field); ++byte)
            rule.mask[reports::byteIndex(field, byte)] |= static_cast<char>(field.mask >> (8 * byte));
    }
    return rule;
}

std::unordered_map<const reports::Layout *, LayoutRule> newRules()
{
    std::unordered_map<const reports::Layout *, LayoutRule> rules;
    for (const Decision &decision : decisions)
        rules.emplace(decision.layout, newRule(decision));
    return rules;
}

/// Bytes of a text or a buffer whose length stands at an index.
std::size_t sizeAt(capture::ByteView payload, std::size_t index)
{
    const auto size = capture::integerAt<std::uint32_t>(payload, index);
    return size == capture::nullText ? 0 : std::min<std::size_t>(size, payload.from(index + numberSize).size);
}

} // namespace

bool applyMask(const Mask &mask, std::string &payload)
{
    bool isAnythingBlanked = false;
    for (std::size_t i = 0; i < payload.size(); ++i) {
        const char bits = i < mask.size() ? mask[i] : blank;
        payload[i] = static_cast<char>(payload[i] & bits);
        isAnythingBlanked = isAnythingBlanked || bits != kept;
    }
    return isAnythingBlanked;
}

const LayoutRule &ruleOf(const reports::Layout &layout)
{
    static const std::unordered_map<const reports::Layout *, LayoutRule> rules = newRules();
    return rules.at(&layout);
}

Mask maskOfUnknown(const capture::Record &report)
{
    const reports::Bytes bytes{report.payload.data, report.payload.size};
    if (reports::formOf(bytes) == reports::Form::Row)
        return Mask(3, kept);
    const bool hasHeader = reports::ruleOf(reports::read(reports::reportType, bytes)) ||
                           reports::read(reports::reportLength, bytes) == report.payloadLength;
    return Mask(hasHeader ? 2 : 0, kept);
}

Mask maskOf(const signatures::Signature &signature, bool isCall, capture::ByteView payload)
{
    using signatures::Role;
    Mask mask;
    for (const signatures::Argument &argument : signature.arguments) {
        if (isFilledIn(argument.role) == isCall)
            continue;
        switch (argument.role) {
        case Role::Context:
        case Role::Unread:
            break;
        case Role::Signed:
        case Role::Unsigned:
        case Role::Listener:
        case Role::OutNumber:
        case Role::OutSigned:
            mask.append(numberSize, kept);
            break;
        case Role::Text:
            mask.append(numberSize + sizeAt(payload, mask.size()), kept);
            break;
        case Role::Buffer:
        case Role::OutBuffer: {
            const std::size_t size = sizeAt(payload, mask.size());
            mask.append(numberSize, kept).append(size, blank);
            break;
        }
        case Role::OutRecord:
            mask.append(payload.from(mask.size()).size, kept);
            break;
        }
    }
    return mask;
}

} // namespace redacting
