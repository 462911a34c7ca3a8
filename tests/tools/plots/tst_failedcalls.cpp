#include "failedcalls.h"
#include "support/tests.h"
#include "tools/decoding/records.h"

using plots::FailedCalls;

namespace {

constexpr int resultIsValid = 2;

/// A call of an entry point by its number, and its return.
OwnRecord call(int number, quint64 sequence, const QByteArray &payload = {})
{
    return OwnRecord(packetBytes(2, 0, number, 0, 0, payload, 0, 0, sequence));
}

OwnRecord returned(int number, int result, quint32 link, int flags = resultIsValid)
{
    return OwnRecord(packetBytes(3, flags, number, 0, result, {}, link, 0, link + 1));
}

} // namespace

/// Which results tell of a failure.
class FailedCallsTests : public QObject
{
    Q_OBJECT

private slots:
    void results_data();
    void results();
    void text();
    void callsAreNotKept();
};

void FailedCallsTests::results_data()
{
    addColumns<int, int, int, bool>("number", "result", "flags", "isFailure");
    addRow("attach", 1, 1, resultIsValid, false);
    addRow("attach, none", 1, 0, resultIsValid, true);
    addRow("a command", 6, 0, resultIsValid, false);
    addRow("a command, refused", 6, -1, resultIsValid, true);
    addRow("no boards are no failure", 9, 0, resultIsValid, false);
    addRow("a record", 10, 1, resultIsValid, false);
    addRow("a record, none", 10, 0, resultIsValid, true);
    addRow("no result", 6, -1, 0, false);
    addRow("an unknown entry point", 99, -1, resultIsValid, true);
}

void FailedCallsTests::results()
{
    QFETCH(int, number);
    QFETCH(int, result);
    QFETCH(int, flags);
    QTEST(plots::tellsFailure(returned(number, result, 0, flags).record), "isFailure");
}

void FailedCallsTests::text()
{
    FailedCalls failed;
    failed.follow(call(6, 7, QByteArray::fromHex("e9030000 02000000 3f0d")).record, 1);
    failed.follow(returned(6, -1, 7).record, 2);
    failed.follow(returned(6, -2, 0xFFFFFFFF).record, 3); // its call was lost
    failed.follow(call(6, 9).record, 4);
    failed.follow(returned(6, 0, 9).record, 5);
    QCOMPARE(failed.calls().size(), std::size_t(2));
    QCOMPARE(failed.countOf(0x5f0c93a1), quint64(2));
    QCOMPARE(failed.countOf(1), quint64(0));
    QCOMPARE(failed.calls()[0].seconds, 2.0);
    QCOMPARE(failed.calls()[0].text, std::string("orvexSendCommand(1001, \"?\\r\") = -1"));
    QCOMPARE(failed.calls()[1].text, std::string("orvexSendCommand() = -2"));
}

/// 10,000 failures and calls that never return: the first thousand are listed, all are counted.
void FailedCallsTests::callsAreNotKept()
{
    FailedCalls failed;
    for (quint32 i = 0; i < 10'000; ++i) {
        failed.follow(call(6, 2 * i).record, i);
        failed.follow(returned(6, -1, 1).record, i);
    }
    QCOMPARE(failed.calls().size(), std::size_t(1000));
    QCOMPARE(failed.countOf(0x5f0c93a1), quint64(10'000));
}

PADSCOPE_TESTS(FailedCallsTests);
#include "tst_failedcalls.moc"
