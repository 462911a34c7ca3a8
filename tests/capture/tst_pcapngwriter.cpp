#include "hex.h"
#include "pcapngwriter.h"
#include "support/tests.h"

namespace pcapng = capture::pcapng;

class PcapngWriterTests : public QObject
{
    Q_OBJECT

private slots:
    void writesASection();
    void writesAnInterface();
    void writesAPacket();
    void writesAPacketWithOptions();
    void cutsWhatIsTooLong();
    void writesStatistics();
};

void PcapngWriterTests::writesASection()
{
    pcapng::SectionInfo info;
    info.comment = "hello";
    info.userApplication = "p 1";
    QCOMPARE(hexOf(pcapng::sectionHeader(info)), QByteArray("0a0d0d0a" // type
                                                            "34000000" // length
                                                            "4d3c2b1a" // byte order
                                                            "01000000" // version 1.0
                                                            "ffffffffffffffff"
                                                            "01000500" // a comment of 5 bytes
                                                            "68656c6c6f000000"
                                                            "04000300" // an application of 3 bytes
                                                            "70203100"
                                                            "00000000"
                                                            "34000000"));
    QCOMPARE(pcapng::sectionHeader({}).size(), std::size_t{28});
}

void PcapngWriterTests::writesAnInterface()
{
    QCOMPARE(hexOf(pcapng::interfaceDescription("board 7", "x")), QByteArray("01000000"
                                                                             "34000000"
                                                                             "93000000" // link type 147
                                                                             "ffff0000" // snap length
                                                                             "02000700"
                                                                             "626f617264203700"
                                                                             "03000100"
                                                                             "78000000"
                                                                             "09000100" // nanoseconds
                                                                             "09000000"
                                                                             "00000000"
                                                                             "34000000"));
}

void PcapngWriterTests::writesAPacket()
{
    pcapng::PacketInfo info;
    info.interface = 2;
    info.timeNs = 0x1122334455667788;
    info.originalLength = 9;
    QCOMPARE(hexOf(pcapng::enhancedPacket(info, capture::viewOf("abcde"))),
             QByteArray("06000000"
                        "28000000"
                        "02000000"
                        "44332211" // high half first
                        "88776655"
                        "05000000"
                        "09000000"
                        "6162636465000000"
                        "28000000"));
}

void PcapngWriterTests::writesAPacketWithOptions()
{
    pcapng::PacketInfo info;
    info.flags = 1;
    info.dropCount = 3;
    info.comment = "mark";
    QCOMPARE(hexOf(pcapng::enhancedPacket(info, {})), QByteArray("06000000"
                                                                 "40000000"
                                                                 "0000000000000000000000000000000000000000"
                                                                 "01000400"
                                                                 "6d61726b"
                                                                 "02000400"
                                                                 "01000000"
                                                                 "04000800"
                                                                 "0300000000000000"
                                                                 "00000000"
                                                                 "40000000"));
}

void PcapngWriterTests::cutsWhatIsTooLong()
{
    const std::string data(70'000, 'x');
    pcapng::PacketInfo info;
    info.originalLength = 70'000;
    const std::string packet = pcapng::enhancedPacket(info, capture::viewOf(data));
    QCOMPARE(packet.size(), std::size_t{32 + 65'536});
    QCOMPARE(hexOf(packet.substr(20, 8)), QByteArray("ffff000070110100"));
    info.comment = data;
    // 65,535 bytes of comment and one of padding, with its head and the end of the options
    QCOMPARE(pcapng::enhancedPacket(info, {}).size(), std::size_t{32 + 4 + 65'536 + 4});
}

void PcapngWriterTests::writesStatistics()
{
    pcapng::StatisticsInfo info;
    info.interface = 1;
    info.startNs = 0x0000000200000001;
    info.endNs = 0x0000000400000003;
    info.received = 5;
    info.dropped = 6;
    QCOMPARE(hexOf(pcapng::interfaceStatistics(info)), QByteArray("05000000"
                                                                  "4c000000"
                                                                  "01000000"
                                                                  "0400000003000000"
                                                                  "02000800"
                                                                  "0200000001000000"
                                                                  "03000800"
                                                                  "0400000003000000"
                                                                  "04000800"
                                                                  "0500000000000000"
                                                                  "05000800"
                                                                  "0600000000000000"
                                                                  "00000000"
                                                                  "4c000000"));
}

PADSCOPE_TESTS(PcapngWriterTests);
#include "tst_pcapngwriter.moc"
