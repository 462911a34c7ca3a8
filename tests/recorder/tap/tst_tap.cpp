#include <dlfcn.h>
#include <optional>
#include <QRegularExpression>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "consumer.h"
#include "entrypoints.h"
#include "producer.h"
#include "sharedring.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

using ring::Consumer;

namespace {

/// A tap over the simulator or another library. Its process maps one ring, the first.
struct TappedLibrary
{
    explicit TappedLibrary(const char *driver = SIMULATOR_FILE)
    {
        qputenv("PADSCOPE_RING", shared.path().c_str());
        qputenv("PADSCOPE_DRIVER", driver);
        library.emplace(TAP_FILE);
        crossings();
    }

    /// What crossed since the last time, a line each: "call 8 board 1001: 00000000".
    QStringList crossings()
    {
        QStringList lines;
        ring::Taken taken;
        while (consumer.take(taken, false) == Consumer::Step::Record)
            lines += lineOf(taken);
        return lines;
    }

    /// The same without listeners and payloads.
    QStringList crossingsInShort()
    {
        static const QRegularExpression details("( listener \\d+)?:.*");
        return crossings().replaceInStrings(details, {});
    }

    static QString lineOf(const ring::Taken &taken)
    {
        static const char *const kinds[] = {"?", "report", "call", "return", "hotplug"};
        QString line = kinds[taken.kind];
        if (taken.call != 0)
            line += QStringLiteral(" %1").arg(taken.call);
        if (taken.flags & 1)
            line += QStringLiteral(" board %1").arg(taken.board);
        if (taken.flags & 2)
            line += QStringLiteral(" result %1").arg(taken.result);
        if (taken.flags & ~3)
            line += QStringLiteral(" flags %1").arg(taken.flags & ~3);
        if (taken.kind == 1 || taken.kind == 4)
            line += QStringLiteral(" listener %1").arg(taken.link);
        return line + QStringLiteral(": ") + QByteArray::fromStdString(taken.payload).toHex(' ');
    }

    static inline recorder::SharedRing shared{64 * 1024, 1};
    static inline Consumer consumer{shared.control()};
    std::optional<SimulatedLibrary> library;
};

void ignoreReport(int, const unsigned char *, unsigned int, void *) {}
void ignoreHotplug(void *) {}

} // namespace

class TapTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void recordsCalls();
    void recordsReportsBeforeTheyAreDelivered();
    void callbacksThatWereEqualStayEqual();
    void tellsWhatComesFromAReplay();
    void threadsTakeNothingFromEachOther();
    void aForkedChildIsOff();
};

void TapTests::init()
{
    qputenv("ORVEXSIM_SCENARIO", "no-boards");
    qunsetenv("PADSCOPE_RING");
}

void TapTests::recordsCalls()
{
    TappedLibrary tapped;
    SimulatedLibrary &library = *tapped.library;
    QCOMPARE(library.plug(7), 0);
    QCOMPARE(library.orvexAttach(), 1);
    QCOMPARE(library.orvexGetDeviceCount(), 1);
    library.orvexSetXferMask(7, 255);
    QCOMPARE(library.orvexSendCommand(7, "?\r"), 0);
    QCOMPARE(library.orvexSendCommand(-1, nullptr), -1);
    library.orvexEcho(7, 2, reinterpret_cast<const unsigned char *>("ab"));
    library.orvexSetCalibrationData(7, &library);
    int columns = 5;
    library.orvexGetCalibrationPoints(7, &columns, nullptr);
    library.orvexDetach();
    QCOMPARE(tapped.crossings(),
             (QStringList{"call 1: ", "return 1 result 1: ", "call 9: ", "return 9 result 1: ",
                          "call 8 board 7: 07 00 00 00 ff 00 00 00",
                          "return 8 board 7: ", "call 6 board 7: 07 00 00 00 02 00 00 00 3f 0d",
                          "return 6 board 7 result 0: ", "call 6 board -1: ff ff ff ff ff ff ff ff",
                          "return 6 board -1 result -1: ",
                          "call 33 board 7: 07 00 00 00 02 00 00 00 02 00 00 00 61 62",
                          "return 33 board 7: ", "call 19 board 7 flags 32: 07 00 00 00",
                          "return 19 board 7: ", "call 21 board 7: 07 00 00 00",
                          "return 21 board 7 flags 16: 05 00 00 00 00 00 00 00", "call 2: ", "return 2: "}));
}

void TapTests::recordsReportsBeforeTheyAreDelivered()
{
    TappedLibrary tapped;
    SimulatedLibrary &library = *tapped.library;
    library.plug(7);
    library.orvexAttach();
    struct Seen
    {
        TappedLibrary *tapped;
        QStringList lines;
        std::thread::id thread = std::this_thread::get_id();
    } seen{&tapped, {}};
    tapped.crossings();
    // The board's own thread reports as well.
    const OrvexDataCallback callback = [](int, const unsigned char *, unsigned int, void *context) {
        auto *seenByTest = static_cast<Seen *>(context);
        if (std::this_thread::get_id() == seenByTest->thread)
            seenByTest->lines += seenByTest->tapped->crossings();
    };
    library.orvexSetCallback(7, callback, &seen);
    tapped.crossings();
    const unsigned char bytes[] = {1, 2, 3};
    QCOMPARE(library.send(7, bytes, 3), 1);
    QCOMPARE(library.send(7, nullptr, 9), 1);
    seen.lines = seen.lines.filter("report");
    QVERIFY(seen.lines.contains("report board 7 listener 1: 01 02 03"));
    QVERIFY(seen.lines.contains("report board 7 flags 16 listener 1: "));
    library.orvexDetach();
}

