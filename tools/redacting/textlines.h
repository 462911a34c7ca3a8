#pragma once

#include <string>

namespace redacting {

/// The text that a board sends, of which a line may span reports.
///
/// A line with the phase components of the signals has twelve hexadecimal words, but part of it may be lost
/// or damaged. So digits of every word are blanked, unless it has more than four letters, none but letters,
/// and two that are no hexadecimal digits, as "ready". A frequency behind its label is left.
class TextLines
{
public:
    /// Replaces digits by zeros. What was blanked stays as it is when it is blanked again.
    /// \return whether there were any
    bool blank(std::string &text);

private:
    std::string before; ///< end of what the last reports left, for a label that spans reports
};

} // namespace redacting
