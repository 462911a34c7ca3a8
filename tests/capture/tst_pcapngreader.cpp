#include "capture/blocks.h"
#include "pcapngreader.h"
#include "support/tests.h"
#include "timestamps.h"

using namespace blocks;
using capture::pcapng::Event;
using capture::pcapng::Reader;

namespace {

QByteArray bytesOf(capture::ByteView view)
{
    return {reinterpret_cast<const char *>(view.data), static_cast<int>(view.size)};
}

/// The packets of a file up to its end or its damage.
QList<QByteArray> packetsOf(Reader &reader, Event &last)
{
    QList<QByteArray> packets;
    for (last = reader.next(); last != Event::End && last != Event::Damage; last = reader.next()) {
        if (last == Event::Packet)
            packets += bytesOf(reader.packet().data);
    }
    return packets;
}

} // namespace

class PcapngReaderTests : public QObject
{
    Q_OBJECT

private slots:
    void readsEitherByteOrder_data();
    void readsEitherByteOrder();
    void readsTheOptionsOfASection();
    void readsObsoletePackets();
    void times_data();
    void times();
    void damage_data();
    void damage();
    void aFileMayBeCutAnywhere();
    void goesOnWhenTheFileHasGrown();
    void passesUnknownBlocksByWhateverTheirSize();
    void interfacesBelongToTheirSection();
    void takesNoMemoryForWhatALengthPromises();
};

void PcapngReaderTests::readsEitherByteOrder_data()
{
    addColumns<bool>("isBigEndian");
    addRow("little", false);
    addRow("big", true);
}

void PcapngReaderTests::readsEitherByteOrder()
{
    QFETCH(bool, isBigEndian);
    const QByteArray options = option(1, "seen", isBigEndian) + option(1, "twice", isBigEndian) +
                               option(2, number(2, 4, isBigEndian), isBigEndian) +
                               option(4, number(7, 8, isBigEndian), isBigEndian) + number(0, 4);
    const MemoryFile file(section(isBigEndian) + interface("board 1001", isBigEndian) +
                          packet(0x123456789ABCDEF0, "12345", options, isBigEndian));
    Reader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::Section);
    QCOMPARE(reader.next(), Event::Interface);
    QCOMPARE(reader.next(), Event::Packet);
    QCOMPARE(reader.interfaces().at(0).name, std::string("board 1001"));
    QCOMPARE(reader.interfaces().at(0).linkType, std::uint16_t{147});
    QCOMPARE(reader.packet().interface, 0U);
    QCOMPARE(reader.packet().timeNs, std::uint64_t{0x123456789ABCDEF0});
    QCOMPARE(bytesOf(reader.packet().data), QByteArray("12345"));
    QCOMPARE(reader.packet().originalLength, 5U);
    QCOMPARE(reader.packet().flags, 2U);
    QCOMPARE(reader.packet().dropCount, std::uint64_t{7});
    QCOMPARE(reader.packet().comments, (std::vector<std::string_view>{"seen", "twice"}));
    QCOMPARE(reader.offset(), std::uint64_t{28 + 48}); // behind the section and the interface
    QCOMPARE(reader.next(), Event::End);
    QVERIFY(!reader.endsWithinBlock());
}

void PcapngReaderTests::readsTheOptionsOfASection()
{
    const MemoryFile file(block(0x0A0D0D0A, number(0x1A2B3C4D, 4) + number(1, 2) + number(2, 2) +
                                                QByteArray(8, '\xFF') + option(1, "a comment") +
                                                option(2, "a machine") + option(3, "Linux") +
                                                option(4, "padscope 1.1") + option(2988, "somebody's own")));
    Reader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::Section);
    QCOMPARE(reader.section().comment, std::string("a comment"));
    QCOMPARE(reader.section().hardware, std::string("a machine"));
    QCOMPARE(reader.section().operatingSystem, std::string("Linux"));
    QCOMPARE(reader.section().userApplication, std::string("padscope 1.1"));
}

void PcapngReaderTests::readsObsoletePackets()
{
    const MemoryFile file(section() + interface("a") + interface("b") +
                          block(2, number(1, 2) + number(65535, 2) + number(1, 4) + number(5, 4) +
                                       number(3, 4) + number(9, 4) + "abc" + QByteArray(1, '\0')));
    Reader reader(file.descriptor());
    Event last = Event::End;
    QCOMPARE(packetsOf(reader, last), QList<QByteArray>{"abc"});
    QCOMPARE(last, Event::End);
    QCOMPARE(reader.packet().interface, 1U);
    QCOMPARE(reader.packet().originalLength, 9U);
    QCOMPARE(reader.packet().timeNs, std::uint64_t{(1ULL << 32) + 5});
}

