#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "support/tests.h"
#include "surroundings/childrun.h"

/// A clock that is set back while boards stream: what is not rate-limited is kept, and the rest is from the
/// next text on.
class Clock : public QObject
{
    Q_OBJECT

private slots:
    void jump_data();
    void jump();
};

void Clock::jump_data()
{
    addColumns<QString, QString, QString, QStringList>("zone", "before", "after", "logs");
    const QStringList sameDay("Sun-Nov-15-26.log");
    // The clock goes on while the program starts, so it begins a minute before it matters.
    // 1794744000 is 2026-11-15 12:00:00 UTC.
    addRow("an hour back", "UTC", "1794744000", "1794740400", sameDay);
    addRow("over midnight", "UTC", "1794787140", "1794787201",
           QStringList{"Mon-Nov-16-26.log", "Sun-Nov-15-26.log"});
    // Summer time ends on 2026-10-25 at 01:00:00 UTC, when 3 o'clock becomes 2 o'clock.
    addRow("the end of summer time", "CET-1CEST,M3.5.0,M10.5.0/3", "1792889940", "1792890001",
           QStringList("Sun-Oct-25-26.log"));
}

void Clock::jump()
{
    QFETCH(QString, zone);
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QStringList, logs);
    const QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString clock = home.filePath("clock");
    QFile file(clock);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("@" + before.toLatin1() + "\n");
    file.close();
    environment.insert("HOME", home.path());
    environment.insert("TZ", zone);
    environment.insert("LD_PRELOAD", FAKETIME_LIBRARY);
    environment.insert("FAKETIME_TIMESTAMP_FILE", clock);
    environment.insert("FAKETIME_NO_CACHE", "1");
    environment.insert("FAKETIME_FMT", "%s");
    environment.insert("FAKETIME_DONT_FAKE_MONOTONIC", "1");
    // The clock's library comes before the sanitizer's.
    environment.insert("ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0");
    const ChildRun result = runChild(CLOCKJUMP_PROGRAM, {clock, before, after}, environment);
    QVERIFY2(result.status == 0, result.errors);
    // A text; a position that the limit drops, as the clock says it is long before the text; a text; a
    // position after the threshold, and another.
    QCOMPARE(result.output, QByteArray("1 1 2 3 4 "));
    QCOMPARE(QDir(home.filePath("qorvexgraph logs")).entryList(QDir::Files, QDir::Name), logs);
}

PADSCOPE_TESTS(Clock);
#include "tst_clock.moc"
