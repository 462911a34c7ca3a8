#pragma once

#include <string>

namespace redacting {

/// The text that a board sends, of which a line may span reports.
///
/// A line with the phase components of the signals has twelve hexadecimal words. Any line is taken for one
/// that has nothing but hexadecimal digits, blanks, signs and asterisks, as the rest of a line has whose
/// beginning is not there, or at least three words of four digits. A line ends at a carriage return, a line
/// feed or an exclamation mark.
class TextLines
{
public:
    /// Replaces the digits of words by zeros.
    /// \return whether there were any
    bool blank(std::string &text);

private:
    std::string begun; ///< what the last reports have of the line, as it came
};

} // namespace redacting
