#include <random>

#include "alignment.h"
#include "support/tests.h"

using comparing::Packet;

namespace {

/// A report of an unknown type with a number in it.
Packet packetWith(int number, unsigned char type = 3)
{
    const std::string payload{'\x06', static_cast<char>(type), static_cast<char>(number & 0xFF),
                              static_cast<char>(number >> 8 & 0xFF), static_cast<char>(number >> 16)};
    capture::Record record;
    record.header = capture::newHeader(capture::Kind::Report);
    record.payload = capture::viewOf(payload);
    record.payloadLength = static_cast<std::uint32_t>(payload.size());
    return comparing::packetOf(record, number, 0, comparing::FieldRules());
}

std::vector<Packet> packetsOf(int first, int end)
{
    std::vector<Packet> packets;
    for (int i = first; i < end; ++i)
        packets.push_back(packetWith(i));
    return packets;
}

/// The numbers of what differs: "-5" is only in A, "+5" only in B, "5>6" changed.
class Listener : public comparing::AlignmentListener
{
public:
    void pair(const Packet &a, const Packet &b) override
    {
        if (a.payload == b.payload)
            ++equal;
        else
            differences += QString::number(a.timeNs) + '>' + QString::number(b.timeNs);
    }
    void onlyInA(const Packet &packet) override { differences += '-' + QString::number(packet.timeNs); }
    void onlyInB(const Packet &packet) override { differences += '+' + QString::number(packet.timeNs); }

    int equal = 0;
    QStringList differences;
};

comparing::Alignment::Source sourceOf(const std::vector<Packet> &packets)
{
    return [&packets, next = std::size_t{0}]() mutable {
        return next < packets.size() ? std::optional(packets[next++]) : std::nullopt;
    };
}

Listener aligned(const std::vector<Packet> &a, const std::vector<Packet> &b)
{
    Listener listener;
    const comparing::FieldRules rules;
    comparing::Alignment(sourceOf(a), sourceOf(b), rules, listener).run();
    return listener;
}

/// By the table of all pairs of beginnings.
std::size_t mostInCommon(const std::vector<Packet> &a, const std::vector<Packet> &b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (const Packet &packet : a) {
        std::size_t before = 0; // in the row above, one to the left
        for (std::size_t i = 1; i <= b.size(); ++i) {
            const std::size_t above = row[i];
            row[i] = packet.payload == b[i - 1].payload ? before + 1 : std::max(above, row[i - 1]);
            before = above;
        }
    }
    return row.back();
}

} // namespace

class AlignmentTests : public QObject
{
    Q_OBJECT

private slots:
    void namesWhatDiffers_data();
    void namesWhatDiffers();
    void leavesOverAsFewAsTheTableSays_data();
    void leavesOverAsFewAsTheTableSays();
    void findsEditsBeyondItsWindow();
    void goesOnBehindALongGap_data();
    void goesOnBehindALongGap();
    void findsAShortSequenceWithinALongOne();
    void pairsWhatDiffersThroughout();
};

void AlignmentTests::namesWhatDiffers_data()
{
    addColumns<std::vector<int>, std::vector<int>, QStringList>("a", "b", "differences");
    using Numbers = std::vector<int>;
    addRow("nothing", Numbers{1, 2, 3}, Numbers{1, 2, 3}, QStringList{});
    addRow("no packets", Numbers{}, Numbers{}, QStringList{});
    addRow("all are added", Numbers{}, Numbers{1, 2}, QStringList{"+1", "+2"});
    addRow("all are removed", Numbers{1, 2}, Numbers{}, QStringList{"-1", "-2"});
    addRow("the first", Numbers{1, 2, 3}, Numbers{2, 3}, QStringList{"-1"});
    addRow("the last", Numbers{1, 2}, Numbers{1, 2, 3}, QStringList{"+3"});
    addRow("changed", Numbers{1, 2, 3}, Numbers{1, 7, 3}, QStringList{"2>7"});
    addRow("swapped", Numbers{1, 2, 3, 4}, Numbers{1, 3, 2, 4}, QStringList{"-2", "+2"});
    addRow("swapped with some between", Numbers{1, 2, 3, 4, 5, 6, 7}, Numbers{1, 6, 3, 4, 5, 2, 7},
           QStringList{"2>6", "6>2"});
    // 0x101 and 0x201 differ in one byte, 0x302 and 0x201 in two.
    addRow("the one that resembles most is changed", Numbers{1, 0x302, 0x101, 9}, Numbers{1, 0x201, 9},
           QStringList{"-770", "257>513"});
}

