#include "fuzz/fuzzing.h"
#include "layouts.h"

// Every field of every layout, against an input of any length: a missing byte reads as zero, a value stays in
// the range of its width, and what is written is read back.

namespace {

void checkField(const reports::Field &field, const reports::Bytes &bytes)
{
    const std::int64_t value = read(field, bytes);
    const std::int64_t span = std::int64_t{1} << (8 * reports::widthInBytes(field));
    const std::int64_t min = field.sign == reports::Signed ? -span / 2 : 0;
    fuzz::require(value >= min && value < min + span, "a value is within its width");

    unsigned char whole[64] = {};
    std::copy_n(bytes.data, std::min(bytes.length, sizeof whole), whole);
    fuzz::require(read(field, {whole, sizeof whole}) == value, "a missing byte reads as zero");
    reports::write(field, value, whole);
    fuzz::require(read(field, {whole, sizeof whole}) == value, "what is written is read back");
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    const reports::Bytes report{reinterpret_cast<const unsigned char *>(bytes.constData()),
                                static_cast<std::size_t>(bytes.size())};
    for (const reports::Layout *layout : reports::layouts) {
        for (std::size_t i = 0; i < layout->fieldCount; ++i)
            checkField(layout->fields[i], report);
    }
    require(read(reports::adc["adcRaw"], report) <= 1023, "a reading has ten bits");
}
