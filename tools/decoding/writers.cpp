#include "writers.h"

#include <cerrno>

#include "recordtext.h"

namespace decoding {

namespace {

constexpr std::size_t pieceSize = 64 * 1024;

void appendCsv(std::string &line, const std::string &text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        line += text;
        return;
    }
    line += '"';
    for (const char character : text) {
        if (character == '"')
            line += '"';
        line += character;
    }
    line += '"';
}

/// Texts are UTF-8 without control characters.
void appendJson(std::string &line, const std::string &text)
{
    line += '"';
    for (const char character : text) {
        if (character == '"' || character == '\\')
            line += '\\';
        line += character;
    }
    line += '"';
}

/// In JSON; a number of 64 bits does not fit every reader's numbers.
bool isQuoted(const FieldInfo &info)
{
    return info.type == FieldType::Bytes || info.type == FieldType::Hexadecimal || info.bits == 64;
}

} // namespace

Writer::Writer(const WriterOptions &writerOptions, std::FILE *stream)
    : options(writerOptions)
    , times(writerOptions.time)
    , output(stream)
{
    lines.left = options.limit;
}

void Writer::begin()
{
    if (options.format != Format::Csv)
        return;
    lines.text += "frame,time";
    for (const FieldInfo &field : allFields())
        (lines.text += ',') += field.name;
    lines.text += '\n';
}

void Writer::follow(const capture::Record &record)
{
    times.follow(record);
    if (options.format == Format::Rows)
        rowsOf(record).follow(record, lines);
}

void Writer::write(const capture::Record &record, bool isWanted)
{
    if (options.format == Format::Rows) {
        if (record.header.kindOf() == capture::Kind::Report)
            rowsOf(record).show(record, times.timeOfDayMs(record), isWanted, lines);
        flushLarge();
        return;
    }
    if (isFull() || !isWanted)
        return;
    --lines.left;
    switch (options.format) {
    case Format::Csv:
        writeCsv(record);
        break;
    case Format::JsonLines:
        writeJson(record);
        break;
    default:
        writeText(record);
        break;
    }
    lines.text += '\n';
    flushLarge();
}

void Writer::finish()
{
    for (auto &[session, rows] : sessions)
        rows.finish(lines);
}

bool Writer::flush()
{
    const std::size_t size = lines.text.size();
    if (error == 0 && (std::fwrite(lines.text.data(), 1, size, output) != size || std::fflush(output) != 0))
        error = errno;
    lines.text.clear();
    errno = error;
    return error == 0;
}

void Writer::flushLarge()
{
    if (lines.text.size() >= pieceSize)
        flush();
}

MonitorRows &Writer::rowsOf(const capture::Record &record)
{
    return sessions.try_emplace(record.header.session, options.thresholdMs).first->second;
}

void Writer::writeText(const capture::Record &record)
{
    lines.text += times.textOf(record);
    lines.text += "  ";
    lines.text += boardOf(record);
    lines.text += "  ";
    lines.text += textOf(record);
}

void Writer::writeCsv(const capture::Record &record)
{
    fieldsOf(record, values);
    appendDecimal(lines.text, record.frame);
    lines.text += ',';
    lines.text += times.textOf(record);
    std::size_t next = 0;
    for (const FieldValue &value : values) {
        lines.text.append(value.index + 1 - next, ',');
        next = value.index + 1;
        if (allFields()[value.index].type == FieldType::Text)
            appendCsv(lines.text, value.text);
        else
            appendPrinted(lines.text, value);
    }
    lines.text.append(allFields().size() - next, ',');
}

void Writer::writeJson(const capture::Record &record)
{
    fieldsOf(record, values);
    lines.text += "{\"frame\":";
    appendDecimal(lines.text, record.frame);
    lines.text += ",\"time\":\"";
    lines.text += times.textOf(record);
    lines.text += '"';
    for (const FieldValue &value : values) {
        const FieldInfo &info = allFields()[value.index];
        ((lines.text += ",\"") += info.name) += "\":";
        if (info.type == FieldType::Text) {
            appendJson(lines.text, value.text);
            continue;
        }
        const char *quote = isQuoted(info) ? "\"" : "";
        lines.text += quote;
        appendPrinted(lines.text, value);
        lines.text += quote;
    }
    lines.text += '}';
}

} // namespace decoding
