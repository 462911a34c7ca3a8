#include <random>
#include <set>

#include "alignment.h"
#include "differences.h"
#include "support/tests.h"

using comparing::FieldRules;
using comparing::Packet;

namespace {

constexpr std::int64_t periodNs = 10'000'000;

struct Position
{
    int quality = 900;
    int x = 0;
    int y = 1000;
};

/// A PositionReport.
Packet packetOf(const Position &position, std::int64_t timeNs, const FieldRules &rules)
{
    std::string payload("\x1F\xA4\0", 3);
    const auto append = [&payload](int number, int bytes) {
        for (int i = 0; i < bytes; ++i)
            payload += static_cast<char>(number >> (8 * i) & 0xFF);
    };
    append(position.quality, 2);
    append(100, 2);
    append(position.x, 4);
    append(position.y, 4);
    payload.append(16, '\0');
    capture::Record record;
    record.header = capture::newHeader(capture::Kind::Report);
    record.payload = capture::viewOf(payload);
    record.payloadLength = static_cast<std::uint32_t>(payload.size());
    return comparing::packetOf(record, timeNs, 0, rules);
}

/// "0.050 x 1000 -> 1003", "0.050 only in A"
class LineListener : public comparing::AlignmentListener
{
public:
    explicit LineListener(const FieldRules &fieldRules)
        : rules(fieldRules)
    {
    }
    void pair(const Packet &a, const Packet &b) override
    {
        if (!areEqual(a, b, rules))
            tell(a, QString::fromStdString(differencesOf(a, b, rules)));
    }
    void onlyInA(const Packet &packet) override { tell(packet, "only in A"); }
    void onlyInB(const Packet &packet) override { tell(packet, "only in B"); }

    QStringList lines;

private:
    void tell(const Packet &packet, const QString &what)
    {
        lines += QString::number(double(packet.timeNs) / 1e9, 'f', 3) + ' ' + what;
    }

    const FieldRules &rules;
};

QStringList linesOf(const std::vector<Packet> &a, const std::vector<Packet> &b, const FieldRules &rules)
{
    const auto sourceOf = [](const std::vector<Packet> &packets) {
        return [&packets, next = std::size_t{0}]() mutable {
            return next < packets.size() ? std::optional(packets[next++]) : std::nullopt;
        };
    };
    LineListener listener(rules);
    comparing::Alignment(sourceOf(a), sourceOf(b), rules, listener).run();
    return listener.lines;
}

QString secondsText(int index)
{
    return QString::number(index / 100.0, 'f', 3);
}

} // namespace

/// What differs among packets that equal their neighbours is named where it is.
class EqualNeighboursTests : public QObject
{
    Q_OBJECT

private slots:
    void changesByThree_data();
    void changesByThree();
    void removedAndChanged();
};

void EqualNeighboursTests::changesByThree_data()
{
    // Percent of reports behind which x goes on by the step; the tolerances; reports between two changes at
    // least.
    addColumns<int, int, int, int, QString, int>("count", "changes", "percent", "step", "tolerances",
                                                 "distance");
    addRow("resting", 9, 1, 0, 0, "", 1);
    addRow("resting, several", 1000, 40, 0, 0, "", 1);
    addRow("resting for long", 9000, 638, 0, 0, "", 1);
    addRow("hardly moving", 1000, 1, 30, 7, "", 2);
    addRow("hardly moving, several", 1000, 40, 30, 7, "", 2);
    addRow("neighbours within the tolerance", 100, 1, 100, 5, "x=2", 5);
    addRow("neighbours within the tolerance, several", 1000, 30, 100, 5, "x=2", 5);
    addRow("many within another field's", 100, 1, 100, 5, "x=5", 5);
    addRow("many within another field's, several", 1000, 30, 100, 5, "x=20", 5);
}

void EqualNeighboursTests::changesByThree()
{
    QFETCH(int, count);
    QFETCH(int, changes);
    QFETCH(int, percent);
    QFETCH(int, step);
    QFETCH(QString, tolerances);
    QFETCH(int, distance);
    FieldRules rules;
    if (!tolerances.isEmpty())
        rules.tolerate("x", tolerances.section('=', 1).toDouble());
    const bool isInY = tolerances == "x=5" || tolerances == "x=20";
    std::mt19937 random(1);
    const auto draw = [&random](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
    for (int round = 0; round < (changes == 1 ? 20 : 3); ++round) {
        std::set<int> places;
        while (int(places.size()) < changes)
            places.insert(draw(count / distance) * distance);
        std::vector<Packet> a;
        std::vector<Packet> b;
        QStringList expected;
        Position position;
        position.x = 1000;
        for (int i = 0; i < count; ++i) {
            a.push_back(packetOf(position, i * periodNs, rules));
            Position other = position;
            if (places.count(i) > 0) {
                (isInY ? other.y : other.x) += 3;
                expected += secondsText(i) + (isInY ? QString(" y 1000 -> 1003")
                                                    : QString(" x %1 -> %2").arg(position.x).arg(other.x));
            }
            b.push_back(packetOf(other, i * periodNs, rules));
            if (draw(100) < percent)
                position.x += step;
        }
        QCOMPARE(linesOf(a, b, rules), expected);
    }
}

/// The change comes first to light as one at the place before.
void EqualNeighboursTests::removedAndChanged()
{
    const FieldRules rules;
    std::vector<Packet> a;
    std::vector<Packet> b;
    for (int i = 0; i < 2000; ++i) {
        a.push_back(packetOf({900, 1000, 1000}, i * periodNs, rules));
        if (i != 300)
            b.push_back(packetOf({900, i == 700 ? 1003 : 1000, 1000}, i * periodNs, rules));
    }
    QCOMPARE(linesOf(a, b, rules), QStringList({"3.000 only in A", "7.000 x 1000 -> 1003"}));
    QCOMPARE(linesOf(b, a, rules), QStringList({"3.000 only in B", "7.000 x 1003 -> 1000"}));
}

PADSCOPE_TESTS(EqualNeighboursTests);
#include "tst_equalneighbours.moc"
