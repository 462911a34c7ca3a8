#include "writers.h"

#include "recordtext.h"

namespace decoding {

namespace {

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

bool isQuoted(const FieldInfo &info)
{
    return info.type == FieldType::Text || info.type == FieldType::Bytes ||
           info.type == FieldType::Hexadecimal || info.bits == 64;
}

} // namespace

Writer::Writer(Format chosen, TimeStyle style, std::FILE *stream)
    : format(chosen)
    , times(style)
    , output(stream)
{
}

void Writer::begin()
{
    if (format != Format::Csv)
        return;
    line = "frame,time";
    for (const FieldInfo &field : allFields())
        (line += ',') += field.name;
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), output);
}

bool Writer::write(const capture::Record &record)
{
    line.clear();
    switch (format) {
    case Format::Text:
        writeText(record);
        break;
    case Format::Csv:
        writeCsv(record);
        break;
    case Format::JsonLines:
        writeJson(record);
        break;
    }
    line += '\n';
    return std::fwrite(line.data(), 1, line.size(), output) == line.size();
}

void Writer::writeText(const capture::Record &record)
{
    line += times.textOf(record);
    line += "  ";
    line += boardOf(record);
    line += "  ";
    line += textOf(record);
}

void Writer::writeCsv(const capture::Record &record)
{
    fieldsOf(record, values);
    line += std::to_string(record.frame);
    line += ',';
    line += times.textOf(record);
    std::string printed;
    std::size_t next = 0;
    for (const FieldValue &value : values) {
        line.append(value.index + 1 - next, ',');
        next = value.index + 1;
        printed.clear();
        appendPrinted(printed, value);
        appendCsv(line, printed);
    }
    line.append(allFields().size() - next, ',');
}

void Writer::writeJson(const capture::Record &record)
{
    fieldsOf(record, values);
    line += "{\"frame\":" + std::to_string(record.frame) + ",\"time\":\"" + times.textOf(record) + '"';
    std::string printed;
    for (const FieldValue &value : values) {
        const FieldInfo &info = allFields()[value.index];
        ((line += ",\"") += info.name) += "\":";
        printed.clear();
        appendPrinted(printed, value);
        if (isQuoted(info))
            appendJson(line, printed);
        else
            line += printed;
    }
    line += '}';
}

} // namespace decoding
