#pragma once

#include <cstdio>
#include <string>

#include "fields.h"
#include "recordreader.h"
#include "times.h"

namespace decoding {

enum class Format
{
    Text,
    Csv,
    JsonLines,
};

/// Prints packets, a line each.
class Writer
{
public:
    Writer(Format chosen, TimeStyle style, std::FILE *stream);

    void begin();
    /// To be called for each packet, also those that are not shown.
    void follow(const capture::Record &record) { times.follow(record); }
    /// \return false when nobody reads any more
    bool write(const capture::Record &record);

    const Times &clock() const { return times; }

private:
    void writeText(const capture::Record &record);
    void writeCsv(const capture::Record &record);
    void writeJson(const capture::Record &record);

    Format format;
    Times times;
    std::FILE *output;
    std::string line;
    std::vector<FieldValue> values;
};

} // namespace decoding
