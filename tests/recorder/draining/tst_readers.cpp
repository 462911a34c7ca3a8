#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

/// Programs of others read what the recorder has written.
class ReadersTests : public QObject
{
    Q_OBJECT

private slots:
    void everyProgramCountsTheSame_data();
    void everyProgramCountsTheSame();
    void editedFilesAreRead();
    void eachBoardHasItsInterface();
};

void ReadersTests::everyProgramCountsTheSame_data()
{
    addColumns<QStringList>("steps");
    addRow("reports and calls", QStringList{"delivered=30", "command=V\r", "detach"});
    addRow("a killed host", QStringList{"delivered=30", "raise=9"});
    addRow("nothing but the library", QStringList{"exit=0"});
}

void ReadersTests::everyProgramCountsTheSame()
{
    QFETCH(QStringList, steps);
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "all-kinds");
    run.run(QStringList{host, byName, "attach"} + steps);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole && facts.end);
    const QByteArray count = QByteArray::number(qulonglong(facts.packets));
    const QByteArray listed = outputOf("tshark", {"-r", run.file(), "-T", "fields", "-e", "frame.number"});
    QVERIFY2(listed.startsWith("0\n") && listed.trimmed().endsWith('\n' + count), listed);
    const QByteArray info = outputOf("capinfos", {"-M", "-c", "-o", run.file()});
    QVERIFY2(info.startsWith("0\n") && info.contains(' ' + count + '\n'), info);
    QVERIFY2(info.contains("Strict time order:   True"), info);
    const QByteArray read = outputOf("tcpdump", {"-n", "--count", "-r", run.file()});
    QVERIFY2(read.startsWith("0\n") && read.contains('\n' + count + " packets\n"), read);
}

void ReadersTests::editedFilesAreRead()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "all-kinds");
    QCOMPARE(run.run({host, byName, "attach", "delivered=30", "command=V\r", "detach"}), 0);
    const QByteArray cut = outputOf("editcap", {"-r", run.file(), run.path("cut.pcapng"), "1-5"});
    QVERIFY2(cut.startsWith("0\n"), cut);
    QCOMPARE(factsOf(run.path("cut.pcapng")).packets, std::uint64_t{5});
    const QByteArray merged =
        outputOf("mergecap", {"-w", run.path("merged.pcapng"), run.file(), run.path("cut.pcapng")});
    QVERIFY2(merged.startsWith("0\n"), merged);
    QCOMPARE(factsOf(run.path("merged.pcapng")).packets, run.facts().packets + 5);
}

/// Also one that was plugged in later, and one whose id is negative.
void ReadersTests::eachBoardHasItsInterface()
{
    RecordedRun run;
    QCOMPARE(run.run({host, byName, "plug=1001", "plug=-7", "attach", "report=1001", "report=-7", "plug=1002",
                      "attach", "report=1002", "detach"}),
             0);
    const QStringList interfaces{"driver", "board 1001", "board -7", "board 1002"};
    QCOMPARE(run.facts().interfaces, interfaces);
    // Reports of a board stand on its interface alone.
    const QByteArray listed =
        outputOf("tshark", {"-r", run.file(), "-T", "fields", "-e", "frame.interface_name", "-e",
                            "frame.interface_id", "-Y", "frame contains 21:22:23:24"});
    QVERIFY2(listed.startsWith("0\n"), listed);
    QCOMPARE(listed.mid(listed.indexOf("board")), QByteArray("board 1001\t1\nboard -7\t2\nboard 1002\t3\n"));
    const QByteArray info = outputOf("capinfos", {run.file()});
    for (const QString &interface : interfaces)
        QVERIFY2(info.contains("Name = " + interface.toUtf8() + '\n'), info);
    QVERIFY2(info.contains("Number of interfaces in file: 4\n"), info);
    const QByteArray read = outputOf("tcpdump", {"-n", "-r", run.file()});
    QVERIFY2(read.startsWith("0\n"), read);
}

PADSCOPE_TESTS(ReadersTests);
#include "tst_readers.moc"