void PcapngReaderTests::times_data()
{
    addColumns<quint64, int, qint64, quint64>("units", "resolution", "offset", "ns");
    addRow("nanoseconds", quint64{1'700'000'000'123'456'789}, 9, qint64{0},
           quint64{1'700'000'000'123'456'789});
    addRow("microseconds", quint64{1'700'000'000'123'456}, 6, qint64{0}, quint64{1'700'000'000'123'456'000});
    addRow("seconds", quint64{17}, 0, qint64{0}, quint64{17'000'000'000});
    addRow("picoseconds", quint64{1'234'567'890'123}, 12, qint64{0}, quint64{1'234'567'890});
    addRow("any power of ten", quint64{99}, 127, qint64{0}, quint64{0});
    addRow("half seconds", quint64{5}, 0x81, qint64{0}, quint64{2'500'000'000});
    addRow("1/2^32 s", quint64{0x00000003'40000000}, 0xA0, qint64{0}, quint64{3'250'000'000});
    addRow("1/2^40 s", quint64{0x00000380'00000000}, 0xA8, qint64{0}, quint64{3'500'000'000});
    addRow("any power of two", quint64{99}, 0xFF, qint64{0}, quint64{0});
    addRow("an offset", quint64{5}, 9, qint64{2}, quint64{2'000'000'005});
    addRow("an offset backwards", quint64{3'000'000'005}, 9, qint64{-2}, quint64{1'000'000'005});
}

void PcapngReaderTests::times()
{
    QFETCH(quint64, units);
    QFETCH(int, resolution);
    QFETCH(qint64, offset);
    QTEST(quint64{capture::pcapng::nanosecondsOf(units, static_cast<std::uint8_t>(resolution), offset)},
          "ns");
}

void PcapngReaderTests::damage_data()
{
    addColumns<QByteArray, int, QByteArray>("bytes", "offset", "reason");
    const QByteArray start = section() + interface("a"); // 28 + 40 bytes
    const QByteArray good = packet(1, "good");           // 36 bytes
    addRow("another format", QByteArray(64, 'x'), 0,
           QByteArray("no pcapng file: it does not begin with a section header"));
    addRow("5 bytes of another format", QByteArray("hello"), 0,
           QByteArray("no pcapng file: it does not begin with a section header"));
    addRow("no byte order", block(0x0A0D0D0A, QByteArray(16, '\0')), 0,
           QByteArray("a section without its byte-order magic"));
    addRow("a later version", block(0x0A0D0D0A, number(0x1A2B3C4D, 4) + number(2, 2) + QByteArray(10, '\0')),
           0, QByteArray("a section of version 2"));
    addRow("a short section", block(0x0A0D0D0A, number(0x1A2B3C4D, 4) + number(1, 2) + number(0, 2)), 0,
           QByteArray("a section header that is too short"));
    addRow("a length of 8", start + good + number(6, 4) + number(8, 4) + QByteArray(8, '\0'), 104,
           QByteArray("a block length of 8"));
    addRow("a length of 34", start + good + number(6, 4) + number(34, 4) + QByteArray(30, '\0'), 104,
           QByteArray("a block length of 34"));
    addRow("a length of 17 MiB", start + good + number(6, 4) + number(17'825'792, 4) + QByteArray(8, '\0'),
           104, QByteArray("a block length of 17825792"));
    addRow("another length behind", start + good + packet(2, "bad.").chopped(4) + number(40, 4), 104,
           QByteArray("a block whose two lengths differ"));
    addRow("an interface of 4 bytes", start + good + block(1, number(147, 4)), 104,
           QByteArray("an interface description that is too short"));
    addRow("a packet of 16 bytes", start + good + block(6, QByteArray(16, '\0')), 104,
           QByteArray("a packet that does not fit its block"));
    addRow("data beyond the block",
           start + good + block(6, number(0, 12) + number(9, 4) + number(9, 4) + "12345678"), 104,
           QByteArray("a packet that does not fit its block"));
    addRow("data of 4 GiB",
           start + good + block(6, number(0, 12) + number(0xFFFFFFFF, 4) + number(9, 4) + "12345678"), 104,
           QByteArray("a packet that does not fit its block"));
    addRow("no such interface", start + good + block(6, number(1, 4) + number(0, 16)), 104,
           QByteArray("a packet of interface 1, which is not described"));
    addRow("an option beyond the block",
           start + good + packet(2, "bad.", number(1, 2) + number(5, 2) + "1234"), 104,
           QByteArray("options that do not fit their block"));
    addRow("half an option",
           start + good + block(1, number(147, 8) + "12" + number(0, 2) + number(1, 2) + number(1, 2)), 104,
           QByteArray("options that do not fit their block"));
}

/// What lies before the damage is read.
void PcapngReaderTests::damage()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, offset);
    QFETCH(QByteArray, reason);
    const MemoryFile file(bytes);
    Reader reader(file.descriptor());
    Event last = Event::End;
    QCOMPARE(packetsOf(reader, last), offset == 0 ? QList<QByteArray>() : QList<QByteArray>{"good"});
    QCOMPARE(last, Event::Damage);
    QCOMPARE(QByteArray::fromStdString(reader.damage().reason), reason);
    QCOMPARE(reader.damage().offset, static_cast<std::uint64_t>(offset));
    QCOMPARE(reader.next(), Event::Damage);
}

void PcapngReaderTests::aFileMayBeCutAnywhere()
{
    const QByteArray whole = section() + interface("a") + packet(1, "one.") + packet(2, "two.");
    const QList<int> ends{0, 28, 68, 104, 140};
    for (int size = 0; size <= whole.size(); ++size) {
        const MemoryFile file(whole.left(size));
        Reader reader(file.descriptor());
        Event last = Event::Damage;
        QCOMPARE(packetsOf(reader, last).size(), int{size >= 104} + int{size >= 140});
        QCOMPARE(last, Event::End);
        QCOMPARE(reader.endsWithinBlock(), !ends.contains(size));
    }
}

void PcapngReaderTests::goesOnWhenTheFileHasGrown()
{
    const QByteArray added = packet(1, "later");
    MemoryFile file(section() + interface("a") + added.left(17));
    Reader reader(file.descriptor());
    Event last = Event::Damage;
    QCOMPARE(packetsOf(reader, last), QList<QByteArray>());
    QVERIFY(reader.endsWithinBlock());
    file.append(added.mid(17));
    QCOMPARE(packetsOf(reader, last), QList<QByteArray>{"later"});
    QVERIFY(!reader.endsWithinBlock());
}

void PcapngReaderTests::passesUnknownBlocksByWhateverTheirSize()
{
    const MemoryFile file(section() + interface("a") + block(0xBAD, QByteArray(8, 'x')) + packet(1, "one") +
                          block(5, QByteArray(20 * 1024 * 1024, 'x')) + packet(2, "two"));
    Reader reader(file.descriptor());
    Event last = Event::Damage;
    QCOMPARE(packetsOf(reader, last), (QList<QByteArray>{"one", "two"}));
    QCOMPARE(last, Event::End);
    QVERIFY(!reader.endsWithinBlock());
    QCOMPARE(reader.offset(), std::uint64_t{28 + 40 + 20 + 36 + 20'971'532 + 36});
}

void PcapngReaderTests::interfacesBelongToTheirSection()
{
    const MemoryFile file(section() + interface("a") + packet(1, "one") + section(true) +
                          interface("b", true) + packet(2, "two", {}, true) + section() +
                          packet(3, "nobody's"));
    Reader reader(file.descriptor());
    Event last = Event::End;
    QCOMPARE(packetsOf(reader, last), (QList<QByteArray>{"one", "two"}));
    QCOMPARE(last, Event::Damage);
    QCOMPARE(reader.damage().reason, std::string("a packet of interface 0, which is not described"));
}

void PcapngReaderTests::takesNoMemoryForWhatALengthPromises()
{
    const MemoryFile file(section() + number(0xBAD, 4) + number(0xFFFFFFFC, 4) + "12345678");
    Reader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::Section);
    QCOMPARE(reader.next(), Event::End);
    QVERIFY(reader.endsWithinBlock());
    QVERIFY(reader.block().size == 0);
    QCOMPARE(reader.offset(), std::uint64_t{28}); // of the block that is cut off
}

PADSCOPE_TESTS(PcapngReaderTests);
#include "tst_pcapngreader.moc"
