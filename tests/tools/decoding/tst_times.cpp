#include "records.h"
#include "support/tests.h"
#include "times.h"

using decoding::TimeStyle;

class TimesTests : public QObject
{
    Q_OBJECT

private slots:
    void styles_data();
    void styles();
    void eachSessionHasItsOwnClock();
};

void TimesTests::styles_data()
{
    addColumns<int, QString, QString>("style", "first", "second");
    addRow("relative", int(TimeStyle::Relative), QString("0.000000000"), QString("1.500000001"));
    addRow("delta", int(TimeStyle::Delta), QString("0.000000000"), QString("1.500000001"));
    addRow("epoch", int(TimeStyle::Epoch), QString("1700000000.000000000"), QString("1700000001.500000001"));
    addRow("utc", int(TimeStyle::Utc), QString("2023-11-14T22:13:30.000000000Z"),
           QString("2023-11-14T22:13:31.500000001Z"));
    addRow("local", int(TimeStyle::Local), QString("2023-11-14T18:43:30.000000000-03:30"),
           QString("2023-11-14T18:43:31.500000001-03:30"));
}

/// The first packet is a status by which the wall clock is 10 s ahead of the stamps, and local time 3.5 h
/// behind it.
void TimesTests::styles()
{
    using blocks::number;
    QFETCH(int, style);
    const quint64 start = 1'700'000'000'000'000'000;
    const OwnRecord status(packetBytes(5, 0, 0, 0, 0,
                                       number(0, 8) + number(start + 10'000'000'000, 8) + number(0, 8) +
                                           number(quint64(-12600), 4) + number(0, 4)),
                           start);
    const OwnRecord later(packetBytes(6, 0, 0, 0, 0, "x"), start + 1'500'000'001);
    decoding::Times times(static_cast<TimeStyle>(style));
    times.follow(status.record);
    QTEST(QString::fromStdString(times.textOf(status.record)), "first");
    times.follow(later.record);
    QTEST(QString::fromStdString(times.textOf(later.record)), "second");
    QCOMPARE(times.secondsOf(later.record), 1.500000001);
    // 18:43:31.500
    QCOMPARE(times.timeOfDayMs(later.record), 67'411'500);
}

/// As mergecap has them that were recorded an hour of local time apart.
void TimesTests::eachSessionHasItsOwnClock()
{
    using blocks::number;
    const quint64 start = 1'700'000'000'000'000'000;
    const auto inOtherSession = [](QByteArray packet) { return packet.replace(24, 4, "else"); };
    const QByteArray clock = number(0, 8) + number(start + 5'000'000'000, 8) + number(0, 8);
    const OwnRecord one(packetBytes(5, 0, 0, 0, 0, clock + number(0, 4) + number(0, 4)), start);
    const OwnRecord other(inOtherSession(packetBytes(5, 0, 0, 0, 0, clock + number(3600, 4) + number(0, 4))),
                          start + 1'000'000'000);
    decoding::Times times(TimeStyle::Local);
    times.follow(one.record);
    times.follow(other.record);
    QCOMPARE(times.textOf(one.record), std::string("2023-11-14T22:13:25.000000000+00:00"));
    QCOMPARE(times.textOf(other.record), std::string("2023-11-14T23:13:25.000000000+01:00"));
    QCOMPARE(times.timeOfDayMs(one.record), 80'005'000);
    QCOMPARE(times.timeOfDayMs(other.record), 83'605'000);
}

PADSCOPE_TESTS(TimesTests);
#include "tst_times.moc"
