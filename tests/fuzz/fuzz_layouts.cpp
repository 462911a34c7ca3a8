#include "fuzz/fuzzing.h"
#include "layouts.h"

// Every field of every layout, against an input of any length: a missing byte reads as zero, a value stays in
// the range of its width, and what is written is read back.

namespace {

std::int64_t highest(const reports::Field &field)
{
    const std::int64_t span = std::int64_t{1} << (8 * reports::widthInBytes(field));
    return field.sign == reports::Signed ? span / 2 - 1 : span - 1;
}

std::int64_t lowest(const reports::Field &field)
{
    return field.sign == reports::Signed ? -highest(field) - 1 : 0;
}

void checkField(const reports::Field &field, const QByteArray &bytes)
{
    const auto *data = reinterpret_cast<const unsigned char *>(bytes.constData());
    const std::int64_t value = reports::read(field, {data, static_cast<std::size_t>(bytes.size())});
    fuzz::require(value >= lowest(field) && value <= highest(field), "a value is within its width");

    unsigned char whole[64] = {};
    std::copy(bytes.begin(), bytes.begin() + qMin(bytes.size(), 64), whole);
    fuzz::require(reports::read(field, {whole, sizeof whole}) == value, "a missing byte reads as zero");
    reports::write(field, value, whole);
    fuzz::require(reports::read(field, {whole, sizeof whole}) == value, "what is written is read back");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::Input(data, size).bytes(size);
    const auto *first = reinterpret_cast<const unsigned char *>(bytes.constData());
    for (const reports::Layout *layout : reports::layouts) {
        for (std::size_t i = 0; i < layout->fieldCount; ++i)
            checkField(layout->fields[i], bytes);
    }
    const auto adc = read(reports::adc["adcRaw"], {first, size});
    fuzz::require(adc <= 1023, "a reading has ten bits");
    return 0;
}
