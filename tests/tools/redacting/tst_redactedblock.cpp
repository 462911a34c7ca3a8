#include "capture/blocks.h"
#include "redactedblock.h"
#include "support/tests.h"

/// A packet's block with other data.
class RedactedBlockTests : public QObject
{
    Q_OBJECT

private slots:
    void options_data();
    void options();
    void obsoletePackets();
};

namespace {

QByteArray rewritten(const QByteArray &block, const QByteArray &data, bool isBigEndian = false)
{
    return QByteArray::fromStdString(redacting::packetBlock(
        capture::viewOf({block.constData(), std::size_t(block.size())}),
        isBigEndian ? capture::ByteOrder::Big : capture::ByteOrder::Little, data.toStdString()));
}

} // namespace

void RedactedBlockTests::options_data()
{
    addColumns<bool>("isBigEndian");
    addRow("little-endian", false);
    addRow("big-endian", true);
}

void RedactedBlockTests::options()
{
    QFETCH(bool, isBigEndian);
    const auto option = [isBigEndian](quint16 code, const QByteArray &value) {
        return blocks::option(code, value, isBigEndian);
    };
    const auto packet = [isBigEndian](const QByteArray &data, const QByteArray &options = {}) {
        return blocks::packet(0x0102030405060708, data, options, isBigEndian);
    };
    const QByteArray end = option(0, {});
    const QByteArray flags = option(2, "\1\0\0\0");
    const QByteArray drops = option(4, "12345678");
    const QByteArray hash = option(3, "\2abcd");
    QCOMPARE(rewritten(packet("secret"), "public", isBigEndian), packet("public"));
    QCOMPARE(rewritten(packet("secret", flags + drops + end), "public", isBigEndian),
             packet("public", flags + drops + end));
    // A hash of the data, and what nobody knows. An end of options may be missing.
    QCOMPARE(rewritten(packet("secret", option(1, "note") + hash + option(2988, "abcd") + flags), "public",
                       isBigEndian),
             packet("public", option(1, "note") + flags + end));
    QCOMPARE(rewritten(packet("secret", hash + end), "public", isBigEndian), packet("public"));
    QCOMPARE(rewritten(packet("secret", end + "behind"), "public", isBigEndian), packet("public"));
}

/// The older sort of packet has the same places.
void RedactedBlockTests::obsoletePackets()
{
    using blocks::number;
    const auto packet = [](const QByteArray &data, const QByteArray &padding) {
        return blocks::block(2, number(3, 2) + number(9, 2) + number(1, 4) + number(2, 4) + number(5, 4) +
                                    number(8, 4) + data + padding);
    };
    QCOMPARE(rewritten(packet("12345", "abc"), "54321"), packet("54321", QByteArray(3, '\0')));
}

PADSCOPE_TESTS(RedactedBlockTests);
#include "tst_redactedblock.moc"
