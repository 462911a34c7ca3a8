// Prints the reference page of the report layouts, docs/report-formats.md, from the tables that decode them.

#include <cstdio>

#include "layouts.h"

namespace {

const char *typeName(const reports::Field &field)
{
    const bool isSigned = field.sign == reports::Signed;
    switch (field.width) {
    case reports::Width::One:
        return isSigned ? "s8" : "u8";
    case reports::Width::Two:
        return isSigned ? "s16" : "u16";
    case reports::Width::Four:
        return isSigned ? "s32" : "u32";
    }
    return "";
}

void printField(const reports::Field &field)
{
    const unsigned last = field.offset + widthInBytes(field) - 1;
    if (last == field.offset)
        std::printf("| %u | %s", unsigned{field.offset}, typeName(field));
    else
        std::printf("| %u-%u | %s %s", unsigned{field.offset}, last, typeName(field),
                    field.order == reports::BigEndian ? "BE" : "LE");
    if (field.mask != 0xFFFFFFFF)
        std::printf(", only bits 0x%02X", static_cast<unsigned>(field.mask));
    std::printf(" | `%s` | %s", field.name, field.label);
    if (field.scale)
        std::printf(", × %g / %g %s", field.scale->factor, field.scale->divisor, field.scale->unit);
    if (field.names) {
        for (std::size_t i = 0; i < field.names->count; ++i)
            std::printf(", %d %s", static_cast<int>(field.names->names[i].value), field.names->names[i].name);
    }
    std::puts(" |");
}

void printLayout(const reports::Layout &layout)
{
    std::printf("\n## %s", layout.report);
    if (layout.subType != 0)
        std::printf(", sub-type %u", unsigned{layout.subType});
    std::printf("\n\nType %u (0x%02X), %u bytes.\n\n| Bytes | Type | Name | Label |\n|---|---|---|---|\n",
                unsigned{layout.type}, unsigned{layout.type}, unsigned{layout.sentLength});
    for (std::size_t i = 0; i < layout.fieldCount; ++i)
        printField(layout.fields[i]);
}

} // namespace

int main()
{
    std::puts("# Report formats\n\n"
              "Every report begins with its length (byte 0), its type (byte 1) and, where it has one, its "
              "sub-type\n"
              "(byte 2). LE is little-endian, BE big-endian; s is signed, u unsigned, with the width in "
              "bits. A byte\n"
              "that a short report lacks reads as zero. Bytes that no table names are not read. Reports of "
              "type 50,\n"
              "and those of type 119 that are no AdcReport, carry text from byte 2 on.\n\n"
              "This page is printed from `monitor/reports/layouts.h`; a test compares the two.");
    for (const reports::Layout *layout : reports::layouts)
        printLayout(*layout);
    return 0;
}
