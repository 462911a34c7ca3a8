#include "decoding.h"

#include <cctype>
#include <cstdlib>

namespace reports {

void noSuchField()
{
    std::abort();
}

void fieldIsBehindTheReport()
{
    std::abort();
}

void rowTextIsWrong() {}

namespace {

bool isAdc(const Bytes &bytes)
{
    return read(reportType, bytes) == adc.type && isAdcLength(read(reportLength, bytes)) &&
           read(reportSubType, bytes) == adc.subType;
}

bool isSentLength(Type type, std::int64_t length)
{
    for (const Layout *layout : layouts) {
        if (layout->type == type && layout->sentLength == length)
            return true;
    }
    return false;
}

} // namespace

const TypeRule *ruleOf(std::int64_t type)
{
    for (const TypeRule &rule : typeRules) {
        if (rule.type == type)
            return &rule;
    }
    return nullptr;
}

RateLimit rateLimitOf(std::int64_t type)
{
    const TypeRule *rule = ruleOf(type);
    return rule ? rule->rateLimit : RateLimit::None;
}

Form formOf(const Bytes &bytes)
{
    const TypeRule *rule = ruleOf(read(reportType, bytes));
    if (!rule || (rule->hasLengthRule && !isSentLength(rule->type, read(reportLength, bytes))))
        return Form::Raw;
    if (rule->type == TextReport || (rule->type == TextOrAdcReport && !isAdc(bytes)))
        return Form::Text;
    return Form::Row;
}

const Layout *layoutOf(const Bytes &bytes)
{
    if (formOf(bytes) != Form::Row)
        return nullptr;
    const auto type = read(reportType, bytes);
    for (const Layout *layout : layouts) {
        if (layout->type == type && (layout->subType == 0 || layout->subType == read(reportSubType, bytes)))
            return layout;
    }
    return nullptr;
}

Row fieldRow(const Bytes &bytes, Translate translate)
{
    const Layout *layout = layoutOf(bytes);
    if (!layout)
        return {};
    return {layout->first.filled(bytes, translate), layout->second.filled(bytes, translate)};
}

Row rawRow(const Bytes &bytes)
{
    static constexpr char digits[] = "0123456789abcdef";
    Row row;
    for (std::size_t i = 0; i < bytes.length; ++i) {
        const unsigned char byte = bytes.data[i];
        appendPrintable(row.first, byte);
        row.second += digits[byte >> 4];
        row.second += digits[byte & 15];
        row.second += ' ';
        if (i != 0 && i % 8 == 0)
            row.second += ' ';
    }
    return row;
}

void appendPrintable(std::string &text, unsigned char byte)
{
    if (!std::isprint(byte)) {
        text += '.';
    } else if (byte < 0x80) {
        text += static_cast<char>(byte);
    } else {
        text += static_cast<char>(0xC0 | (byte >> 6));
        text += static_cast<char>(0x80 | (byte & 0x3F));
    }
}

} // namespace reports
