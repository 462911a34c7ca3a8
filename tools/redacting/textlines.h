#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace redacting {

/// The text that a board sends, of which a line may span reports. A line ends with a line feed or "!".
///
/// A line with the phase components of the signals has twelve hexadecimal words, but part of it may be lost
/// or damaged. So digits of every word are blanked, unless the line is prose: its words of at least four
/// letters, and nothing else, have three or more letters, counted together, that are no hexadecimal digits,
/// and at most one of its words has four hexadecimal digits and nothing else. Of other lines words of more
/// than four letters, two of which are no hexadecimal digits, as "ready", and a frequency behind its label
/// are left.
class TextLines
{
public:
    /// Replaces digits by zeros. What was blanked stays as it is when it is blanked again.
    /// \return whether there were any
    bool blank(std::string &text);

private:
    struct Word
    {
        std::size_t size = 0;
        std::size_t digits = 0;       ///< 0 to 9
        std::size_t otherLetters = 0; ///< that are no hexadecimal digits

        void add(char character);
        std::size_t lettersOfProse() const;
        bool isNumber() const;
    };

    /// What has come of a line so far.
    struct Line
    {
        Word last;
        std::size_t otherLetters = 0; ///< of words of letters, but for the last word
        std::size_t numbers = 0;      ///< of four hexadecimal digits, but for the last word

        void add(std::string_view text);
        bool isProse() const;
    };

    Line line;
    std::string before; ///< end of what the last reports left, for a label that spans reports
};

} // namespace redacting
