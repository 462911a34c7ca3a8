#include "recorder/draining/filelimit.h"
#include "recorder/draining/recordedrun.h"
#include "slicedrecording.h"
#include "support/tests.h"

/// Of a recording only what lies around events is written.
class SlicesTests : public QObject, private SlicedRecording
{
    Q_OBJECT

private slots:
    void fromBeforeToBehind();
    void fromTheStartOfAYoungRecording();
    void aSecondEventExtends();
    void aLaterEventGetsAFileOfItsOwn();
    void time();
    void theEndOfTheRecording();
    void memory();
    void aFullDisk();
    void noRoomForAFile();
    void nothingHappens();
};

void SlicesTests::fromBeforeToBehind()
{
    begin(100, 50, "note");
    report(100, "a");
    report(299, "b");
    report(300, "c");
    QCOMPARE(files(), QStringList());
    mark(400);
    report(450, "d");
    report(451, "e");
    recording->flush();
    slices->close();
    // Status, note and board have the numbers right before that of "c", which is 5.
    QCOMPARE(packetsOf(path()),
             (QStringList{"2 300 status", "3 300 mark note", "4 300 board", "5 300 report c",
                          "6 400 mark now", "7 450 report d", "8 450 end"}));
    QCOMPARE(checked(), QByteArray("0\n"));
    const capture::Status status = statusIn(path());
    // Three packets lie between it and the 300 ms, a ns each.
    QCOMPARE(status.monotonicNs, std::uint64_t{5'299'999'997});
    QCOMPARE(status.realNs, std::uint64_t{1'700'000'000'299'999'997});
    QCOMPARE(status.bootNs, std::uint64_t{9'299'999'997});
    QCOMPARE(status.localOffsetSeconds, 3600);
    QCOMPARE(status.boards.size(), std::size_t{1});
    QCOMPARE(status.boards.front().recorded, std::uint64_t{2});
    QCOMPARE(slices->remarks(), std::vector<std::string>());
}

void SlicesTests::fromTheStartOfAYoungRecording()
{
    begin(1000, 50, "note");
    report(100, "a");
    mark(400);
    recording->flush();
    slices->close();
    QCOMPARE(packetsOf(path()),
             (QStringList{"0 0 status", "1 0 mark note", "2 100 board", "3 100 report a", "4 400 mark now"}));
    // Nobody has said that it is over.
    QCOMPARE(checked(), "3\npadscope: " + path().toUtf8() + ": session 00000001: no clean end\n");
}

void SlicesTests::aSecondEventExtends()
{
    begin(0, 50);
    report(10, "a");
    mark(100);
    mark(140);
    report(190, "b");
    passTime(200);
    QCOMPARE(packetsOf(path()), (QStringList{"1 100 status", "2 100 board", "3 100 mark now",
                                             "4 140 mark now", "5 190 report b", "6 190 end"}));
    QCOMPARE(files(), QStringList{"x.pcapng"});
}

/// Each has all that lies before its event, also what stands in the one before.
void SlicesTests::aLaterEventGetsAFileOfItsOwn()
{
    begin(100, 50);
    report(10, "a");
    mark(20);
    mark(100);
    QVERIFY(QFile(path("x-2.pcapng")).open(QFile::WriteOnly)); // somebody else's
    mark(300);
    passTime(400);
    QCOMPARE(files(), (QStringList{"x-2.pcapng", "x-3.pcapng", "x-4.pcapng", "x.pcapng"}));
    QCOMPARE(packetsOf(path()),
             (QStringList{"0 0 status", "1 10 board", "2 10 report a", "3 20 mark now", "4 70 end"}));
    QCOMPARE(packetsOf(path("x-3.pcapng")), (QStringList{"0 0 status", "1 10 board", "2 10 report a",
                                                         "3 20 mark now", "4 100 mark now", "5 150 end"}));
    QCOMPARE(packetsOf(path("x-4.pcapng")),
             (QStringList{"3 200 status", "4 200 board", "5 300 mark now", "6 350 end"}));
    QCOMPARE(QFile(path("x-2.pcapng")).size(), qint64{0});
    for (const char *name : {"x.pcapng", "x-3.pcapng", "x-4.pcapng"})
        QCOMPARE(checked(name), QByteArray("0\n"));
    QCOMPARE(slices->remarks(), (std::vector<std::string>{"3 files were written, the last one is " +
                                                          path("x-4.pcapng").toStdString()}));
}

/// A file ends in time where nothing crosses.
void SlicesTests::time()
{
    begin(100, 50);
    mark(100);
    passTime(149);
    QCOMPARE(packetsOf(path()).size(), 2);
    recording->passTime(monotonicAt(150));
    QCOMPARE(packetsOf(path()), (QStringList{"0 0 status", "1 100 mark now", "2 150 end"}));
}

/// It is the file's, with its totals.
void SlicesTests::theEndOfTheRecording()
{
    begin(100, 50);
    report(10, "a");
    mark(400);
    recording->writeEnd({capture::EndReason::Signal, 11, {}, 0, {}}, 0, start.at(monotonicAt(420)), *control);
    slices->close();
    QCOMPARE(packetsOf(path()), (QStringList{"1 300 status", "2 300 board", "3 400 mark now", "4 420 end"}));
    QCOMPARE(factsOf(path()).end->value, 11);
    QCOMPARE(checked(), QByteArray("0\n"));
}

void SlicesTests::memory()
{
    begin(1000, 50, {}, 5 * 136); // 88 of a block, and 48 to keep it
    for (std::uint64_t i = 1; i <= 20; ++i)
        report(10 * i, std::to_string(i));
    mark(210);
    passTime(300);
    const QStringList packets = packetsOf(path());
    QCOMPARE(packets.first(), QString("16 170 status"));
    QCOMPARE(packets.mid(1, 3), (QStringList{"17 170 board", "18 170 report 17", "19 180 report 18"}));
    QCOMPARE(slices->remarks(),
             std::vector<std::string>{"files that begin too late, since memory held no more: 1"});
    QCOMPARE(checked(), QByteArray("0\n"));
}

void SlicesTests::aFullDisk()
{
    begin(100, 50);
    {
        const FileLimit limit(400);
        mark(100);
        recording->flush();
        for (std::uint64_t ms = 110; ms < 160; ms += 10)
            report(ms);
        recording->flush();
    }
    QVERIFY(factsOf(path()).isWhole);
    report(170);
    mark(400);
    passTime(500);
    QCOMPARE(slices->error(), std::string("File too large"));
    QCOMPARE(slices->path(), path().toStdString());
    // The next event is kept whole.
    QCOMPARE(checked("x-2.pcapng"), QByteArray("0\n"));
}

void SlicesTests::noRoomForAFile()
{
    begin(0, 0);
    const recorder::Slices elsewhere("/no-such-folder/x.pcapng", {}, false, *control);
    QCOMPARE(elsewhere.error(), std::string("No such file or directory"));
    QCOMPARE(elsewhere.path(), std::string("/no-such-folder/x.pcapng"));
    QVERIFY(QFile(path()).open(QFile::WriteOnly));
    const recorder::Slices there(path().toStdString(), {}, false, *control);
    QCOMPARE(there.error(), std::string("File exists"));
}

void SlicesTests::nothingHappens()
{
    begin(100, 50, "a note is no event");
    report(10);
    recording->writeEnd({}, 0, start.at(monotonicAt(420)), *control);
    slices->close();
    QCOMPARE(files(), QStringList());
    QCOMPARE(slices->error(), std::string());
    QCOMPARE(slices->remarks(),
             std::vector<std::string>{"nothing happened that --on names: no file was written"});
}

PADSCOPE_TESTS(SlicesTests);
#include "tst_slices.moc"
