#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include "records.h"
#include "shark.h"
#include "support/tests.h"

namespace {

QByteArray call(quint64 sequence, int flags = 0, quint32 lost = 0)
{
    return packetBytes(2, flags, 1, 0, 0, {}, 0, lost, sequence);
}

QByteArray returnOf(quint32 called, quint64 sequence)
{
    return packetBytes(3, 2, 1, 0, 1, {}, called, 0, sequence);
}

struct Example
{
    const char *name;
    QByteArray packet;
    QStringList lines; ///< the last ones of its tree
};

QList<Example> examples()
{
    return {
        {"header",
         packetBytes(4, 5, 3, 1001, -2, {}, 9, 0, 77),
         {"Padscope, hot-plug notification, listener 9", "    Magic: 0x4450", "    Version: 1",
          "    Header length: 40", "    Kind: hotplug (4)", "    Flags: 0x05, board is valid, within a call",
          "    Call: orvexInterface (3)", "    Board: 1001", "    Result: -2", "    Sequence: 77",
          "    Session: 0x5f0c93a1", "    Thread: 1234", "    Link: 9", "    Lost: 0"}},
        {"named value",
         packetBytes(1, 1, 0, 7, 0, hex("09a2000100ffff0200")),
         {"    PenIdentityReport", "        Pen: Student (1)", "        Q: -1", "        Button: 2"}},
        {"value without a name",
         packetBytes(1, 1, 0, 7, 0, hex("09a2000500")),
         {"    PenIdentityReport", "        Pen: Unknown (5)"}},
        {"unit",
         packetBytes(1, 1, 0, 7, 0, hex("34770c3402")),
         {"    AdcReport, sub-type 12", "        Raw ADC: 564", "        Voltage: 2.75232 V"}},
        {"cut report",
         packetBytes(1, 1, 0, 7, 0, hex("0a2f040100ff")),
         {"    SignalReport, sub-type 4", "        0: 1"}},
        {"text", packetBytes(1, 1, 0, 7, 0, "\x08\x32Hi\r"), {"    Characters: Hi."}},
        {"call",
         packetBytes(2, 1, 6, 7, 0, hex("07000000020000003f21")),
         {"    Device: 7", "    Command: ?!"}},
        {"buffer",
         packetBytes(2, 1, 33, 7, 0, hex("0700000002000000020000000aff")),
         {"    Device: 7", "    Length: 2", "    Data: 0aff"}},
        {"status",
         packetBytes(5, 0, 0, 0, 0,
                     blocks::number(1, 8) + blocks::number(2, 8) + blocks::number(3, 8) +
                         blocks::number(quint64(-12600), 4) + blocks::number(0, 4)),
         {"    Monotonic: 1 ns", "    Real: 2 ns", "    Boot: 3 ns", "    Local offset: -12600 s"}},
        {"board",
         packetBytes(7, 1, 0, 7, 0, hex("0200000003000000")),
         {"    State: gone (2)", "    Index: 3"}},
        {"end",
         packetBytes(8, 0, 0, 0, 0,
                     hex("0200000009000000") + blocks::number(1, 4) + blocks::number(quint64(-7), 4) +
                         blocks::number(3, 8) + blocks::number(2, 8) + blocks::number(1, 8)),
         {"    Reason: signal (2)", "    Value: 9", "    Board -7: 3 delivered, 2 recorded, 1 lost"}},
    };
}

QList<QByteArray> packetsOf(const QList<Example> &examples)
{
    QList<QByteArray> packets;
    for (const Example &example : examples)
        packets += example.packet;
    return packets;
}

} // namespace

class DissectorTests : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldHasItsLabel();
    void pairs();
    void pairsOfTwoSessions();
    void expertItems();
    void laterVersion();
    void foreignPackets();
    void dissectorOfBefore();
    void installs();
    void installsOverNothingElse();
    void outputThatEnds();
    void globalNames();

private:
    Shark shark;
};

void DissectorTests::everyFieldHasItsLabel()
{
    shark.write(packetsOf(examples()));
    const QList<QStringList> trees = shark.trees();
    QCOMPARE(trees.size(), examples().size());
    for (int i = 0; i < trees.size(); ++i) {
        const Example example = examples()[i];
        const QStringList end = trees[i].mid(trees[i].size() - example.lines.size());
        QVERIFY2(end == example.lines, qPrintable(example.name + (":\n" + end.join('\n'))));
    }
}

