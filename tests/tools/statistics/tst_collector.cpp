#include "collector.h"
#include "support/tests.h"
#include "tools/decoding/records.h"

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// A report of a board, some microseconds after the start.
OwnRecord report(int us, const QByteArray &payload, int board = 1001)
{
    return OwnRecord(packetBytes(1, 1, 0, board, 0, payload), quint64(us) * 1000);
}

OwnRecord call(int us, quint64 sequence, int number = 6)
{
    return OwnRecord(packetBytes(2, 0, number, 0, 0, {}, 0, 0, sequence), quint64(us) * 1000);
}

OwnRecord returned(int us, quint32 link, int number = 6)
{
    return OwnRecord(packetBytes(3, 2, number, 0, 0, {}, link), quint64(us) * 1000);
}

OwnRecord onOtherThread(const OwnRecord &record)
{
    return OwnRecord(QByteArray(record.bytes).replace(28, 4, blocks::number(1, 4)), record.record.timeNs);
}

OwnRecord inOtherSession(const OwnRecord &record)
{
    return OwnRecord(QByteArray(record.bytes).replace(24, 4, "else"), record.record.timeNs);
}

std::vector<statistics::SessionStatistics> collected(const QList<OwnRecord> &records)
{
    statistics::Collector collector;
    for (const OwnRecord &record : records)
        collector.follow(record.record);
    return collector.take();
}

std::vector<statistics::CallStatistics> calls(const QList<OwnRecord> &records)
{
    return collected(records).at(0).calls;
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 12);
}

/// "signal4.integrator0 2: 1 1.5 2"
QList<QByteArray> texts(const std::vector<statistics::FieldStatistics> &fields)
{
    QList<QByteArray> list;
    for (const statistics::FieldStatistics &field : fields)
        list += QByteArray::fromStdString(field.field->name) + ' ' +
                QByteArray::number(qulonglong(field.count)) + ": " + number(field.min) + ' ' +
                number(field.mean) + ' ' + number(field.max);
    return list;
}

const QByteArray signal4 = hex("0a2f04 0100 ffff 0300 09");
const QByteArray unknown = hex("030141");

} // namespace

/// Which packets count where, and what is made of them.
class CollectorTests : public QObject
{
    Q_OBJECT

private slots:
    void nothing();
    void gapsAndJitter();
    void oneReport();
    void timesThatDoNotAscend();
    void apart();
    void fields();
    void fieldsThatAreCutOff();
    void volts();
    void durations();
    void callsWithinCalls();
    void returnsThatAreMissing();
    void returnsOfAnotherThread();
    void callsThatPileUp();
    void callsOfALaterVersion();
    void whatIsNotWanted();
};

void CollectorTests::nothing()
{
    QVERIFY(collected({}).empty());
    QVERIFY(collected({OwnRecord(packetBytes(6, 0, 0, 0, 0, "a mark"))}).empty());
}

void CollectorTests::gapsAndJitter()
{
    const auto sessions = collected({report(1000, unknown), report(11'000, unknown), report(12'000, signal4),
                                     report(21'000, unknown), report(36'000, unknown)});
    const statistics::TypeStatistics &type = sessions.at(0).boards.at(0).types.at(1);
    QCOMPARE(type.type, std::string("unknown"));
    QCOMPARE(type.count, 4U);
    QCOMPARE(type.perSecond, 3 / 0.035);
    QCOMPARE(type.gaps.count, 3U); // 10, 10 and 15 ms
    QCOMPARE(type.gaps.minNs, 10'000'000);
    QCOMPARE(type.gaps.medianNs, 10'000'000);
    QCOMPARE(type.gaps.p99Ns, 15'000'000);
    QCOMPARE(type.gaps.maxNs, 15'000'000);
    QCOMPARE(type.jitter.count, 3U); // 0, 0 and 5 ms
    QCOMPARE(type.jitter.minNs, 0);
    QCOMPARE(type.jitter.medianNs, 0);
    QCOMPARE(type.jitter.p99Ns, 5'000'000);
    QCOMPARE(type.jitter.maxNs, 5'000'000);
}

void CollectorTests::oneReport()
{
    const auto sessions = collected({report(1000, unknown)});
    const statistics::TypeStatistics &type = sessions.at(0).boards.at(0).types.at(0);
    QCOMPARE(type.count, 1U);
    QCOMPARE(type.perSecond, 0.0);
    QCOMPARE(type.gaps.count, 0U);
    QCOMPARE(type.jitter.count, 0U);
}

/// As a tool may leave them.
void CollectorTests::timesThatDoNotAscend()
{
    const auto sessions = collected({report(9000, unknown), report(4000, unknown), report(5000, unknown)});
    const statistics::TypeStatistics &type = sessions.at(0).boards.at(0).types.at(0);
    QCOMPARE(type.perSecond, 0.0);
    QCOMPARE(type.gaps.minNs, -5'000'000);
    QCOMPARE(type.gaps.maxNs, 1'000'000);
    QCOMPARE(type.jitter.maxNs, 6'000'000);
}

/// Boards, types and sessions, and reports that tell no board.
void CollectorTests::apart()
{
    const OwnRecord withoutBoard(packetBytes(1, 0, 0, 7, 0, unknown));
    const auto sessions =
        collected({report(1, unknown), inOtherSession(report(2, unknown)), report(3, unknown, -5),
                   report(4, signal4), withoutBoard, report(5, unknown)});
    QCOMPARE(sessions.size(), 2U);
    QCOMPARE(sessions[0].session, 0x5f0c93a1U);
    QCOMPARE(sessions[1].boards.size(), 1U);
    const auto &boards = sessions[0].boards;
    QCOMPARE(boards.size(), 3U);
    QVERIFY(!boards[0].board);
    QCOMPARE(boards[1].board.value(), -5);
    QCOMPARE(boards[2].board.value(), 1001);
    QCOMPARE(boards[2].types.size(), 2U);
    QCOMPARE(boards[2].types[0].type, std::string("SignalReport"));
    QCOMPARE(boards[2].types[0].count, 1U);
    QCOMPARE(boards[2].types[1].type, std::string("unknown"));
    QCOMPARE(boards[2].types[1].count, 2U);
    QCOMPARE(boards[2].types[1].gaps.maxNs, 4000);
}

