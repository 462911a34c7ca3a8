#pragma once

#include <string>

namespace redacting {

/// The text that a board sends, of which a line may span reports.
///
/// A line with the phase components of the signals has twelve hexadecimal words, but part of it may be lost
/// or damaged. So a line loses all its hexadecimal digits from the first report on that has one of these in
/// the line: a decimal digit, or a word of letters with "a" to "f" of which not two are others. What stays is
/// a frequency behind its label. A line ends at a line feed or an exclamation mark.
class TextLines
{
public:
    /// Replaces digits by zeros. What was blanked stays as it is when it is blanked again.
    /// \return whether there were any
    bool blank(std::string &text);

private:
    std::string before;     ///< end of what the last reports left, for a label that spans reports
    bool hasNumber = false; ///< the line so far
};

} // namespace redacting
