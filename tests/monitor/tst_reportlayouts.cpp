#include <cstdint>
#include <vector>

#include <QTest>

#include "layouts.h"
#include "support/testmain.h"

using namespace reports;

namespace {

// Report byte i holds 0x80 + i, so that each value names the bytes it was read from.
struct Distinct
{
    Distinct()
    {
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            bytes[i] = static_cast<unsigned char>(0x80 + i);
    }
    unsigned char bytes[40];
};

const Layout *layoutOf(Type type, int subType)
{
    for (const Layout *candidate : layouts) {
        if (candidate->type == type && candidate->subType == subType)
            return candidate;
    }
    return nullptr;
}

const Field *fieldOf(const Layout &layout, const QByteArray &name)
{
    for (std::size_t i = 0; i < layout.fieldCount; ++i) {
        if (name == layout.fields[i].name)
            return &layout.fields[i];
    }
    return nullptr;
}

// A field and the unsigned value of its bytes in a report of distinct bytes: hexadecimal digits in the order
// from the highest byte to the lowest.
struct Expected
{
    const char *name;
    std::uint32_t value;
    char sign; // 's' or 'u'
};

struct ExpectedLayout
{
    const char *title;
    const char *report;
    Type type;
    int subType;
    int sentLength;
    std::vector<Expected> fields;
};

const std::vector<ExpectedLayout> &expectedLayouts()
{
    static const std::vector<ExpectedLayout> all = {
        {"signal, fine and coarse",
         "SignalReport",
         SignalReport,
         1,
         40,
         {
             {"reportWord8", 0x8988, 'u'},
             {"reportWord10", 0x8b8a, 'u'},
             {"xFine0", 0x8e8d, 's'},
             {"xFine60", 0x908f, 's'},
             {"xFine120", 0x9291, 's'},
             {"yFine0", 0x9493, 's'},
             {"yFine60", 0x9695, 's'},
             {"yFine120", 0x9897, 's'},
             {"xCoarse0", 0x9a99, 's'},
             {"xCoarse60", 0x9c9b, 's'},
             {"xCoarse120", 0x9e9d, 's'},
             {"yCoarse0", 0xa09f, 's'},
             {"yCoarse60", 0xa2a1, 's'},
             {"yCoarse120", 0xa4a3, 's'},
             {"frequencyRaw", 0xa6a5, 's'},
         }},
        {"signal, raw and normalised",
         "SignalReport",
         SignalReport,
         2,
         40,
         {
             {"raw0", 0x8e8d, 's'},
             {"raw60", 0x908f, 's'},
             {"raw120", 0x9291, 's'},
             {"integrations", 0x94, 'u'},
             {"norm0", 0x9796, 's'},
             {"norm60", 0x9998, 's'},
             {"norm120", 0x9b9a, 's'},
         }},
        {"signal, quality summary",
         "SignalReport",
         SignalReport,
         3,
         14,
         {
             {"qualityFlag", 0x83, 'u'},
             {"qualityPass", 0x84, 'u'},
             {"averageQuality", 0x8786, 's'},
             {"minimumQuality", 0x8a89, 's'},
             {"maximumQuality", 0x8d8c, 's'},
         }},
        {"signal, integrators",
         "SignalReport",
         SignalReport,
         4,
         10,
         {
             {"integrator0", 0x8483, 's'},
             {"integrator60", 0x8685, 's'},
             {"integrator120", 0x8887, 's'},
             {"integrations", 0x89, 'u'},
         }},
        {"signal, integrators and normalised",
         "SignalReport",
         SignalReport,
         5,
         16,
         {
             {"integrator0", 0x8483, 's'},
             {"integrator60", 0x8685, 's'},
             {"integrator120", 0x8887, 's'},
             {"integrations", 0x89, 'u'},
             {"norm0", 0x8b8a, 's'},
             {"norm60", 0x8d8c, 's'},
             {"norm120", 0x8f8e, 's'},
         }},
        {"signal, quality and counters",
         "SignalReport",
         SignalReport,
         6,
         25,
         {
             {"qualityX", 0x8483, 's'},
             {"qualityY", 0x8685, 's'},
             {"qualityAverage", 0x8887, 's'},
             {"qualityMinimum", 0x8a89, 's'},
             {"qualityMaximum", 0x8c8b, 's'},
             {"riseX", 0x8e8d, 'u'},
             {"fullX", 0x9291908f, 'u'},
             {"riseY", 0x9493, 'u'},
             {"fullY", 0x98979695, 'u'},
         }},
        {"phase",
         "PhaseReport",
         PhaseReport,
         0,
         40,
         {
             {"xRs0", 0x8283, 's'},      {"xRs60", 0x8485, 's'},      {"xRs120", 0x8687, 's'},
             {"xFull0", 0x8889, 's'},    {"xFull60", 0x8a8b, 's'},    {"xFull120", 0x8c8d, 's'},
             {"yRs0", 0x8e8f, 's'},      {"yRs60", 0x9091, 's'},      {"yRs120", 0x9293, 's'},
             {"yFull0", 0x9495, 's'},    {"yFull60", 0x9697, 's'},    {"yFull120", 0x9899, 's'},
             {"xRsCount", 0x9a, 'u'},    {"yRsCount", 0x9b, 'u'},     {"xFnCount", 0x9c, 'u'},
             {"yFnCount", 0x9d, 'u'},    {"xQuality", 0x9f9e, 's'},   {"yQuality", 0xa1a0, 's'},
             {"dcOffset0", 0xa3a2, 's'}, {"dcOffset60", 0xa5a4, 's'}, {"dcOffset120", 0xa7a6, 's'},
         }},
        {"pen identity",
         "PenIdentityReport",
         PenIdentityReport,
         0,
         9,
         {
             {"penKind", 0x8483, 'u'},
             {"quality", 0x8685, 's'},
             {"buttons", 0x8887, 's'},
         }},
        {"dual pen",
         "DualPenReport",
         DualPenReport,
         0,
         26,
         {
             {"penNumber", 0x8382, 'u'},
             {"pen1X", 0x87868584, 's'},
             {"pen1Y", 0x8b8a8988, 's'},
             {"pen1Flags", 0x8d8c, 'u'},
             {"pen2X", 0x93929190, 's'},
             {"pen2Y", 0x97969594, 's'},
             {"pen2Flags", 0x9998, 'u'},
         }},
        {"position",
         "PositionReport",
         PositionReport,
         0,
         31,
         {
             {"quality", 0x8483, 'u'},
             {"proximity", 0x8685, 'u'},
             {"x", 0x8a898887, 's'},
             {"y", 0x8e8d8c8b, 's'},
             {"fineX", 0x908f, 'u'},
             {"fineY", 0x9291, 'u'},
             {"xPitchNumber", 0x9493, 'u'},
             {"yPitchNumber", 0x9695, 'u'},
             {"driveX", 0x9897, 'u'},
             {"polarityX", 0x9a99, 'u'},
             {"driveY", 0x9c9b, 'u'},
             {"polarityY", 0x9e9d, 'u'},
         }},
        {"voltage",
         "AdcReport",
         TextOrAdcReport,
         12,
         52,
         {
             {"adcRaw", 0x0083, 'u'},
             {"volts", 0x0083, 'u'},
         }},
    };
    return all;
}

} // namespace