void AlignmentTests::namesWhatDiffers()
{
    using Numbers = std::vector<int>;
    QFETCH(Numbers, a);
    QFETCH(Numbers, b);
    const auto packets = [](const Numbers &numbers) {
        std::vector<Packet> found;
        for (const int number : numbers)
            found.push_back(packetWith(number));
        return found;
    };
    QTEST(aligned(packets(a), packets(b)).differences, "differences");
}

void AlignmentTests::leavesOverAsFewAsTheTableSays_data()
{
    addColumns<int, int>("different", "perThousand");
    addRow("few edits", 100'000, 10);
    addRow("more", 100'000, 50);
    addRow("reports that repeat", 20, 10);
}

void AlignmentTests::leavesOverAsFewAsTheTableSays()
{
    QFETCH(int, different);
    QFETCH(int, perThousand);
    std::mt19937 random(1);
    for (int round = 0; round < 3; ++round) {
        std::vector<Packet> a;
        std::vector<Packet> b;
        const auto draw = [&random](int count) {
            return std::uniform_int_distribution(0, count - 1)(random);
        };
        for (int i = 0; i < 1000; ++i) {
            a.push_back(packetWith(draw(different)));
            const int kind = draw(1000) < perThousand ? draw(3) : 3;
            if (kind != 0)
                b.push_back(kind == 1 ? packetWith(draw(different)) : a.back());
            if (kind == 2)
                b.push_back(packetWith(draw(different)));
        }
        const Listener listener = aligned(a, b);
        QCOMPARE(std::size_t(listener.equal), mostInCommon(a, b));
    }
}

void AlignmentTests::findsEditsBeyondItsWindow()
{
    constexpr int count = 50'000;
    const std::vector<Packet> a = packetsOf(0, count);
    std::vector<Packet> b;
    QStringList expected;
    for (int i = 0; i < count; ++i) {
        if (i % 1000 == 999)
            expected += '-' + QString::number(i);
        else
            b.push_back(a[std::size_t(i)]);
        if (i % 7000 == 5000) {
            b.push_back(packetWith(i + count));
            expected += '+' + QString::number(i + count);
        }
    }
    const Listener listener = aligned(a, b);
    QCOMPARE(listener.differences, expected);
    QCOMPARE(listener.equal, count - 50);
}

void AlignmentTests::goesOnBehindALongGap_data()
{
    addColumns<int>("length");
    addRow("within the path's edits", 500);
    addRow("above them", 600);
    addRow("above the window", 30'000);
    addRow("within the longest window", 100'000);
}

void AlignmentTests::goesOnBehindALongGap()
{
    QFETCH(int, length);
    const std::vector<Packet> whole = packetsOf(0, length + 2000);
    std::vector<Packet> gap = whole;
    gap.erase(gap.begin() + 1000, gap.begin() + 1000 + length);
    const Listener removed = aligned(whole, gap);
    QCOMPARE(removed.equal, 2000);
    QCOMPARE(removed.differences.size(), length);
    QCOMPARE(removed.differences.first(), QString("-1000"));
    QCOMPARE(removed.differences.last(), '-' + QString::number(length + 999));
    const Listener added = aligned(gap, whole);
    QCOMPARE(added.equal, 2000);
    QCOMPARE(added.differences.size(), length);
    QCOMPARE(added.differences.first(), QString("+1000"));
}

/// However far behind it is.
void AlignmentTests::findsAShortSequenceWithinALongOne()
{
    const Listener listener = aligned(packetsOf(300'000, 300'005), packetsOf(0, 300'010));
    QCOMPARE(listener.equal, 5);
    QCOMPARE(listener.differences.size(), 300'005);
}

void AlignmentTests::pairsWhatDiffersThroughout()
{
    constexpr int count = 5000;
    const Listener listener = aligned(packetsOf(0, count), packetsOf(count, 2 * count));
    QCOMPARE(listener.equal, 0);
    QCOMPARE(listener.differences.size(), count);
    QCOMPARE(listener.differences.first(), QString("0>5000"));
    QCOMPARE(listener.differences.last(), QString("4999>9999"));
}

PADSCOPE_TESTS(AlignmentTests);
#include "tst_alignment.moc"
