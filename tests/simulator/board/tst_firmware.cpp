#include "firmware.h"
#include "support/datalines.h"
#include "support/tests.h"

/// Commands: known with or without a carriage return, split or joined, and answered one by one.
class tst_firmware : public QObject
{
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
    void theFrequencyHasLimits();
    void aLockedFrequencyStands();
    void noAnswerIsTakenForASignalLine();
};

namespace {

/// Joined by blanks; "-" for none.
QString answersOf(Firmware &firmware, Sensor &sensor, const QByteArray &sent)
{
    QStringList answers;
    for (const std::string &answer : firmware.take(sent.toStdString(), sensor))
        answers += QString::fromStdString(answer);
    return answers.isEmpty() ? "-" : answers.join(' ');
}

QString stateOf(const Switches &now)
{
    const QString state = QString(now.streaming ? "streaming" : "paused") + (now.voltages ? " voltages" : "");
    return state + (now.statusText ? " texts" : "");
}

} // namespace

void tst_firmware::answers_data()
{
    addColumns<QStringList, QStringList, QString>("sends", "answers", "state");
    for (const QStringList &line : dataLines(TEST_FOLDER "/commands.txt", 4, 4))
        addRow(qPrintable(line[0]), line[1].split(" & "), line[2].split(" & "), line[3]);
}

void tst_firmware::answers()
{
    QFETCH(QStringList, sends);
    QFETCH(QStringList, answers);
    Sensor sensor(1);
    Firmware firmware;
    QStringList found;
    for (const QString &text : sends) {
        const QByteArray bytes =
            text.toLatin1().replace("\\r", "\r").replace("\\x01", "\x01").replace("\\xff", "\xff");
        found += answersOf(firmware, sensor, bytes);
    }
    QCOMPARE(found, answers);
    QTEST(stateOf(firmware.switches()), "state");
}

void tst_firmware::theFrequencyHasLimits()
{
    Sensor sensor(1);
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
        const QString answer = answersOf(firmware, sensor, QByteArray(length, 'x'));
        QVERIFY(answer.size() != 74);
        QCOMPARE(answer.indexOf('!'), answer.size() - 1);
    }
}

PADSCOPE_TESTS(tst_firmware);
#include "tst_firmware.moc"
