#include <vector>

#include "decoding.h"
#include "support/tests.h"

Q_DECLARE_METATYPE(reports::Field)

using namespace reports;

/// How a field of a report is read and written.
class ReportFormats : public QObject
{
    Q_OBJECT

private slots:
    void read_data();
    void read();
    void missingByteReadsAsZero_data();
    void missingByteReadsAsZero();
    void write_data();
    void write();
    void headerFields();
    void everyPlaceOfAnOtherValueIsFilled();
};

namespace {

Bytes bytesOf(const QByteArray &report)
{
    return {reinterpret_cast<const unsigned char *>(report.constData()),
            static_cast<std::size_t>(report.size())};
}

} // namespace

void ReportFormats::read_data()
{
    addColumns<QByteArray, Field, qint64>("bytes", "field", "value");
    const auto row = [](const char *name, const char *bytes, const Field &field, qint64 value) {
        addRow(name, QByteArray::fromHex(bytes), field, value);
    };
    row("one byte", "ff", {"", "", 0, Width::One, Unsigned}, 255);
    row("one signed byte", "ff", {"", "", 0, Width::One, Signed}, -1);
    row("two bytes, low byte first", "00 01 02", {"", "", 1, Width::Two, Unsigned}, 0x0201);
    row("two bytes, high byte first", "00 01 02", {"", "", 1, Width::Two, Unsigned, BigEndian}, 0x0102);
    row("four bytes, low byte first", "01 02 03 04", {"", "", 0, Width::Four, Unsigned}, 0x04030201);
    row("four bytes, high byte first", "01 02 03 04", {"", "", 0, Width::Four, Unsigned, BigEndian},
        0x01020304);
    row("max of two signed bytes", "ff 7f", {"", "", 0, Width::Two, Signed}, 32767);
    row("min of two signed bytes", "00 80", {"", "", 0, Width::Two, Signed}, -32768);
    row("minus two, high byte first", "ff fe", {"", "", 0, Width::Two, Signed, BigEndian}, -2);
    row("the same bytes, low byte first", "ff fe", {"", "", 0, Width::Two, Signed}, -257);
    row("the same bytes, unsigned", "fe ff", {"", "", 0, Width::Two, Unsigned}, 65534);
    row("max of four signed bytes", "ff ff ff 7f", {"", "", 0, Width::Four, Signed}, 2147483647);
    row("min of four signed bytes", "00 00 00 80", {"", "", 0, Width::Four, Signed}, -2147483648LL);
    row("four bytes with every bit set, signed", "ff ff ff ff", {"", "", 0, Width::Four, Signed}, -1);
    row("four bytes with every bit set", "ff ff ff ff", {"", "", 0, Width::Four, Unsigned}, 4294967295LL);
    row("masked", "ff", {"", "", 0, Width::One, Unsigned, LittleEndian, 0x03}, 3);
    row("masked away", "fc", {"", "", 0, Width::One, Unsigned, LittleEndian, 0x03}, 0);
}

void ReportFormats::read()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Field, field);
    QTEST(qint64{reports::read(field, bytesOf(bytes))}, "value");
}

void ReportFormats::missingByteReadsAsZero_data()
{
    addColumns<int, qint64, qint64>("length", "littleEndian", "bigEndian");
    addRow("no byte at all", 0, qint64{0}, qint64{0});
    addRow("ends before the field", 2, qint64{0}, qint64{0});
    addRow("first byte only", 3, qint64{0xa1}, qint64{-0x5f000000});
    addRow("two bytes", 4, qint64{0xa2a1}, qint64{-0x5e5e0000});
    addRow("three bytes", 5, qint64{0xa3a2a1}, qint64{-0x5e5d5d00});
    addRow("whole", 6, qint64{-0x5b5c5d5f}, qint64{-0x5e5d5c5c});
}

void ReportFormats::missingByteReadsAsZero()
{
    QFETCH(int, length);
    const unsigned char whole[] = {0x11, 0x12, 0xa1, 0xa2, 0xa3, 0xa4};
    // On the heap and no longer than said, so that a sanitizer sees a byte read too far.
    const std::vector<unsigned char> bytes(whole, whole + length);
    const Bytes report{bytes.data(), bytes.size()};
    QTEST(qint64{reports::read({"", "", 2, Width::Four, Signed}, report)}, "littleEndian");
    QTEST(qint64{reports::read({"", "", 2, Width::Four, Signed, BigEndian}, report)}, "bigEndian");
}

void ReportFormats::write_data()
{
    addColumns<Field, qint64, QByteArray>("field", "value", "bytes");
    const auto row = [](const char *name, const Field &field, qint64 value, const char *bytes) {
        addRow(name, field, value, QByteArray::fromHex(bytes));
    };
    row("one byte", {"", "", 1, Width::One, Unsigned}, 0xab, "55 ab 55 55 55 55");
    row("low byte first", {"", "", 1, Width::Two, Unsigned}, 0x0102, "55 02 01 55 55 55");
    row("high byte first", {"", "", 1, Width::Two, Signed, BigEndian}, -2, "55 ff fe 55 55 55");
    row("four bytes", {"", "", 2, Width::Four, Signed}, -2147483648LL, "55 55 00 00 00 80");
    row("masked", {"", "", 0, Width::One, Unsigned, LittleEndian, 0x03}, 0xfe, "56 55 55 55 55 55");
}

void ReportFormats::write()
{
    QFETCH(Field, field);
    QFETCH(qint64, value);
    QByteArray bytes(6, '\x55');
    reports::write(field, value, reinterpret_cast<unsigned char *>(bytes.data()));
    QTEST(bytes, "bytes");
}

void ReportFormats::headerFields()
{
    const unsigned char report[] = {0xf1, 0xf2, 0xf3, 0xf4};
    QCOMPARE(qint64{reports::read(reportLength, {report, 4})}, qint64{0xf1});
    QCOMPARE(qint64{reports::read(reportType, {report, 4})}, qint64{0xf2});
    QCOMPARE(qint64{reports::read(reportSubType, {report, 4})}, qint64{0xf3});
    QCOMPARE(qint64{reports::read(reportType, {report, 1})}, qint64{0});
    QCOMPARE(qint64{reports::read(reportLength, {nullptr, 0})}, qint64{0});
}

void ReportFormats::everyPlaceOfAnOtherValueIsFilled()
{
    const Row row = fieldRow(bytesOf(QByteArray::fromHex("09 a2 00 0200")),
                             [](const char *) { return std::string("%1 (%1)"); });
    QCOMPARE(row.first.c_str(), "Q:              0     Button:            0 Pen:        2 (2)");
}

PADSCOPE_TESTS(ReportFormats);
#include "tst_reportformats.moc"
