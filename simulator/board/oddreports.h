#pragma once

#include "encoding.h"
#include "random.h"

/// Reports that no healthy board sends.
class OddReports
{
public:
    explicit OddReports(std::uint32_t seed)
        : random(seed)
    {
    }

    /// A report of a type that the tool has no layout for: 6 to 20 bytes.
    Report unknown();
    /// The next report of a kind from Kind::Garbage on.
    Report next(Kind kind);

private:
    Report garbage();
    Report allTypes();
    Report endlessText();
    Report longText();
    Report markupText();
    Report everyByteText();

    Report randomBytes(int length);

    Random random;
    int nextLength = 0;
    unsigned char nextType = 0;
    int nextLine = 0; ///< equal reports in a row are shown once
};
