#include "differences.h"

#include <algorithm>
#include <string_view>

#include "decoding.h"
#include "escaping.h"
#include "fieldindex.h"
#include "findings.h"

namespace comparing {

namespace {

using capture::Kind;
using decoding::FieldValue;

std::size_t resultField()
{
    static const std::size_t field = [] {
        const std::vector<decoding::FieldInfo> &fields = decoding::allFields();
        const auto isResult = [](const decoding::FieldInfo &info) { return info.name == "result"; };
        return static_cast<std::size_t>(std::find_if(fields.begin(), fields.end(), isResult) -
                                        fields.begin());
    }();
    return field;
}

/// Finds what differs between two packets.
class FieldSearch
{
public:
    FieldSearch(const Packet &first, const Packet &second, const FieldRules &fieldRules,
                std::string *appendTo)
        : a(first)
        , b(second)
        , rules(fieldRules)
        , found(fieldRules, appendTo)
    {
    }

    bool findAny()
    {
        compareHeaders();
        if (found.isDone())
            return true;
        if (a.kind == Kind::Report)
            compareReports();
        else
            compareCalls();
        return found.isAny();
    }

private:
    void compareHeaders()
    {
        if (a.call != b.call)
            found.add("call", std::to_string(a.call), std::to_string(b.call));
        if (a.flags != b.flags)
            found.addBytes("flags", a.flags, b.flags);
        if (a.result != b.result && !rules.areEqual(resultField(), a.result, b.result))
            found.add("result", std::to_string(a.result), std::to_string(b.result));
        if (a.length == b.length && a.payload.size() != b.payload.size())
            found.add("kept length", std::to_string(a.payload.size()), std::to_string(b.payload.size()));
    }

    void compareReports()
    {
        const reports::Bytes bytesA = bytesOf(a);
        const reports::Bytes bytesB = bytesOf(b);
        const reports::Layout *layout = reports::layoutOf(bytesA);
        if (layout != reports::layoutOf(bytesB))
            layout = nullptr;
        const bool isText =
            reports::formOf(bytesA) == reports::Form::Text && reports::formOf(bytesB) == reports::Form::Text;
        if (a.length != b.length && !(isText && isWhole(a) && isWhole(b)))
            found.add("length", std::to_string(a.length), std::to_string(b.length));
        if (layout)
            compareFields(*layout, bytesA, bytesB);
        if (isText)
            compareCharacters();
        const std::size_t textBegin = isText ? reports::textOffset : std::string::npos;
        const std::size_t end = std::min({a.payload.size(), b.payload.size(), textBegin});
        for (std::size_t i = followsFromLength(bytesA.at(0), bytesB.at(0)) ? 1 : 0;
             i < end && !found.isDone(); ++i) {
            const int differing = bytesA.at(i) ^ bytesB.at(i);
            if (differing != 0 && (!layout || (differing & ~coveredBits(*layout, i)) != 0))
                compareUncovered(i, bytesA.at(i), bytesB.at(i));
        }
    }

    /// A byte that differs and is in no field of a layout.
    void compareUncovered(std::size_t offset, int from, int to)
    {
        if (offset >= FieldRules::headerSize)
            found.addByte("byte ", offset, from, to);
        else if (!rules.areEqual(FieldRules::headerField(offset), from, to))
            found.add(FieldRules::headerName(offset), std::to_string(from), std::to_string(to));
    }

    /// The characters of such a text tell its length.
    static bool isWhole(const Packet &packet) { return packet.length == packet.payload.size(); }

    /// \param first, second the bytes that reports begin with, which hold their lengths
    bool followsFromLength(int first, int second) const
    {
        return a.length != b.length &&
               std::int64_t{a.length} - std::int64_t{b.length} == std::int64_t{first} - second;
    }

    void compareFields(const reports::Layout &layout, const reports::Bytes &bytesA,
                       const reports::Bytes &bytesB)
    {
        const std::size_t first = decoding::index().layouts.at(&layout);
        for (std::size_t i = 0; i < layout.fieldCount && !found.isDone(); ++i) {
            const reports::Field &field = layout.fields[i];
            const std::size_t end = field.offset + reports::widthInBytes(field);
            const bool isInA = end <= bytesA.length;
            const bool isInB = end <= bytesB.length;
            const reports::Field *twin = twinOf(layout, field);
            if (twin && (field.scale ||
                         doesNotCount(*twin, first + std::size_t(twin - layout.fields), bytesA, bytesB)))
                continue;
            if (isInA || isInB)
                found.compareField(first + i, isInA ? valueOf(field, bytesA, first + i) : FieldValue(),
                                   isInB ? valueOf(field, bytesB, first + i) : FieldValue(), isInA, isInB);
        }
    }

