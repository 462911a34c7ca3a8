#include <nlohmann/json.hpp>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>

#include "records.h"
#include "shark.h"
#include "support/datalines.h"
#include "support/tests.h"

namespace {

/// The cells of a table, of which quoted ones may have anything.
QList<QStringList> cells(const QString &csv)
{
    QList<QStringList> lines{{QString()}};
    bool isQuoted = false;
    for (int i = 0; i < csv.size(); ++i) {
        if (csv[i] == '"' && isQuoted && i + 1 < csv.size() && csv[i + 1] == '"')
            lines.last().last() += csv[++i];
        else if (csv[i] == '"')
            isQuoted = !isQuoted;
        else if (csv[i] == ',' && !isQuoted)
            lines.last().append(QString());
        else if (csv[i] == '\n' && !isQuoted)
            lines.append({QString()});
        else
            lines.last().last() += csv[i];
    }
    lines.removeLast();
    return lines;
}

QString textOf(const nlohmann::json &value)
{
    return QString::fromStdString(value.is_string() ? value.get<std::string>() : value.dump());
}

QByteArray report(const QByteArray &bytes)
{
    return packetBytes(1, 1, 0, 1001, 0, bytes, 3);
}

/// A packet of each kind, and a report of each layout.
QList<QByteArray> packetsOfEveryKind()
{
    using blocks::number;
    QList<QByteArray> packets;
    for (const char *begin : {"282f01", "282f02", "0e2f03", "0a2f04", "102f05", "192f06", "286801", "09a200",
                              "1aa300", "1fa400", "34770c", "3a770c"}) {
        QByteArray bytes = hex(begin);
        for (int i = bytes.size(); i < bytes[0]; ++i)
            bytes += char(37 * i + 0x85);
        packets += report(bytes);
    }
    packets += report(hex("09a20000000102030405"));
    packets += report(hex("0932") + "a\\b\"c\td,e'\r\n\x80\xFF!");
    packets += report(hex("0377") + QByteArray("a\0b", 3));
    packets += report(hex("0501020304"));
    packets += report(hex("282f09"));
    packets += report({});
    const QByteArray device = hex("e9030000");
    packets += packetBytes(2, 1, 6, 1001, 0, device + hex("0a000000") + "?\r\n\\\"\t\x01\xC3\xA4\xFF");
    packets += packetBytes(2, 5, 6, 1001, 0, device + hex("ffffffff"));
    packets += packetBytes(2, 1, 6, -1, 0, hex("ffffffff00000000"));
    packets += packetBytes(2, 1, 4, 1001, 0, device + hex("02000000"));
    packets += packetBytes(2, 1, 7, 1001, 0, device + hex("0300000000ff8003000000"));
    packets += packetBytes(2, 1, 32, 1001, 0, device + hex("ffffffffffffffff"));
    packets += packetBytes(2, 0, 29, 0, 0, hex("ffffffff"));
    packets += packetBytes(3, 2, 10, 0, 1, hex("060000000102030405"));
    packets += packetBytes(3, 3, 17, 1001, -1, hex("00000000"));
    packets += packetBytes(3, 2, 23, 0, 0, hex("0100000002000000feffffff04030201"));
    packets += packetBytes(3, 1, 21, 1001, 0, hex("05000000fcffffff"), 0xFFFFFFFF, 4, 0xFFFFFFFFFFFFFFFF);
    packets += packetBytes(2, 0, 48, 0, 0, "abcdef");
    packets += packetBytes(4, 0, 0, 0, 0, {}, 2);
    packets += packetBytes(5, 0, 0, 0, 0,
                           number(1, 8) + number(0x8000000000000000, 8) + number(0xFFFFFFFFFFFFFFFF, 8) +
                               number(quint64(-12600), 4) + number(1, 4) + number(quint64(-7), 4) +
                               number(3, 8) + number(2, 8) + number(1, 8));
    packets +=
        packetBytes(6, 0, 0, 0, 0, QByteArray("\xE2\x82\xAC \xC3\xA4 \xC3 \0 \\n \"q\", \r\n\x7F end", 26));
    packets += packetBytes(7, 1, 0, -7, 0, hex("01000000ffffffff060000000102"));
    packets += packetBytes(8, 0, 0, 0, 0, hex("020000000900000001000000") + QByteArray(28, '\x81'));
    packets += packetBytes(9, 255, 65535, -2147483647 - 1, -1, "later");
    return packets;
}

} // namespace

/// What tshark prints of each field is what `padscope decode` prints of it, as a table and in JSON.
class DissectorValueTests : public QObject
{
    Q_OBJECT

private slots:
    void everyKind();
    void cutAtEachByte();
    void anyBytes();
    void aRecording_data();
    void aRecording();
    void cutByEditcap();

private:
    void compare(int minValues);
    QByteArray decoded(const char *format) const;

    Shark shark;
    QSet<QString> seen; ///< fields that had a value in the last comparison
};

QByteArray DissectorValueTests::decoded(const char *format) const
{
    return outputOf(PADSCOPE, {"decode", "--format", format, shark.capture()}, 3);
}