/// What lies ahead is known when a packet is seen for the second time.
void DissectorTests::pairs()
{
    shark.write(
        {call(5), call(6, 4), returnOf(6, 7), returnOf(5, 8), returnOf(5, 9), returnOf(0xFFFFFFFF, 10)});
    const QStringList names{"padscope.call_in", "padscope.return_in"};
    QCOMPARE(shark.fields(names),
             (QList<QStringList>{{"", ""}, {"", ""}, {"2", ""}, {"1", ""}, {"", ""}, {"", ""}}));
    QCOMPARE(shark.fields(names, {"-2"}),
             (QList<QStringList>{{"", "4"}, {"", "3"}, {"2", ""}, {"1", ""}, {"", ""}, {"", ""}}));
}

/// Their numbers are the same; the low half of the number alone is in a return.
void DissectorTests::pairsOfTwoSessions()
{
    QByteArray other = call(0x100000005);
    other[24] = '\1';
    QByteArray otherReturn = returnOf(5, 6);
    otherReturn[24] = '\1';
    shark.write({call(5), other, otherReturn, returnOf(5, 6)});
    QCOMPARE(shark.fields({"padscope.return_in"}, {"-2"}), (QList<QStringList>{{"4"}, {"3"}, {""}, {""}}));
}

void DissectorTests::expertItems()
{
    const QByteArray end = packetBytes(8, 0, 0, 0, 0, hex("010000000000000000000000"), 0, 0, 26);
    shark.write({call(5, 0, 17), call(23, 4), returnOf(23, 24), end});
    const QStringList messages{"_ws.expert.message"};
    QCOMPARE(shark.fields(messages, {"-2"}),
             (QList<QStringList>{{"17 lost before this packet,A call that never returned"},
                                 {"A call within a call of the same thread"},
                                 {""},
                                 {""}}));

    // What is lost behind a call may be its return; so may what is cut off.
    shark.write({call(5), call(7, 0, 1), end});
    QCOMPARE(shark.fields(messages, {"-2"}),
             (QList<QStringList>{{"The return was not recorded"},
                                 {"1 lost before this packet,A call that never returned"},
                                 {""}}));
    const QByteArray sliceEnd = packetBytes(8, 0, 0, 0, 0, hex("040000000000000000000000"), 0, 0, 6);
    shark.write({call(5), sliceEnd});
    QCOMPARE(shark.fields(messages, {"-2"}), (QList<QStringList>{{"The return was not recorded"}, {""}}));
    shark.write({call(5)});
    QCOMPARE(shark.fields(messages, {"-2"}), (QList<QStringList>{{"The return was not recorded"}}));
}

void DissectorTests::laterVersion()
{
    QByteArray later = call(5);
    later[2] = '\2';
    shark.write({later, call(6)});
    QCOMPARE(shark.fields({"_ws.col.Info", "padscope.version", "_ws.expert.message"}),
             (QList<QStringList>{{"A header of a later version", "2", "A header of a later version"},
                                 {"orvexAttach()", "1", ""}}));
}

/// Without another dissector Wireshark's own tells what it lacks.
void DissectorTests::foreignPackets()
{
    shark.write({"foreign bytes", "", "PD", "PD\x01", QByteArray("PD\0\x28 of version 0", 17), "PE\x01\x28"});
    const QByteArray text = shark.output({"-V"});
    QCOMPARE(text.count("\nUser encapsulation not handled: DLT=147"), 6);
    QVERIFY(!text.contains("Padscope"));
}

void DissectorTests::dissectorOfBefore()
{
    shark.write({"\x45 no packet of the internet", call(5)});
    const QList<QStringList> shown =
        shark.fields({"frame.protocols", "_ws.lua.error"},
                     {"-o", R"uat(uat:user_dlts:"User 0 (DLT=147)","ip","0","","0","")uat"});
    QCOMPARE(shown[0][0], QString("padscope:user_dlt:ip:data"));
    QCOMPARE(shown[1][0], QString("padscope"));
    QCOMPARE(shown[0][1] + shown[1][1], QString());
}

