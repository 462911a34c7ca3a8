#pragma once

#include <string>

#include "layouts.h"

namespace reports {

/// How the monitor shows a report.
enum class Form
{
    Raw,  ///< as characters and hexadecimal: an unknown type, or a length byte that its type forbids
    Text, ///< characters of a stream of lines
    Row,  ///< a row of fields, which is empty where the sub-type has none
};

/// \return null for an unknown type
const TypeRule *ruleOf(std::int64_t type);

RateLimit rateLimitOf(std::int64_t type);

Form formOf(const Bytes &bytes);

/// \return null for a report without fields
const Layout *layoutOf(const Bytes &bytes);

/// The texts of one row, in UTF-8.
struct Row
{
    std::string first;
    std::string second; ///< mostly empty
};

/// The row of a report of the form Row.
Row fieldRow(const Bytes &bytes, Translate translate);

/// Bytes as characters and in hexadecimal. The first group has nine bytes, every later one eight.
Row rawRow(const Bytes &bytes);

/// Appends a byte as rows show it, in UTF-8: itself when the process's character classification (LC_CTYPE)
/// can print it, otherwise a dot.
void appendPrintable(std::string &text, unsigned char byte);

/// A line is shown only if its end arrives more than this long after the previous packet.
inline constexpr int lineGapMs = 30;
/// Text without a line end is shown this long after the last text.
inline constexpr int lineFlushDelayMs = 300;

} // namespace reports