/// \param minValues so many are there to be compared
void DissectorValueTests::compare(int minValues)
{
    const QList<QStringList> table = cells(QString::fromUtf8(decoded("csv")));
    const QStringList names = table[0].mid(2);
    QStringList filterNames{"frame.number", "_ws.col.Info", "_ws.malformed", "_ws.lua.error"};
    std::vector<std::string> keys;
    for (const QString &name : names) {
        filterNames += "padscope." + name;
        keys.push_back(name.toStdString());
    }
    QHash<QString, QStringList> shown;
    for (const QStringList &packet : shark.fields(filterNames)) {
        QCOMPARE(packet.size(), filterNames.size());
        QCOMPARE(packet.mid(2, 2), QStringList({"", ""}));
        shown[packet[0]] = packet;
    }
    const QList<QByteArray> lines = decoded("jsonl").split('\n');
    const QStringList texts = QString::fromUtf8(decoded("text")).split('\n');
    int values = 0;
    seen.clear();
    for (int i = 1; i < table.size(); ++i) {
        const QStringList &row = table[i];
        const QStringList packet = shown[row[0]];
        const auto json = nlohmann::json::parse(lines[i - 1].toStdString());
        QCOMPARE(packet[1], texts[i - 1].section("  ", 2));
        for (int field = 0; field < names.size(); ++field) {
            const QString &expected = packet[field + 4];
            const auto value = json.find(keys[std::size_t(field)]);
            const QString inJson = value == json.end() ? QString() : textOf(*value);
            if (row[field + 2] != expected || inJson != expected)
                QFAIL(qPrintable("frame " + row[0] + ", " + names[field] + ": '" + row[field + 2] +
                                 "' in CSV, '" + inJson + "' in JSON, '" + expected + "' in tshark"));
            if (!expected.isEmpty()) {
                ++values;
                seen.insert(names[field]);
            }
        }
    }
    QVERIFY2(values >= minValues, qPrintable(QString::number(values)));
}

void DissectorValueTests::everyKind()
{
    shark.write(packetsOfEveryKind());
    compare(590);
}

void DissectorValueTests::cutAtEachByte()
{
    QList<QByteArray> packets;
    for (const QByteArray &packet : packetsOfEveryKind()) {
        for (int length = 0; length < packet.size(); ++length)
            packets += packet.left(length);
    }
    shark.write(packets);
    compare(10000);
}

/// By a fixed seed: headers that are good and payloads of any bytes, and what is no header at all.
void DissectorValueTests::anyBytes()
{
    QRandomGenerator random(12);
    const auto bytes = [&random](int count) {
        QByteArray drawn;
        while (drawn.size() < count)
            drawn += char(random.bounded(4) == 0 ? 0 : random.bounded(256));
        return drawn;
    };
    static constexpr char types[] = "\x2F\x32\x68\x77\xA2\xA3\xA4";
    QList<QByteArray> packets;
    for (int i = 0; i < 1500; ++i) {
        QByteArray payload = bytes(random.bounded(90));
        if (payload.size() > 2 && i % 4 != 0) {
            payload[0] = "\x28\x0E\x0A\x10\x19\x34"[random.bounded(6)];
            payload[1] = types[random.bounded(7)];
            payload[2] = char(random.bounded(14));
        }
        const int kind = random.bounded(3) == 0 ? random.bounded(10) : i % 2 == 0 ? 1 : 2 + random.bounded(2);
        packets += packetBytes(kind, random.bounded(256), random.bounded(52), int(random.generate()),
                               int(random.generate()), payload, random.generate(), random.bounded(2),
                               random.generate64());
        packets += "PD\x01" + bytes(random.bounded(60));
    }
    shark.write(packets);
    compare(10000);
}

void DissectorValueTests::aRecording_data()
{
    addColumns<QString, int>("scenario", "minValues");
    addRow("all kinds", QString("all-kinds"), 1000);
    addRow("garbage", QString("garbage"), 1000);
}

void DissectorValueTests::aRecording()
{
    QFETCH(QString, scenario);
    QFETCH(int, minValues);
    QFile::remove(shark.capture());
    outputOf(PADSCOPE, {"record", "-o", shark.capture(), "--note", "Schräg", "--", HOST, "--plugins",
                        PLUGIN_FOLDER, "--simulate", scenario, "--type", "?", "--for", "2"});
    compare(minValues);
    if (scenario != "all-kinds")
        return;
    // It has every field of every layout.
    for (const QStringList &field : dataLines(TEST_FOLDER "/fields.txt", 3, 3)) {
        const QString name = field[0].section('.', 1);
        if (QRegularExpression("^(signal|phase|pen|dualPen|position|adc|text)").match(name).hasMatch())
            QVERIFY2(seen.contains(name), qPrintable(name));
    }
}

/// A row shows zeros for what is cut off, and says so.
void DissectorValueTests::cutByEditcap()
{
    shark.write({report(hex("0a2f040100ffff030009")), report(hex("0932") + "abcdefg"), report(hex("030141")),
                 packetBytes(2, 1, 6, 1001, 0, hex("e9030000 0a000000") + "abcdefghij", 0, 3)});
    const QString whole = shark.capture() + ".whole";
    for (const int length : {40, 42, 45, 52}) { // of 40 and the payload
        QFile::rename(shark.capture(), whole);
        outputOf("editcap", {"-s", QString::number(length), whole, shark.capture()});
        compare(0);
        if (QTest::currentTestFailed())
            return;
        QFile::remove(shark.capture());
        QFile::rename(whole, shark.capture());
    }
}

PADSCOPE_TESTS(DissectorValueTests);
#include "tst_dissectorvalues.moc"