    /// The field that shows the same bits scaled, or as they are. They are told once, as they are.
    static const reports::Field *twinOf(const reports::Layout &layout, const reports::Field &field)
    {
        const auto isTwin = [&field](const reports::Field &other) {
            return other.offset == field.offset && other.mask == field.mask &&
                   (other.scale != nullptr) != (field.scale != nullptr);
        };
        const reports::Field *end = layout.fields + layout.fieldCount;
        const reports::Field *twin = std::find_if(layout.fields, end, isTwin);
        return twin == end ? nullptr : twin;
    }

    bool doesNotCount(const reports::Field &scaled, std::size_t index, const reports::Bytes &bytesA,
                      const reports::Bytes &bytesB) const
    {
        return rules.isIgnored(index) ||
               (rules.hasRule(index) && rules.areEqual(index, valueOf(scaled, bytesA, index).decimal,
                                                       valueOf(scaled, bytesB, index).decimal));
    }

    static FieldValue valueOf(const reports::Field &field, const reports::Bytes &bytes, std::size_t index)
    {
        FieldValue value;
        value.index = index;
        value.number = reports::read(field, bytes);
        if (field.scale)
            value.decimal = field.scale->of(value.number);
        return value;
    }

    void compareCharacters()
    {
        const std::string_view textA = std::string_view(a.payload).substr(reports::textOffset);
        const std::string_view textB = std::string_view(b.payload).substr(reports::textOffset);
        if (textA == textB)
            return;
        std::string from;
        std::string to;
        decoding::appendQuoted(from, textA);
        decoding::appendQuoted(to, textB);
        found.add("characters", from, to);
    }

    /// Bits of a byte that belong to a field.
    static int coveredBits(const reports::Layout &layout, std::size_t byte)
    {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < layout.fieldCount; ++i) {
            const reports::Field &field = layout.fields[i];
            for (unsigned significance = 0; significance < reports::widthInBytes(field); ++significance) {
                if (reports::byteIndex(field, significance) == byte)
                    bits |= field.mask >> (8 * significance);
            }
        }
        return static_cast<int>(bits & 0xFF);
    }

    /// Calls, returns and hot-plug notifications.
    void compareCalls()
    {
        if (a.payload == b.payload && a.length == b.length)
            return;
        std::vector<FieldValue> valuesA;
        std::vector<FieldValue> valuesB;
        decoding::fieldsOf(recordOf(a), valuesA);
        decoding::fieldsOf(recordOf(b), valuesB);
        auto atA = firstArgument(valuesA);
        auto atB = firstArgument(valuesB);
        while (atA != valuesA.end() || atB != valuesB.end()) {
            const bool isInA = atB == valuesB.end() || (atA != valuesA.end() && atA->index <= atB->index);
            const bool isInB = atA == valuesA.end() || (atB != valuesB.end() && atB->index <= atA->index);
            found.compareField(isInA ? atA->index : atB->index, isInA ? *atA : FieldValue(),
                               isInB ? *atB : FieldValue(), isInA, isInB);
            atA += isInA ? 1 : 0;
            atB += isInB ? 1 : 0;
        }
        if (!found.hasFields())
            compareRest();
    }

    static std::vector<FieldValue>::const_iterator firstArgument(const std::vector<FieldValue> &values)
    {
        return std::find_if(values.begin(), values.end(), [](const FieldValue &value) {
            return decoding::allFields()[value.index].name.find('.') != std::string::npos;
        });
    }

    /// What no field shows, such as null beside an empty text.
    void compareRest()
    {
        if (a.length != b.length)
            found.add("length", std::to_string(a.length), std::to_string(b.length));
        found.compareBytes("byte ", a.payload, b.payload);
    }

    static reports::Bytes bytesOf(const Packet &packet)
    {
        const capture::ByteView view = capture::viewOf(packet.payload);
        return {view.data, view.size};
    }

    const Packet &a;
    const Packet &b;
    const FieldRules &rules;
    Findings found;
};

} // namespace

bool areEqual(const Packet &a, const Packet &b, const FieldRules &rules)
{
    if (a.hash != b.hash)
        return false;
    return areIdentical(a, b) || (!rules.isEmpty() && !FieldSearch(a, b, rules, nullptr).findAny());
}

std::string differencesOf(const Packet &a, const Packet &b, const FieldRules &rules)
{
    std::string text;
    if (!areIdentical(a, b))
        FieldSearch(a, b, rules, &text).findAny();
    return text;
}

} // namespace comparing
