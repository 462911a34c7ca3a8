#include "examplecapture.h"
#include "overview.h"
#include "support/tests.h"
#include "writers.h"

using capture::pcapng::Event;
using decoding::Format;

namespace {

/// What is read of a file's bytes.
struct Reading
{
    QList<QByteArray> lines;
    Event last = Event::Packet;
    bool endsWithinBlock = false;
    std::uint64_t offset = 0; ///< of the damage
    QByteArray reason;
};

Reading read(const QByteArray &bytes, Format format = Format::Text)
{
    const MemoryFile file(bytes);
    capture::RecordReader reader(file.descriptor());
    char *text = nullptr;
    std::size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    decoding::WriterOptions options;
    options.format = format;
    decoding::Writer writer(options, stream);
    decoding::Overview overview;
    Reading result;
    for (result.last = reader.next(); result.last == Event::Packet; result.last = reader.next()) {
        overview.follow(reader.record());
        writer.follow(reader.record());
        writer.write(reader.record());
    }
    writer.finish();
    writer.flush();
    std::fclose(stream);
    result.lines = QByteArray(text, static_cast<int>(size)).split('\n');
    result.lines.removeLast();
    std::free(text);
    result.endsWithinBlock = result.last == Event::End && reader.file().endsWithinBlock();
    result.offset = reader.damage().offset;
    result.reason = QByteArray::fromStdString(reader.damage().reason);
    return result;
}

/// Where each packet's block ends.
QList<int> endsOfPackets()
{
    QList<int> ends;
    int end = examplecapture::start().size();
    for (const QByteArray &packet : examplecapture::packets())
        ends += end += packet.size();
    return ends;
}

int wholePackets(int size)
{
    const QList<int> ends = endsOfPackets();
    return static_cast<int>(std::count_if(ends.begin(), ends.end(), [=](int end) { return end <= size; }));
}

} // namespace

class DamageTests : public QObject
{
    Q_OBJECT

private slots:
    void cutAtEachByte();
    void zerosBehind();
    void flippedBits_data();
    void flippedBits();
};

void DamageTests::cutAtEachByte()
{
    const QByteArray whole = examplecapture::whole();
    const QList<int> ends = QList<int>{0, 28, examplecapture::start().size()} + endsOfPackets();
    for (int size = 0; size <= whole.size(); ++size) {
        const Reading reading = read(whole.left(size));
        QCOMPARE(reading.lines, examplecapture::textLines().mid(0, wholePackets(size)));
        QCOMPARE(reading.last, Event::End);
        QCOMPARE(reading.endsWithinBlock, !ends.contains(size));
    }
}

void DamageTests::zerosBehind()
{
    const QByteArray whole = examplecapture::whole();
    for (int zeros = 1; zeros <= 64; ++zeros) {
        const Reading reading = read(whole + QByteArray(zeros, '\0'));
        QCOMPARE(reading.lines, examplecapture::textLines());
        QCOMPARE(reading.endsWithinBlock, zeros < 12);
        if (zeros < 12)
            continue;
        QCOMPARE(reading.last, Event::Damage);
        QCOMPARE(reading.offset, static_cast<std::uint64_t>(whole.size()));
        QCOMPARE(reading.reason, QByteArray("a block length of 0"));
    }
}

void DamageTests::flippedBits_data()
{
    addColumns<int>("format");
    addRow("text", int(Format::Text));
    addRow("rows", int(Format::Rows));
    addRow("csv", int(Format::Csv));
    addRow("jsonl", int(Format::JsonLines));
}

/// Whatever is damaged, the packets before it are read as they are.
void DamageTests::flippedBits()
{
    QFETCH(int, format);
    const auto readAs = static_cast<Format>(format);
    const QByteArray whole = examplecapture::whole();
    const QList<int> ends = QList<int>{0} + endsOfPackets();
    for (int count = 0; count < ends.size() - 1; ++count) {
        const QList<QByteArray> before = read(whole.left(ends[count]), readAs).lines;
        for (int bit = 8 * ends[count]; bit < 8 * ends[count + 1]; ++bit) {
            QByteArray damaged = whole;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
            QCOMPARE(read(damaged, readAs).lines.mid(0, before.size()), before);
        }
    }
}

PADSCOPE_TESTS(DamageTests);
#include "tst_damage.moc"