/// Where the fields of every report stand.
class ReportLayouts : public QObject
{
    Q_OBJECT

private slots:
    void layoutHasExactlyItsFields_data();
    void layoutHasExactlyItsFields();
    void noOtherLayout();
};

void ReportLayouts::layoutHasExactlyItsFields_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < expectedLayouts().size(); ++i)
        QTest::newRow(expectedLayouts()[i].title) << static_cast<int>(i);
}

void ReportLayouts::layoutHasExactlyItsFields()
{
    QFETCH(int, index);
    const ExpectedLayout &expected = expectedLayouts()[static_cast<std::size_t>(index)];
    const Layout *layout = layoutOf(expected.type, expected.subType);
    QVERIFY(layout);
    QCOMPARE(layout->report, expected.report);
    QCOMPARE(int{layout->sentLength}, expected.sentLength);
    QCOMPARE(layout->fieldCount, expected.fields.size());

    const Distinct report;
    for (const Expected &one : expected.fields) {
        const Field *field = fieldOf(*layout, one.name);
        QVERIFY2(field, one.name);
        const auto bits = static_cast<std::uint32_t>(reports::read(*field, {report.bytes, 40}));
        const std::uint32_t span = 0xFFFFFFFF >> (32 - 8 * widthInBytes(*field));
        QVERIFY2((bits & span) == one.value, one.name);
        QVERIFY2(field->sign == (one.sign == 's' ? Signed : Unsigned), one.name);
    }
}

void ReportLayouts::noOtherLayout()
{
    QCOMPARE(sizeof layouts / sizeof layouts[0], expectedLayouts().size());
    QCOMPARE(int{SignalReport}, 47);
    QCOMPARE(int{TextReport}, 50);
    QCOMPARE(int{PhaseReport}, 104);
    QCOMPARE(int{TextOrAdcReport}, 119);
    QCOMPARE(int{PenIdentityReport}, 162);
    QCOMPARE(int{DualPenReport}, 163);
    QCOMPARE(int{PositionReport}, 164);
    QCOMPARE(textOffset, std::size_t{2});
}

PADSCOPE_TEST_MAIN(ReportLayouts)
#include "tst_reportlayouts.moc"
