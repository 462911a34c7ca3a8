#pragma once

#include <cstdio>
#include <map>
#include <optional>
#include <string>

#include "fields.h"
#include "lines.h"
#include "monitorrows.h"
#include "recordreader.h"
#include "times.h"

namespace decoding {

enum class Format
{
    Text,
    Rows, ///< as the Monitor's log has them
    Csv,
    JsonLines,
};

struct WriterOptions
{
    Format format = Format::Text;
    TimeStyle time = TimeStyle::Relative;
    std::optional<int> thresholdMs; ///< of rows
    std::uint64_t limit = noLimit;  ///< lines, or rows
};

/// Prints packets, a line each, or rows.
class Writer
{
public:
    Writer(const WriterOptions &writerOptions, std::FILE *stream);

    /// Prints the names of the columns, where there are any.
    void begin();
    /// To be called for each packet, also those that are not shown.
    void follow(const capture::Record &record);
    /// To be called for each packet, behind follow().
    /// \param isWanted whether it is printed; rows go by the others, too
    void write(const capture::Record &record, bool isWanted = true);
    /// To be called behind the last packet.
    void finish();

    /// Prints what is not printed yet; write() does so in large pieces only.
    /// \return false, with errno, when it can't be printed
    bool flush();

    bool canPrint() const { return error == 0; }
    bool isFull() const { return lines.left == 0; } ///< the limit is reached
    const Times &clock() const { return times; }

private:
    void writeText(const capture::Record &record);
    void writeCsv(const capture::Record &record);
    void writeJson(const capture::Record &record);
    MonitorRows &rowsOf(const capture::Record &record);
    void flushLarge();

    WriterOptions options;
    Times times;
    std::FILE *output;
    Lines lines;
    int error = 0;
    std::vector<FieldValue> values;
    std::map<std::uint32_t, MonitorRows> sessions;
};

} // namespace decoding