/// The dissector with this home folder.
static QString install(const QString &home)
{
    QProcess padscope;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    padscope.setProcessEnvironment(environment);
    padscope.start(PADSCOPE, {"dissector", "--install"});
    padscope.waitForFinished(60'000);
    return QString::number(padscope.exitCode()) + ' ' + padscope.readAllStandardError();
}

void DissectorTests::installs()
{
    QTemporaryDir home;
    const QString file = home.filePath(".local/lib/wireshark/plugins/padscope.lua");
    QCOMPARE(install(home.path()), "0 padscope: installed " + file + '\n');
    QCOMPARE(install(home.path()), "0 padscope: installed " + file + '\n');
    QCOMPARE(QDir(QFileInfo(file).path()).entryList(QDir::Files), QStringList{"padscope.lua"});

    // Wireshark finds it there, without being told.
    shark.write({call(5)});
    QProcess tshark;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home.path());
    tshark.setProcessEnvironment(environment);
    tshark.start("tshark", {"-r", shark.capture(), "-T", "fields", "-e", "padscope.sequence"});
    tshark.waitForFinished(60'000);
    QCOMPARE(tshark.readAllStandardOutput(), QByteArray("5\n"));
}

void DissectorTests::installsOverNothingElse()
{
    QTemporaryDir home;
    const QString folder = home.filePath(".local/lib/wireshark/plugins/");
    const QString file = folder + "padscope.lua";
    QVERIFY(QDir().mkpath(folder));
    QFile other(file);
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write("-- somebody else's\n");
    other.close();
    QCOMPARE(install(home.path()), "1 padscope: " + file + ": it is not Padscope's, and is left as it is\n");
    QCOMPARE(QFileInfo(file).size(), 19);

    QVERIFY(other.remove());
    QVERIFY(QDir().mkdir(file));
    QCOMPARE(install(home.path()), "1 padscope: " + file + ": it is not Padscope's, and is left as it is\n");

    QTemporaryDir withoutFolder;
    QFile plugins(withoutFolder.filePath(".local"));
    QVERIFY(plugins.open(QIODevice::WriteOnly));
    QCOMPARE(install(withoutFolder.path()),
             "1 padscope: " +
                 withoutFolder.filePath(".local/lib/wireshark/plugins/padscope.lua: Not a directory\n"));
    QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"padscope.lua"});
}

/// A full disk is told; a reader that has seen enough is no failure.
void DissectorTests::outputThatEnds()
{
    const auto statusOf = [](const char *command) {
        QProcess shell;
        shell.start("bash", {"-c", command});
        shell.waitForFinished(60'000);
        return QString::number(shell.exitCode()) + ' ' + shell.readAllStandardError();
    };
    QCOMPARE(statusOf(PADSCOPE " dissector >/dev/full"),
             "1 padscope: standard output: No space left on device\n");
    QCOMPARE(statusOf(PADSCOPE " dissector | true; exit ${PIPESTATUS[0]}"), "0 ");
}

/// It defines no global name, and takes no other than these: Wireshark's, and of Lua what all versions have.
void DissectorTests::globalNames()
{
    QTemporaryDir scripts;
    QFile loader(scripts.filePath("loader.lua"));
    QVERIFY(loader.open(QIODevice::WriteOnly));
    loader.write("local seen = {}\n"
                 "local function tell(what, name)\n"
                 "  if not seen[name] then print(what .. name) end\n"
                 "  seen[name] = true\n"
                 "end\n"
                 "local names = {}\n"
                 "function names.__index(_, name) tell('takes ', name) return _G[name] end\n"
                 "function names.__newindex(_, name) tell('defines ', name) end\n"
                 "local file = io.open([[" +
                 shark.dissector().toUtf8() +
                 "]])\n"
                 "load(file:read('*a'), 'dissector', 't', setmetatable({}, names))()\n");
    loader.close();
    shark.write(packetsOf(examples()) + QList<QByteArray>{"foreign bytes"});
    const QByteArray output =
        outputOf("tshark", {"-X", "lua_script:" + loader.fileName(), "-r", shark.capture(), "-2", "-V"});
    QStringList names = QString::fromUtf8(output).split('\n').filter(QRegularExpression("^(takes|defines) "));
    names.sort();
    QCOMPARE(names.join('\n').remove("takes "),
             QString("DissectorTable\nProto\nProtoExpert\nProtoField\nUInt64\nbase\nbit\nexpert\n"
                     "frametype\nipairs\nmath\npcall\nstring\ntable\ntonumber\ntostring\nwtap"));
}

PADSCOPE_TESTS(DissectorTests);
#include "tst_dissector.moc"
