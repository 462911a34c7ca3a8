#include "redacted.h"
#include "support/tests.h"

/// What is left of packets that are no reports.
class RedactedCallsTests : public QObject
{
    Q_OBJECT

private slots:
    void payloads_data();
    void payloads();
    void callsWithoutBuffers();
    void headersOfALaterVersion();
    void summary();
};

void RedactedCallsTests::payloads_data()
{
    addColumns<int, int, QByteArray, QByteArray>("kind", "call", "payload", "left");
    const auto add = [](const char *name, int kind, int call, const char *payload, const char *left) {
        addRow(name, kind, call, fromHex(payload), fromHex(left));
    };
    add("orvexSendCommand", 2, 6, "e9030000 02000000 3f0d", "e9030000 02000000 3f0d");
    add("orvexWritePacket", 2, 7, "e9030000 03000000 aabbcc 03000000", "e9030000 03000000 000000 03000000");
    add("a null pointer", 2, 7, "e9030000 ffffffff 03000000", "e9030000 ffffffff 03000000");
    add("a buffer that is cut", 2, 7, "e9030000 40000000 aabbcc", "e9030000 40000000 000000");
    add("a length that is cut", 2, 7, "e9030000 0400", "e9030000 0400");
    add("bytes behind the arguments", 2, 6, "e9030000 01000000 3f aabb", "e9030000 01000000 3f 0000");
    add("orvexEcho", 2, 33, "e9030000 02000000 02000000 aabb", "e9030000 02000000 02000000 0000");
    add("orvexInject", 2, 34, "e9030000 02000000 02000000 aabb", "e9030000 02000000 02000000 0000");
    add("orvexSendTouchPacketToSystem", 2, 35, "e9030000 02000000 02000000 aabb",
        "e9030000 02000000 02000000 0000");
    add("return of orvexReadSynchronousPacket", 3, 17, "04000000 01020304", "04000000 00000000");
    add("return of orvexEnumDeviceInfo", 3, 10, "06000000 0102030405", "06000000 0102030405");
    add("return of orvexGetCalibrationPoints", 3, 21, "05000000 03000000", "05000000 03000000");
    add("a call of a later version", 2, 48, "e9030000 0102", "00000000 0000");
    add("hotplug", 4, 0, "", "");
    add("status", 5, 0, "0102030405060708", "0102030405060708");
    add("mark", 6, 0, "6869", "6869");
    add("board", 7, 0, "01000000 00000000 06000000 0102", "01000000 00000000 06000000 0102");
    add("end", 8, 0, "01000000 00000000 00000000", "01000000 00000000 00000000");
    add("a kind of a later version", 9, 0, "0102", "0000");
}

void RedactedCallsTests::payloads()
{
    QFETCH(int, kind);
    QFETCH(int, call);
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, left);
    const QByteArray packet = packetBytes(kind, 1, call, 1001, 0, payload);
    const Redacted found = redacted(packet);
    QCOMPARE(found.payload.toHex(), left.toHex());
    QCOMPARE(found.header, packetBytes(kind, left == payload ? 1 : 129, call, 1001, 0, {}));
}

/// All but five take numbers, texts and what is left out: nothing of them is blanked.
void RedactedCallsTests::callsWithoutBuffers()
{
    QList<int> edited;
    for (int call = 1; call <= 47; ++call) {
        const QByteArray numbers = QByteArray::fromHex("01000000").repeated(5);
        redacting::Redactor redactor;
        if (redacted(redactor, packetBytes(2, 1, call, 1001, 0, numbers)).isEdited &&
            !redactor.entries().begin()->second.blanked.empty())
            edited += call;
    }
    QCOMPARE(edited, (QList<int>{7, 33, 34, 35}));
}

void RedactedCallsTests::headersOfALaterVersion()
{
    QByteArray packet = packetBytes(6, 0, 0, 0, 0, {}) + "pos." + "hi";
    packet[3] = 44;
    OwnRecord own(packet);
    own.record.payload = own.record.payload.from(4);
    redacting::Redactor redactor;
    const std::string bytes = redactor.redacted(own.record);
    QCOMPARE(QByteArray::fromStdString(bytes), packet.left(40) + QByteArray(4, '\0') + "hi");
}

void RedactedCallsTests::summary()
{
    redacting::Redactor redactor;
    redacted(redactor, packetBytes(2, 1, 7, 1001, 0, fromHex("e9030000 01000000 aa 01000000")));
    redacted(redactor, packetBytes(2, 1, 7, 1001, 0, fromHex("e9030000 ffffffff 01000000")));
    redacted(redactor, packetBytes(3, 1, 7, 1001, 0, {}));
    redacted(redactor, packetBytes(2, 1, 6, 1001, 0, fromHex("e9030000 01000000 3f")));
    const auto &entries = redactor.entries();
    QCOMPARE(entries.size(), 3U);
    const redacting::Entry &write = entries.at("orvexWritePacket()");
    QCOMPARE(write.count, 2U);
    QCOMPARE(write.edited, 1U);
    QCOMPARE(write.blanked, std::string("data"));
    QCOMPARE(write.left, std::string("numbers"));
    QCOMPARE(entries.at("orvexSendCommand()").left, std::string("numbers, command"));
    QCOMPARE(entries.at("other returns").count, 1U);
}

PADSCOPE_TESTS(RedactedCallsTests);
#include "tst_redactedcalls.moc"
