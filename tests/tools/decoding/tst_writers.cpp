#include <nlohmann/json.hpp>

#include "records.h"
#include "support/tests.h"
#include "writers.h"

using decoding::Format;

namespace {

/// What a writer prints of packets.
QByteArray printed(Format format, const QList<QByteArray> &packets)
{
    char *text = nullptr;
    std::size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    {
        decoding::WriterOptions options;
        options.format = format;
        decoding::Writer writer(options, stream);
        writer.begin();
        for (const QByteArray &packet : packets) {
            const OwnRecord own(packet);
            writer.follow(own.record);
            writer.write(own.record);
        }
        writer.finish();
        writer.flush();
    }
    std::fclose(stream);
    const QByteArray all(text, static_cast<int>(size));
    std::free(text);
    return all;
}

/// The columns of a line that are not empty, as "name=value".
QStringList columns(const QByteArray &csv)
{
    const QList<QByteArray> lines = csv.split('\n');
    const QList<QByteArray> names = lines[0].split(',');
    const QList<QByteArray> values = lines[1].split(',');
    QStringList columns;
    for (int i = 0; i < values.size(); ++i) {
        if (!values[i].isEmpty())
            columns += names.value(i) + '=' + values[i];
    }
    return columns.mid(2 + 13); // behind frame and time, and the header's fields
}

const QByteArray signal4 = packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex("0a2f040100ffff030009"));
const QByteArray adc = packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex("34 77 0c 34 02"));

} // namespace

class WriterTests : public QObject
{
    Q_OBJECT

private slots:
    void csvHasEveryColumn();
    void csvQuotes();
    void fieldsOfPackets_data();
    void fieldsOfPackets();
    void jsonLines();
    void textLines();
    void rows();
};

void WriterTests::csvHasEveryColumn()
{
    const QList<QByteArray> lines = printed(Format::Csv, {signal4}).split('\n');
    QVERIFY(lines[0].startsWith(
        "frame,time,magic,version,headerLength,kind,flags,call,board,result,sequence,session,"
        "thread,link,lost,signal1.reportWord8,"));
    QVERIFY(lines[0].endsWith(",mark"));
    QCOMPARE(lines[0].count(','), lines[1].count(','));
    const QList<QByteArray> names = lines[0].split(',');
    QCOMPARE(QSet<QByteArray>(names.begin(), names.end()).size(), names.size());
    QVERIFY(lines[1].startsWith("1,0.000000000,0x4450,1,40,1,0x01,0,7,0,0,0x5f0c93a1,1234,0,0,,"));
}

void WriterTests::csvQuotes()
{
    QVERIFY(
        printed(Format::Csv, {packetBytes(6, 0, 0, 0, 0, "a \"b\", c")}).endsWith(",\"a \"\"b\"\", c\"\n"));
}

void WriterTests::fieldsOfPackets_data()
{
    addColumns<QByteArray, QStringList>("packet", "fields");
    addRow("a report", signal4,
           QStringList{"signal4.integrator0=1", "signal4.integrator60=-1", "signal4.integrator120=3",
                       "signal4.integrations=9"});
    addRow("a short report", packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex("0a2f040100ff")),
           QStringList{"signal4.integrator0=1"});
    addRow("a voltage", adc, QStringList{"adc.adcRaw=564", "adc.volts=2.75232"}); // 564 * 4.88 / 1000
    addRow("a text", packetBytes(1, 1, 0, 7, 0, QByteArray::fromHex("083248690d0a")),
           QStringList{"text.characters=Hi.."});
    addRow("a call", packetBytes(2, 1, 6, 7, 0, QByteArray::fromHex("07000000020000003f3f")),
           QStringList{"call.device=7", "call.command=??"});
    addRow("bytes", packetBytes(2, 1, 33, 7, 0, QByteArray::fromHex("0700000002000000020000000aff")),
           QStringList{"call.device=7", "call.data=0aff", "call.length=2"});
    addRow("an unknown report", packetBytes(1, 1, 0, 7, 0, "\x03\x01"), QStringList());
}

void WriterTests::fieldsOfPackets()
{
    QFETCH(QByteArray, packet);
    QTEST(columns(printed(Format::Csv, {packet})), "fields");
}

void WriterTests::jsonLines()
{
    const QByteArray lines =
        printed(Format::JsonLines, {adc, packetBytes(6, 0, 0, 0, 0, "\"\\\n\xE4\xC3\xA4")});
    const auto first = nlohmann::json::parse(lines.split('\n')[0].toStdString());
    QCOMPARE(first["adc.adcRaw"].get<int>(), 564);
    QCOMPARE(first["adc.volts"].get<double>(), 2.75232);
    QCOMPARE(first["sequence"].get<std::string>(),
             std::string("0")); // 64 bits do not fit every reader's numbers
    QCOMPARE(first["session"].get<std::string>(), std::string("0x5f0c93a1"));
    const auto second = nlohmann::json::parse(lines.split('\n')[1].toStdString());
    QCOMPARE(QString::fromStdString(second["mark"].get<std::string>()),
             QString::fromUtf8("\"\\\\\\n\\xe4\u00E4"));
}

void WriterTests::textLines()
{
    QCOMPARE(printed(Format::Text, {signal4}),
             QByteArray("0.000000000  7  0:     1  60:    -1  120:     3  Integs:   9\n"));
}

/// Each session has rows of its own, and only reports are rows.
void WriterTests::rows()
{
    QByteArray other = signal4;
    other[24] = 'x'; // the first byte of the session
    QCOMPARE(printed(Format::Rows, {signal4, other, signal4, packetBytes(6, 0, 0, 0, 0, "x")}),
             QByteArray("0:     1  60:    -1  120:     3  Integs:   9\n"
                        "0:     1  60:    -1  120:     3  Integs:   9\n"));
}

PADSCOPE_TESTS(WriterTests);
#include "tst_writers.moc"