/// Of two sub-types, in the order of the layouts.
void CollectorTests::fields()
{
    const auto sessions = collected({report(1, hex("0e2f03 0102 00 9cff 00 0000 00 0000")),
                                     report(2, signal4), report(3, hex("0a2f04 0400 0080 0300 ff"))});
    QCOMPARE(texts(sessions.at(0).boards.at(0).types.at(0).fields),
             (QList<QByteArray>{"signal3.qualityFlag 1: 1 1 1", "signal3.qualityPass 1: 2 2 2",
                                "signal3.averageQuality 1: -100 -100 -100", "signal3.minimumQuality 1: 0 0 0",
                                "signal3.maximumQuality 1: 0 0 0", "signal4.integrator0 2: 1 2.5 4",
                                "signal4.integrator60 2: -32768 -16384.5 -1",
                                "signal4.integrator120 2: 3 3 3", "signal4.integrations 2: 9 132 255"}));
}

void CollectorTests::fieldsThatAreCutOff()
{
    const auto sessions = collected({report(1, signal4.left(8)), report(2, signal4.left(5))});
    QCOMPARE(texts(sessions.at(0).boards.at(0).types.at(0).fields),
             (QList<QByteArray>{"signal4.integrator0 2: 1 1 1", "signal4.integrator60 1: -1 -1 -1"}));
}

/// 1023 and 500 steps of 4.88 mV.
void CollectorTests::volts()
{
    const QByteArray rest(47, '\0');
    const auto sessions =
        collected({report(1, hex("34770c ff03") + rest), report(2, hex("34770c f401") + rest)});
    QCOMPARE(texts(sessions.at(0).boards.at(0).types.at(0).fields),
             (QList<QByteArray>{"adc.adcRaw 2: 500 761.5 1023", "adc.volts 2: 2.44 3.71612 4.99224"}));
}

void CollectorTests::durations()
{
    const auto list = calls({call(100, 4), returned(350, 4), call(400, 6), returned(410, 6), call(500, 8, 1),
                             returned(501, 8, 1)});
    QCOMPARE(list.size(), 2U);
    QCOMPARE(list[0].name, std::string("orvexAttach"));
    QCOMPARE(list[0].durations.medianNs, 1000);
    QCOMPARE(list[1].name, std::string("orvexSendCommand"));
    QCOMPARE(list[1].count, 2U);
    QCOMPARE(list[1].durations.count, 2U);
    QCOMPARE(list[1].durations.minNs, 10'000);
    QCOMPARE(list[1].durations.maxNs, 250'000);
}

/// The inner one's return is not there: it is not taken for a later one's.
void CollectorTests::callsWithinCalls()
{
    const auto list = calls({call(100, 1, 1), call(200, 2), returned(250, 2), call(300, 3),
                             returned(400, 1, 1), returned(500, 3)});
    QCOMPARE(list[0].durations.maxNs, 300'000);
    QCOMPARE(list[1].count, 2U);
    QCOMPARE(list[1].durations.count, 1U);
    QCOMPARE(list[1].durations.maxNs, 50'000);
}

void CollectorTests::returnsThatAreMissing()
{
    const auto list = calls({call(100, 0xFFFFFFFF), returned(200, 0xFFFFFFFF), returned(300, 77)});
    QCOMPARE(list.size(), 1U);
    QCOMPARE(list[0].count, 1U);
    QCOMPARE(list[0].durations.count, 0U); // a link of all ones is that of a call that was lost
}

void CollectorTests::returnsOfAnotherThread()
{
    const auto list = calls({call(100, 1), onOtherThread(call(150, 2)), onOtherThread(returned(180, 1)),
                             returned(300, 1), onOtherThread(returned(400, 2))});
    QCOMPARE(list[0].durations.count, 2U);
    QCOMPARE(list[0].durations.minNs, 200'000);
    QCOMPARE(list[0].durations.maxNs, 250'000);
}

/// 1024 calls may be open at a time.
void CollectorTests::callsThatPileUp()
{
    QList<OwnRecord> records;
    for (int i = 0; i <= 1024; ++i)
        records += call(i, quint64(i));
    const auto list = calls(records << returned(2000, 0) << returned(2001, 1));
    QCOMPARE(list[0].count, 1025U);
    QCOMPARE(list[0].durations.count, 1U);
    QCOMPARE(list[0].durations.maxNs, 2'000'000);
}

void CollectorTests::callsOfALaterVersion()
{
    QCOMPARE(calls({call(1, 1, 48)}).at(0).name, std::string("call 48"));
}

/// A call counts where it begins.
void CollectorTests::whatIsNotWanted()
{
    statistics::Collector collector;
    collector.follow(report(1, unknown).record, false);
    collector.follow(call(10, 1).record, true);
    collector.follow(returned(20, 1).record, false);
    collector.follow(call(30, 2).record, false);
    collector.follow(returned(40, 2).record, true);
    const auto sessions = collector.take();
    QCOMPARE(sessions.size(), 1U);
    QVERIFY(sessions[0].boards.empty());
    QCOMPARE(sessions[0].calls.at(0).count, 1U);
    QCOMPARE(sessions[0].calls.at(0).durations.count, 1U);
}

PADSCOPE_TESTS(CollectorTests);
#include "tst_collector.moc"
