#include "firmware.h"
#include "support/tests.h"

/// Commands: known with or without a carriage return, split or joined, and answered one by one.
class tst_firmware : public QObject
{
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
    void aCommandInPieces();
    void switches();
    void frequencySteps();
    void aLockedFrequencyStands();
    void noAnswerIsTakenForASignalLine();
    void noTwoAnswersInARowAreTheSame();
};

using Answers = std::vector<std::string>;

namespace {

const std::string known = "not known, commands: . B U8 U0 < > V T ? :RMM :MDU0 :MDP0!";

} // namespace

void tst_firmware::answers_data()
{
    addColumns<QByteArray, QStringList>("command", "answers");
    addRow("with carriage return", QByteArray("B\r"), QStringList{"[B] streaming!"});
    addRow("without", QByteArray("B"), QStringList{"[B] streaming!"});
    addRow("joined", QByteArray(".\rU8\r"), QStringList{"[.] streaming stopped!", "[U8] frequency locked!"});
    addRow("joined without", QByteArray("U0B"), QStringList{"[U0] frequency not locked!", "[B] streaming!"});
    addRow("empty line", QByteArray("\r"), QStringList{});
    addRow("nothing", QByteArray(""), QStringList{});
    addRow("unknown", QByteArray("hello\r"), QStringList{"[hello] " + QString::fromStdString(known)});
    addRow("unknown without", QByteArray("U9"), QStringList{"[U9] " + QString::fromStdString(known)});
    addRow("only a beginning", QByteArray(":MD"), QStringList{});
    addRow("a beginning ended", QByteArray(":MD\r"), QStringList{"[:MD] " + QString::fromStdString(known)});
    addRow("odd characters", QByteArray("x!\x01\xff\r"),
           QStringList{"[x...] " + QString::fromStdString(known)});
    addRow("long", QByteArray(500, 'x'),
           QStringList{"[" + QString(40, 'x') + "] " + QString::fromStdString(known)});
    addRow("extremes", QByteArray(":RMM\r"), QStringList{"[:RMM] extremes reset!"});
    addRow("closing", QByteArray(":MDU0\r:MDP0\r"), QStringList{"[:MDU0] goodbye!", "[:MDP0] goodbye!"});
}

void tst_firmware::answers()
{
    QFETCH(QByteArray, command);
    Sensor sensor(1);
    Firmware firmware;
    QStringList answers;
    for (const std::string &answer :
         firmware.take({command.constData(), static_cast<std::size_t>(command.size())}, sensor))
        answers.append(QString::fromStdString(answer));
    QTEST(answers, "answers");
}

void tst_firmware::aCommandInPieces()
{
    Sensor sensor(1);
    Firmware firmware;
    QCOMPARE(firmware.take(":", sensor), Answers{});
    QCOMPARE(firmware.take("RM", sensor), Answers{});
    QCOMPARE(firmware.take("M", sensor), Answers{"[:RMM] extremes reset!"});
    QCOMPARE(firmware.take("\r", sensor), Answers{});
}

void tst_firmware::switches()
{
    Sensor sensor(1);
    Firmware firmware;
    QVERIFY(firmware.switches().streaming);
    QVERIFY(!firmware.switches().voltages);
    QVERIFY(!firmware.switches().statusText);
    QCOMPARE(firmware.take("V\rT\r.", sensor),
             (Answers{"[V] voltage reports on!", "[T] status text on!", "[.] streaming stopped!"}));
    QVERIFY(!firmware.switches().streaming);
    QVERIFY(firmware.switches().voltages);
    QVERIFY(firmware.switches().statusText);
    QCOMPARE(firmware.take("VTB", sensor),
             (Answers{"[V] voltage reports off!", "[T] status text off!", "[B] streaming!"}));
    QVERIFY(firmware.switches().streaming);
    QVERIFY(!firmware.switches().voltages);
    QVERIFY(!firmware.switches().statusText);
}

void tst_firmware::frequencySteps()
{
    Sensor sensor(1);
    Firmware firmware;
    // 2000 steps of 56.25 Hz are 112500 Hz; 2001 are 112556.25.
    QCOMPARE(firmware.take(">", sensor), Answers{"[>] frequency 112556 Hz!"});
    QCOMPARE(firmware.take("<<", sensor), (Answers{"[<] frequency 112500 Hz!", "[<] frequency 112443 Hz!"}));
    sensor.stepFrequency(-100000);
    QCOMPARE(sensor.frequency(), 0);
    sensor.stepFrequency(100000);
    QCOMPARE(sensor.frequency(), 8888); // 499950 Hz: the tool shows up to 500000
}

void tst_firmware::aLockedFrequencyStands()
{
    Sensor sensor(1);
    Firmware firmware;
    firmware.take("U8", sensor);
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(sensor.measure(i).frequencyRaw, 2000);
    firmware.take("U0", sensor);
    bool drifts = false;
    for (int i = 0; i < 1000; ++i)
        drifts = drifts || sensor.measure(i).frequencyRaw != 2000;
    QVERIFY(drifts);
}

void tst_firmware::noAnswerIsTakenForASignalLine()
{
    Sensor sensor(1);
    Firmware firmware;
    for (int length = 1; length < 100; ++length) {
        const Answers answers = firmware.take(std::string(static_cast<std::size_t>(length), 'x'), sensor);
        QCOMPARE(answers.size(), std::size_t{1});
        QVERIFY(answers.front().size() != 74);
        QCOMPARE(answers.front().find('!'), answers.front().size() - 1);
    }
}

// The Monitor drops the second of two equal reports.
void tst_firmware::noTwoAnswersInARowAreTheSame()
{
    Sensor sensor(1);
    Firmware firmware;
    QCOMPARE(firmware.take("BBBU8B", sensor),
             (Answers{"[B] streaming!", "[B] again: streaming!", "[B] streaming!", "[U8] frequency locked!",
                      "[B] streaming!"}));
}

PADSCOPE_TESTS(tst_firmware);
#include "tst_firmware.moc"
