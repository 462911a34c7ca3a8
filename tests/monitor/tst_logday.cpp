#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "support/tests.h"

/// The log file's name on a given day, in a process whose clock is set to it.
class LogDay : public QObject
{
    Q_OBJECT

private slots:
    void fileOfTheDay_data();
    void fileOfTheDay();
    void rowAfterMidnightGoesToTheNextDay();

private:
    static void logRows(const QString &home, const char *locale, const QStringList &timesAndRows);
    static QStringList logFiles(const QString &home);
    static QByteArray contents(const QString &home, const char *name);
};

void LogDay::logRows(const QString &home, const char *locale, const QStringList &timesAndRows)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    environment.insert("LC_ALL", locale);
    environment.insert("TZ", "UTC");
    environment.insert("LD_PRELOAD", FAKETIME_LIBRARY);
    environment.insert("FAKETIME_TIMESTAMP_FILE", home + "/clock");
    environment.insert("FAKETIME_NO_CACHE", "1");
    environment.insert("FAKETIME_FMT", "%s");
    environment.insert("FAKETIME_DONT_FAKE_MONOTONIC", "1");
    // The clock's library comes before the sanitizer's.
    environment.insert("ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(LOGROWS_PROGRAM, timesAndRows);
    QVERIFY2(process.waitForFinished(60000), qPrintable(process.errorString()));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

QStringList LogDay::logFiles(const QString &home)
{
    return QDir(home + "/qorvexgraph logs").entryList(QDir::Files, QDir::Name);
}

QByteArray LogDay::contents(const QString &home, const char *name)
{
    QFile file(home + "/qorvexgraph logs/" + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

void LogDay::fileOfTheDay_data()
{
    addColumns<QString, QByteArray, QString>("time", "locale", "file");
    addRow("a Sunday in November", "2026-11-15 12:00:00", QByteArray("C.UTF-8"), "Sun-Nov-15-26.log");
    addRow("day of one digit", "2026-03-05 12:00:00", QByteArray("C.UTF-8"), "Thu-Mar-5-26.log");
    addRow("year of one digit", "2008-02-29 12:00:00", QByteArray("C.UTF-8"), "Fri-Feb-29-08.log");
    addRow("American English", "2026-11-15 12:00:00", QByteArray("en_US.UTF-8"), "Sun-Nov-15-26.log");
    addRow("Spanish", "2026-11-15 12:00:00", QByteArray("es_ES.UTF-8"), "dom-nov-15-26.log");
}

void LogDay::fileOfTheDay()
{
    QFETCH(QString, time);
    QFETCH(QByteArray, locale);
    QFETCH(QString, file);
    const QTemporaryDir home;
    logRows(home.path(), locale, {time, "A"});
    QCOMPARE(logFiles(home.path()), QStringList{file});
}

void LogDay::rowAfterMidnightGoesToTheNextDay()
{
    const QTemporaryDir home;
    logRows(home.path(), "C.UTF-8", {"2026-12-31 23:59:00", "old year", "2027-01-01 00:00:01", "new year"});
    QCOMPARE(logFiles(home.path()), (QStringList{"Fri-Jan-1-27.log", "Thu-Dec-31-26.log"}));
    QCOMPARE(contents(home.path(), "Thu-Dec-31-26.log"), QByteArray("old year\n"));
    QCOMPARE(contents(home.path(), "Fri-Jan-1-27.log"), QByteArray("new year\n"));
}

PADSCOPE_TESTS(LogDay);
#include "tst_logday.moc"