void TapTests::callbacksThatWereEqualStayEqual()
{
    TappedLibrary tapped;
    SimulatedLibrary &library = *tapped.library;
    library.plug(7);
    library.orvexAttach();
    tapped.crossings();
    int first = 0;
    int second = 0;
    library.orvexSetCallback(7, ignoreReport, &first);
    library.orvexSetCallback(7, ignoreReport, &second);
    library.orvexSetCallback(7, ignoreReport, &first);
    const unsigned char bytes[] = {1};
    const int before = library.send(7, bytes, 1);
    library.orvexClearCallback(7, ignoreReport, &first);
    const int after = library.send(7, bytes, 1);
    QVERIFY(after < before);
    library.orvexSetPnpCallback(ignoreHotplug, &first);
    library.orvexClearCallback(
        0, reinterpret_cast<OrvexDataCallback>(reinterpret_cast<void *>(ignoreHotplug)), &first);
    QCOMPARE(library.plug(8), 0);
    QTest::qWait(100); // a notification would have come
    const QStringList lines = tapped.crossings();
    QCOMPARE(lines.filter("call 4"), (QStringList{"call 4 board 7: 07 00 00 00 02 00 00 00",
                                                  "call 4 board 7: 07 00 00 00 03 00 00 00",
                                                  "call 4 board 7: 07 00 00 00 02 00 00 00"}));
    QCOMPARE(lines.filter("call 5"),
             (QStringList{"call 5 board 7: 07 00 00 00 02 00 00 00", "call 5: 00 00 00 00 04 00 00 00"}));
    QVERIFY(lines.filter("hotplug").isEmpty());
    library.orvexSetCallback(7, ignoreReport, &first);
    library.orvexDetach();
    library.orvexAttach();
    library.orvexSetCallback(7, ignoreReport, &second);
    QCOMPARE(tapped.crossings().filter("call 4"), (QStringList{"call 4 board 7: 07 00 00 00 05 00 00 00",
                                                               "call 4 board 7: 07 00 00 00 06 00 00 00"}));
    library.orvexDetach();
}

/// Its flag is 64; 4 is that of what is delivered within a call.
void TapTests::tellsWhatComesFromAReplay()
{
    {
        TappedLibrary tapped(REPLAYING_LIBRARY);
        SimulatedLibrary &library = *tapped.library;
        library.orvexSendCommand(7, "1");
        library.orvexSetCallback(7, ignoreReport, nullptr);
        library.orvexSetPnpCallback(ignoreHotplug, nullptr);
        QCOMPARE(
            tapped.crossingsInShort(),
            (QStringList{"call 6 board 7", "return 6 board 7 result 0 flags 64", "call 4 board 7 flags 64",
                         "report board 7 flags 68", "return 4 board 7 flags 64", "call 11 flags 64",
                         "hotplug flags 68", "return 11 flags 64"}));
        library.orvexSendCommand(7, "0");
        library.orvexSetCallback(7, ignoreReport, nullptr);
        QCOMPARE(tapped.crossingsInShort(),
                 (QStringList{"call 6 board 7 flags 64", "return 6 board 7 result 0", "call 4 board 7",
                              "report board 7 flags 4", "return 4 board 7"}));
        library.orvexSendCommand(7, "1");
    }
    // The next library is asked itself.
    TappedLibrary tapped;
    tapped.library->orvexInterface();
    QCOMPARE(tapped.crossingsInShort().value(0), QString("call 3"));
}

/// Eight boards, while calls are made.
void TapTests::threadsTakeNothingFromEachOther()
{
    qputenv("ORVEXSIM_SCENARIO", "flood");
    TappedLibrary tapped;
    SimulatedLibrary &library = *tapped.library;
    library.orvexAttach();
    for (int board = 1001; board <= 1008; ++board)
        library.orvexSetCallback(board, ignoreReport, nullptr);
    int recorded = 0;
    while (library.waitDelivered(1000, 1) == 0) {
        library.orvexSetXferMask(1001, 255);
        recorded += tapped.crossings().filter("report").size();
    }
    library.orvexDetach();
    recorded += tapped.crossings().filter("report").size();
    for (int board = 1001; board <= 1008; ++board) {
        unsigned long long sent = 0;
        unsigned long long delivered = 0;
        QCOMPARE(library.counts(board, &sent, &delivered), 0);
        const ring::BoardSlot &slot = ring::slotOf(tapped.shared.control(), board);
        QCOMPARE(slot.delivered.load(), std::uint64_t{delivered});
        recorded += static_cast<int>(slot.lost.load() - delivered);
    }
    QCOMPARE(recorded, 0);
}

void TapTests::aForkedChildIsOff()
{
    TappedLibrary tapped;
    tapped.library->orvexInterface();
    tapped.crossings();
    pid_t child = fork();
    if (child == 0) {
        tapped.library->orvexInterface();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    QCOMPARE(tapped.crossings(), QStringList());
    tapped.library->orvexInterface();
    QCOMPARE(tapped.crossings().size(), 2);
}

PADSCOPE_TESTS(TapTests);
#include "tst_tap.moc"
