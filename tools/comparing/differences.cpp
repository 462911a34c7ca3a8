#include "differences.h"

#include <algorithm>
#include <string_view>

#include "decoding.h"
#include "escaping.h"
#include "fieldindex.h"
#include "lines.h"

namespace comparing {

namespace {

using capture::Kind;
using decoding::FieldType;
using decoding::FieldValue;

constexpr char none[] = "none"; ///< in place of the value of a field that is cut off

std::string_view shortName(std::size_t field)
{
    const std::string_view name = decoding::allFields()[field].name;
    const std::size_t dot = name.find('.');
    return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

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

/// Finds what differs between two packets. Without a text to append to it ends at the first difference.
class Search
{
public:
    Search(const Packet &first, const Packet &second, const FieldRules &fieldRules, std::string *appendTo)
        : a(first)
        , b(second)
        , rules(fieldRules)
        , text(appendTo)
    {
    }

    bool findAny()
    {
        compareHeaders();
        if (isDone())
            return true;
        if (a.kind == Kind::Report)
            compareReports();
        else
            compareCalls();
        return isFound;
    }

private:
    bool isDone() const { return isFound && !text; }

    void compareHeaders()
    {
        if (a.call != b.call)
            add("call", std::to_string(a.call), std::to_string(b.call));
        if (a.flags != b.flags)
            addBytes("flags", a.flags, b.flags);
        if (a.result != b.result && !rules.areEqual(resultField(), a.result, b.result))
            add("result", std::to_string(a.result), std::to_string(b.result));
        if (a.length == b.length && a.payload.size() != b.payload.size())
            add("kept length", std::to_string(a.payload.size()), std::to_string(b.payload.size()));
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
            add("length", std::to_string(a.length), std::to_string(b.length));
        if (layout)
            compareFields(*layout, bytesA, bytesB);
        if (isText)
            compareCharacters();
        const std::size_t textBegin = isText ? reports::textOffset : std::string::npos;
        const std::size_t end = std::min({a.payload.size(), b.payload.size(), textBegin});
        for (std::size_t i = followsFromLength(bytesA.at(0), bytesB.at(0)) ? 1 : 0; i < end && !isDone();
             ++i) {
            const int differing = bytesA.at(i) ^ bytesB.at(i);
            if (differing != 0 && (!layout || (differing & ~coveredBits(*layout, i)) != 0))
                compareUncovered(i, bytesA.at(i), bytesB.at(i));
        }
    }

    /// A byte that differs and is in no field of a layout.
    void compareUncovered(std::size_t offset, int from, int to)
    {
        if (offset >= FieldRules::headerSize)
            addByte("byte ", offset, from, to);
        else if (!rules.areEqual(FieldRules::headerField(offset), from, to))
            add(FieldRules::headerName(offset), std::to_string(from), std::to_string(to));
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
        for (std::size_t i = 0; i < layout.fieldCount && !isDone(); ++i) {
            const reports::Field &field = layout.fields[i];
            const std::size_t end = field.offset + reports::widthInBytes(field);
            const bool isInA = end <= bytesA.length;
            const bool isInB = end <= bytesB.length;
            const reports::Field *twin = twinOf(layout, field);
            if (twin && (field.scale ||
                         doesNotCount(*twin, first + std::size_t(twin - layout.fields), bytesA, bytesB)))
                continue;
            if (isInA || isInB)
                compareField(first + i, isInA ? valueOf(field, bytesA, first + i) : FieldValue(),
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
        add("characters", from, to);
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
            compareField(isInA ? atA->index : atB->index, isInA ? *atA : FieldValue(),
                         isInB ? *atB : FieldValue(), isInA, isInB);
            atA += isInA ? 1 : 0;
            atB += isInB ? 1 : 0;
        }
        if (!hasOtherFields)
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
            add("length", std::to_string(a.length), std::to_string(b.length));
        compareBytes("byte ", a.payload, b.payload);
    }

    void compareField(std::size_t field, const FieldValue &valueA, const FieldValue &valueB, bool isInA,
                      bool isInB)
    {
        const FieldType type = decoding::allFields()[field].type;
        const bool isDecimal = type == FieldType::Decimal;
        if (isInA && isInB && valueA.number == valueB.number && valueA.text == valueB.text)
            return;
        hasOtherFields = true;
        if (rules.isIgnored(field))
            return;
        const std::string name(shortName(field));
        if (isInA && isInB) {
            const auto number = [isDecimal](const FieldValue &value) {
                return isDecimal ? value.decimal : static_cast<double>(value.number);
            };
            if (type == FieldType::Bytes) {
                if (valueA.text.size() != valueB.text.size())
                    add(name + " length", std::to_string(valueA.text.size()),
                        std::to_string(valueB.text.size()));
                compareBytes(name + " byte ", valueA.text, valueB.text);
                return;
            }
            if (type != FieldType::Text && rules.areEqual(field, number(valueA), number(valueB)))
                return;
        }
        add(name, isInA ? printed(valueA) : none, isInB ? printed(valueB) : none);
    }

    static std::string printed(const FieldValue &value)
    {
        std::string shown;
        decoding::appendPrinted(shown, value);
        if (decoding::allFields()[value.index].type != FieldType::Text)
            return shown;
        for (std::size_t at = shown.find('"'); at != std::string::npos; at = shown.find('"', at + 2))
            shown.insert(at, 1, '\\');
        return '"' + shown + '"';
    }

    void compareBytes(const std::string &name, std::string_view bytesA, std::string_view bytesB)
    {
        for (std::size_t i = 0; i < std::min(bytesA.size(), bytesB.size()) && !isDone(); ++i) {
            if (bytesA[i] != bytesB[i])
                addByte(name, i, static_cast<unsigned char>(bytesA[i]),
                        static_cast<unsigned char>(bytesB[i]));
        }
    }

    static reports::Bytes bytesOf(const Packet &packet)
    {
        const capture::ByteView view = capture::viewOf(packet.payload);
        return {view.data, view.size};
    }

    void addByte(std::string_view name, std::size_t offset, int from, int to)
    {
        addBytes(std::string(name) + std::to_string(offset), from, to);
    }

    void addBytes(std::string_view name, int from, int to)
    {
        constexpr char digits[] = "0123456789abcdef";
        const auto hex = [&digits](int byte) {
            return std::string{digits[byte >> 4 & 15], digits[byte & 15]};
        };
        add(name, hex(from), hex(to));
    }

    void add(std::string_view name, const std::string &from, const std::string &to)
    {
        isFound = true;
        if (!text)
            return;
        if (!text->empty())
            *text += ", ";
        ((((*text += name) += ' ') += from) += " -> ") += to;
    }

    const Packet &a;
    const Packet &b;
    const FieldRules &rules;
    std::string *text;
    bool isFound = false;
    bool hasOtherFields = false; ///< also those whose difference does not count
};

} // namespace

bool areEqual(const Packet &a, const Packet &b, const FieldRules &rules)
{
    if (a.hash != b.hash)
        return false;
    return areIdentical(a, b) || (!rules.isEmpty() && !Search(a, b, rules, nullptr).findAny());
}

std::string differencesOf(const Packet &a, const Packet &b, const FieldRules &rules)
{
    std::string text;
    if (!areIdentical(a, b))
        Search(a, b, rules, &text).findAny();
    return text;
}

} // namespace comparing
