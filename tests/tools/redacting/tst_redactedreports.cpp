#include <random>

#include "redacted.h"
#include "support/tests.h"

/// What is left of a report.
class RedactedReportsTests : public QObject
{
    Q_OBJECT

private slots:
    void layouts_data();
    void layouts();
    void positionsCannotBeTold_data();
    void positionsCannotBeTold();
    void others_data();
    void others();
    void flags();
    void summary();
};

namespace {

QByteArray zeros(int count)
{
    return QByteArray(count, '\0');
}

QByteArray ones(int count)
{
    return QByteArray(count, '\xFF');
}

void addLayouts()
{
    addColumns<QByteArray, QByteArray>("header", "kept"); // a bit of `kept` is 1 where the report's is kept
    const auto add = [](const char *name, const char *header, const QByteArray &behind) {
        const QByteArray bytes = fromHex(header);
        addRow(name, bytes, ones(bytes.size()) + behind);
    };
    add("signal-1", "282f01", zeros(34) + ones(2) + zeros(1));
    add("signal-2", "282f02", zeros(17) + ones(1) + zeros(19));
    add("signal-3", "0e2f03", ones(2) + zeros(1) + ones(2) + zeros(1) + ones(2) + zeros(1) + ones(2));
    add("signal-4", "0a2f04", zeros(6) + ones(1));
    add("signal-5", "102f05", zeros(6) + ones(1) + zeros(6));
    add("signal-6", "192f06", ones(22));
    add("signal without fields", "282f07", zeros(37));
    add("phase", "2868", zeros(24) + ones(8) + zeros(6));
    add("pen-identity", "09a2", ones(7));
    add("dual-pen", "1aa3", ones(2) + zeros(8) + ones(2) + zeros(10) + ones(2));
    add("position", "1fa4", ones(5) + zeros(24));
    add("adc", "34770c", ones(1) + "\x03" + zeros(47));
    add("unknown", "0801", zeros(6));
}

QByteArray masked(QByteArray bytes, const QByteArray &mask)
{
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = char(bytes[i] & (i < mask.size() ? mask[i] : 0));
    return bytes;
}

} // namespace

void RedactedReportsTests::layouts_data()
{
    addLayouts();
}

/// Whole, cut at each byte behind length and type, and longer than it is known.
void RedactedReportsTests::layouts()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, kept);
    const QByteArray whole = header + ones(kept.size() - header.size()) + ones(9);
    for (int size = 2; size <= whole.size(); ++size) {
        const bool isUnknown = header == fromHex("0801");
        const Redacted left = redacted(report(whole.left(size)), isUnknown ? 8 : -1);
        QCOMPARE(left.payload.toHex(' '), masked(whole.left(size), kept).toHex(' '));
        QCOMPARE(left.isEdited, left.payload != whole.left(size));
    }
}

void RedactedReportsTests::positionsCannotBeTold_data()
{
    addLayouts();
}

/// Of two reports that differ only in what is blanked nothing differs, the flag included.
void RedactedReportsTests::positionsCannotBeTold()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, kept);
    std::mt19937 random(1);
    const auto randomReport = [&] {
        QByteArray bytes = header;
        while (bytes.size() < kept.size())
            bytes += char(random());
        return bytes;
    };
    for (int i = 0; i < 100; ++i) {
        const QByteArray one = randomReport();
        QByteArray other = randomReport();
        for (int at = 0; at < one.size(); ++at)
            other[at] = char((one[at] & kept[at]) | (other[at] & ~kept[at]));
        const Redacted left = redacted(report(one));
        QCOMPARE(left.payload, masked(one, kept));
        QCOMPARE(redacted(report(other)).payload, left.payload);
        QCOMPARE(redacted(report(other)).header, left.header);
    }
}

void RedactedReportsTests::others_data()
{
    addColumns<QByteArray, int, QByteArray>("payload", "lengthBefore", "left");
    addRow("nothing", QByteArray(), 0, QByteArray());
    addRow("a byte", fromHex("01"), 1, fromHex("01"));
    addRow("an unknown type", fromHex("040141ff"), 4, fromHex("04010000"));
    addRow("one that was cut", fromHex("300141ff"), 48, fromHex("30010000"));
    addRow("one whose first byte is no length", fromHex("050141ff"), 4, fromHex("00000000"));
    addRow("a length that its type forbids", fromHex("632f0141ff"), 5, fromHex("632f000000"));
    addRow("text without words", fromHex("0532") + "Hi!", 5, fromHex("0532") + "Hi!");
    addRow("text with words", fromHex("0c77") + "1a2b 3c4d\r", 12, fromHex("0c77") + "0000 0000\r");
}

void RedactedReportsTests::others()
{
    QFETCH(QByteArray, payload);
    QFETCH(int, lengthBefore);
    const Redacted left = redacted(report(payload), lengthBefore);
    QTEST(left.payload, "left");
    QCOMPARE(left.isEdited, left.payload != payload);
}

/// "Edited" comes with what is blanked, even if it was zero; the others stay, and so does the rest.
void RedactedReportsTests::flags()
{
    const QByteArray position = fromHex("1fa4") + zeros(29);
    const QByteArray packet = packetBytes(1, 1 + 4 + 64, 0, -7, 0, position, 3, 2, 99);
    const Redacted left = redacted(packet);
    QCOMPARE(left.header, packetBytes(1, 1 + 4 + 64 + 128, 0, -7, 0, {}, 3, 2, 99));
    QCOMPARE(left.payload, position);
}

void RedactedReportsTests::summary()
{
    redacting::Redactor redactor;
    redacted(redactor, report(fromHex("1fa4") + zeros(29), 0));
    redacted(redactor, report(fromHex("0332") + "a", 1));
    redacted(redactor, report(fromHex("0432") + "11", 2));
    redacted(redactor, report(fromHex("0432") + "22", 3));
    const auto &entries = redactor.entries();
    QCOMPARE(entries.size(), 2U);
    const redacting::Entry &position = entries.at("position");
    QCOMPARE(position.count, 1U);
    QCOMPARE(position.edited, 1U);
    QCOMPARE(position.blanked,
             std::string("x, y, fineX, fineY, xPitchNumber, yPitchNumber, driveX, polarityX, "
                         "driveY, polarityY"));
    QCOMPARE(position.left, std::string("quality, proximity"));
    QCOMPARE(entries.at("text").count, 3U);
    QCOMPARE(entries.at("text").edited, 3U);
}

PADSCOPE_TESTS(RedactedReportsTests);
#include "tst_redactedreports.moc"
