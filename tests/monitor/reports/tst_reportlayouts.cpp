#include <cstdint>

#include <QTest>

#include "layouts.h"
#include "support/datalines.h"
#include "support/tests.h"

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

const Layout *layoutOf(int type, int subType)
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
    QTest::addColumn<QStringList>("expected");
    for (const QStringList &line : dataLines(TEST_FOLDER "/layouts.txt", 6, 6))
        addRow(qPrintable(line[0]), QStringList(line.mid(1)));
}

void ReportLayouts::layoutHasExactlyItsFields()
{
    QFETCH(QStringList, expected);
    const Layout *layout = layoutOf(expected[1].toInt(), expected[2].toInt());
    QVERIFY(layout);
    QCOMPARE(layout->report, expected[0]);
    QCOMPARE(int{layout->sentLength}, expected[3].toInt());
    const QStringList fields = expected[4].split(", ");
    QCOMPARE(static_cast<int>(layout->fieldCount), fields.size());

    const Distinct report;
    for (const QString &one : fields) {
        const Field *field = fieldOf(*layout, one.section(' ', 0, 0).toLatin1());
        QVERIFY2(field, qPrintable(one));
        const QString value = one.section(' ', 1);
        const auto bits = static_cast<std::uint32_t>(reports::read(*field, {report.bytes, 40}));
        const std::uint32_t span = 0xFFFFFFFF >> (32 - 8 * widthInBytes(*field));
        QVERIFY2((bits & span) == value.mid(1).toUInt(nullptr, 16), qPrintable(one));
        QVERIFY2(value[0] == (field->sign == Signed ? 's' : 'u'), qPrintable(one));
    }
}

void ReportLayouts::noOtherLayout()
{
    QCOMPARE(sizeof layouts / sizeof layouts[0], std::size_t{11});
    QCOMPARE(int{SignalReport}, 47);
    QCOMPARE(int{TextReport}, 50);
    QCOMPARE(int{PhaseReport}, 104);
    QCOMPARE(int{TextOrAdcReport}, 119);
    QCOMPARE(int{PenIdentityReport}, 162);
    QCOMPARE(int{DualPenReport}, 163);
    QCOMPARE(int{PositionReport}, 164);
    QCOMPARE(textOffset, std::size_t{2});
}

PADSCOPE_TESTS(ReportLayouts);
#include "tst_reportlayouts.moc"
