#include <cstdint>
#include <QTest>

#include "layouts.h"
#include "support/datalines.h"
#include "support/tests.h"

using namespace reports;

/// Where the fields of every report stand.
class ReportLayouts : public QObject
{
    Q_OBJECT

private slots:
    void layoutHasExactlyItsFields_data();
    void layoutHasExactlyItsFields();
    void noOtherLayout();
};

namespace {

const Layout *layoutOf(int type, int subType)
{
    for (const Layout *candidate : layouts) {
        if (candidate->type == type && candidate->subType == subType)
            return candidate;
    }
    return nullptr;
}

/// Name, sign and value of a field, as the data file has them.
QString describe(const Field &field, const Bytes &report)
{
    const int digits = 2 * static_cast<int>(field.width);
    const QString value = QString("%1").arg(reports::read(field, report) & 0xFFFFFFFF, 8, 16, QChar('0'));
    return QString("%1 %2%3").arg(field.name, field.sign == Signed ? "s" : "u", value.right(digits));
}

} // namespace

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
    // Byte i holds 0x80 + i, so that each value names the bytes it was read from.
    unsigned char report[40];
    for (int i = 0; i < 40; ++i)
        report[i] = static_cast<unsigned char>(0x80 + i);
    QStringList fields;
    for (std::size_t i = 0; i < layout->fieldCount; ++i)
        fields += describe(layout->fields[i], {report, sizeof report});
    QCOMPARE(fields, expected[4].split(", "));
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
