#include <sys/mman.h>

#include "argumentbytes.h"
#include "consumer.h"
#include "sharedring.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

using ring::Consumer;

namespace {

/// Two pages of which the second may not be read.
class HalfReadable
{
public:
    HalfReadable()
        : bytes(static_cast<char *>(
              mmap(nullptr, 2 * size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
        mprotect(bytes + size, size, PROT_NONE);
    }
    ~HalfReadable() { munmap(bytes, 2 * size); }
    HalfReadable(const HalfReadable &) = delete;
    HalfReadable &operator=(const HalfReadable &) = delete;

    /// The last bytes that may be read.
    char *last(std::size_t count) const { return bytes + size - count; }

private:
    static constexpr std::size_t size = 65'536; // a page of any machine
    char *bytes;
};

/// What was put together, in hexadecimal.
QByteArray textOf(const tap::ArgumentBytes &bytes)
{
    QByteArray all;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        all.append(static_cast<const char *>(bytes.data()[i].data), static_cast<int>(bytes.data()[i].length));
    return all.toHex(' ');
}

void *const nowhere = reinterpret_cast<void *>(16);

} // namespace

/// What a call's arguments become in a record, also those that the host must not follow.
class ArgumentsTests : public QObject
{
    Q_OBJECT

private slots:
    void textsUpToTheirEnd();
    void buffersUpToTheirEnd();
    void nothingIsAddedBehindACut();
    void badPointersAreTheLibrarysAffair();
};

void ArgumentsTests::textsUpToTheirEnd()
{
    const HalfReadable memory;
    char *last = memory.last(3);
    last[0] = 'a';
    last[1] = 'b';
    tap::ArgumentBytes ended(true);
    ended.add(static_cast<const char *>(last));
    QCOMPARE(textOf(ended), QByteArray("02 00 00 00 61 62"));
    QVERIFY(!ended.hasUnread());
    last[2] = 'c'; // and no zero behind it
    tap::ArgumentBytes endless(true);
    endless.add(static_cast<const char *>(last));
    QCOMPARE(textOf(endless), QByteArray("00 00 00 00"));
    QVERIFY(endless.hasUnread());
    const std::string text(10'000, 'x');
    tap::ArgumentBytes pages(true);
    pages.add(text.c_str());
    QCOMPARE(pages.originalLength(), 10'004U);
    QVERIFY(!pages.isCut());
}

void ArgumentsTests::buffersUpToTheirEnd()
{
    const HalfReadable memory;
    const void *last = memory.last(2);
    tap::ArgumentBytes readable(true);
    readable.add(last, 2);
    QCOMPARE(textOf(readable), QByteArray("02 00 00 00 00 00"));
    QVERIFY(!readable.hasUnread());
    tap::ArgumentBytes beyond(true);
    beyond.add(last, 3);
    beyond.add(7);
    QCOMPARE(textOf(beyond), QByteArray("00 00 00 00 07 00 00 00"));
    QVERIFY(beyond.hasUnread());
    tap::ArgumentBytes isLong(true);
    isLong.add(static_cast<const void *>(memory.last(60'000)), 60'001);
    QVERIFY(isLong.hasUnread());
    tap::ArgumentBytes empty(true);
    empty.add(nowhere, 0);
    QVERIFY(!empty.hasUnread());
}

/// It would be read as another argument.
void ArgumentsTests::nothingIsAddedBehindACut()
{
    const std::string big(65'490, 'x');
    tap::ArgumentBytes bytes(true);
    bytes.add(static_cast<const void *>(big.data()), big.size());
    bytes.add(1); // of which one byte would fit
    bytes.add(2);
    bytes.add("c");
    std::size_t kept = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        kept += bytes.data()[i].length;
    QCOMPARE(kept, std::size_t{65'495});
    QCOMPARE(bytes.originalLength(), 4U + 65'490 + 4 + 4 + 5);
    QVERIFY(bytes.isCut());
}

/// Nobody is attached, so the library refuses them before it reads what they point at.
void ArgumentsTests::badPointersAreTheLibrarysAffair()
{
    const recorder::SharedRing shared{64 * 1024, 1};
    Consumer consumer(shared.control());
    qputenv("ORVEXSIM_SCENARIO", "no-boards");
    qputenv("PADSCOPE_RING", shared.path().c_str());
    qputenv("PADSCOPE_DRIVER", SIMULATOR_FILE);
    const SimulatedLibrary library(TAP_FILE);
    QCOMPARE(library.orvexWritePacket(1, nowhere, 40), -1);
    library.orvexEcho(1, 2, static_cast<const unsigned char *>(nowhere));
    library.orvexEnumDeviceInfo(3, static_cast<_ORVEX_DEVICE_INFO *>(nowhere));
    library.orvexGetCalibrationPoints(1, static_cast<int *>(nowhere), nullptr);
    QList<int> flags;
    QList<QByteArray> payloads;
    ring::Taken taken;
    while (consumer.take(taken, false) == Consumer::Step::Record) {
        flags += taken.flags & ~3;
        payloads += QByteArray::fromStdString(taken.payload).toHex(' ');
    }
    QCOMPARE(flags, (QList<int>{32, 0, 32, 0, 0, 32, 0, 48}));
    QCOMPARE(payloads, (QList<QByteArray>{"01 00 00 00 00 00 00 00 28 00 00 00", "",
                                          "01 00 00 00 02 00 00 00 00 00 00 00", "", "03 00 00 00", "",
                                          "01 00 00 00", "00 00 00 00 00 00 00 00"}));
}

PADSCOPE_TESTS(ArgumentsTests);
#include "tst_arguments.moc"
