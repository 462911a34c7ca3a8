#include "hex.h"
#include "payloads.h"
#include "support/tests.h"

namespace {

capture::ByteView viewOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

const QByteArray statusBytes = "0100000000000000" // monotonic
                               "0200000000000000" // real
                               "0300000000000000" // since boot
                               "f0f1ffff"         // 1 h west of UTC
                               "02000000"         // two boards
                               "e9030000"
                               "0400000000000000"
                               "0500000000000000"
                               "0600000000000000"
                               "f9ffffff"
                               "0700000000000000"
                               "0800000000000000"
                               "0900000000000000";

} // namespace

class PayloadTests : public QObject
{
    Q_OBJECT

private slots:
    void status();
    void boardChange();
    void end();
    void theEndTellsAllThatWasLost();
    void whatIsTooShortIsNone();
    void boardsMayBeFewerThanCounted();
    void texts();
};

void PayloadTests::status()
{
    const capture::Status status{1, 2, 3, -3600, {{1001, 4, 5, 6}, {-7, 7, 8, 9}}};
    QCOMPARE(hexOf(payloadOf(status)), statusBytes);
    const QByteArray bytes = QByteArray::fromHex(statusBytes);
    const auto read = capture::statusOf(viewOf(bytes));
    QVERIFY(read);
    QCOMPARE(read->monotonicNs, std::uint64_t{1});
    QCOMPARE(read->realNs, std::uint64_t{2});
    QCOMPARE(read->bootNs, std::uint64_t{3});
    QCOMPARE(read->localOffsetSeconds, -3600);
    QCOMPARE(read->boards.size(), std::size_t{2});
    QCOMPARE(read->boards.at(1).board, -7);
    QCOMPARE(read->boards.at(1).delivered, std::uint64_t{7});
    QCOMPARE(read->boards.at(1).recorded, std::uint64_t{8});
    QCOMPARE(read->boards.at(1).lost, std::uint64_t{9});
}

void PayloadTests::boardChange()
{
    const capture::BoardChange change{capture::BoardState::Gone, -1, {}};
    QCOMPARE(hexOf(payloadOf(change)), QByteArray("02000000ffffffff"));
    const QByteArray bytes = QByteArray::fromHex("0100000003000000") + "record";
    const auto read = capture::boardChangeOf(viewOf(bytes));
    QVERIFY(read);
    QCOMPARE(read->state, capture::BoardState::Seen);
    QCOMPARE(read->index, 3);
    QCOMPARE(read->record.text(), std::string_view("record"));
}

void PayloadTests::end()
{
    const capture::End end{capture::EndReason::Signal, 9, {}};
    QCOMPARE(hexOf(payloadOf(end)), QByteArray("020000000900000000000000"));
    const QByteArray bytes = QByteArray::fromHex("010000000300000000000000");
    const auto read = capture::endOf(viewOf(bytes));
    QVERIFY(read);
    QCOMPARE(read->reason, capture::EndReason::Exit);
    QCOMPARE(read->value, 3);
    QVERIFY(!read->lost);
}

/// Behind the boards; not of a packet that is cut within them.
void PayloadTests::theEndTellsAllThatWasLost()
{
    capture::End end{capture::EndReason::Exit, 0, {{7, 3, 2, 1}}};
    end.lost = 5;
    const QByteArray bytes = QByteArray::fromStdString(payloadOf(end));
    QCOMPARE(bytes.right(8).toHex(), QByteArray("0500000000000000"));
    QCOMPARE(capture::endOf(viewOf(bytes))->lost, std::optional<std::uint64_t>(5));
    QVERIFY(!capture::endOf(viewOf(bytes.left(bytes.size() - 1)))->lost);
    QVERIFY(!capture::endOf(viewOf(bytes.left(12 + 27)))->lost);
}

void PayloadTests::whatIsTooShortIsNone()
{
    const QByteArray zeros(64, '\0');
    QVERIFY(!capture::statusOf(viewOf(zeros.left(31))));
    QVERIFY(capture::statusOf(viewOf(zeros.left(32))));
    QVERIFY(!capture::boardChangeOf(viewOf(zeros.left(7))));
    QVERIFY(capture::boardChangeOf(viewOf(zeros.left(8))));
    QVERIFY(!capture::endOf(viewOf(zeros.left(11))));
    QVERIFY(capture::endOf(viewOf(zeros.left(12))));
}

void PayloadTests::boardsMayBeFewerThanCounted()
{
    const QByteArray bytes = QByteArray::fromHex("0100000000000000ffffffff") + QByteArray(55, '\0');
    const auto read = capture::endOf(viewOf(bytes));
    QVERIFY(read);
    QCOMPARE(read->boards.size(), std::size_t{1});
    QCOMPARE(read->missingBoards, 0xFFFFFFFEU);
}

void PayloadTests::texts()
{
    std::string payload;
    capture::appendText(payload, "?\r");
    capture::appendNullText(payload);
    capture::appendText(payload, "");
    QCOMPARE(hexOf(payload), QByteArray("020000003f0d"
                                        "ffffffff"
                                        "00000000"));
    const QByteArray bytes = QByteArray::fromStdString(payload) + QByteArray::fromHex("09000000") + "abc";
    capture::PayloadReader reader(viewOf(bytes));
    QCOMPARE(reader.text()->text(), std::string_view("?\r"));
    QVERIFY(!reader.text());
    QCOMPARE(reader.text()->size, std::size_t{0});
    QVERIFY(reader.isWhole());
    QCOMPARE(reader.text()->text(), std::string_view("abc")); // the rest is missing
    QVERIFY(!reader.isWhole());
    QCOMPARE(reader.number<std::uint32_t>(), 0U);
}

PADSCOPE_TESTS(PayloadTests);
#include "tst_payloads.moc"
