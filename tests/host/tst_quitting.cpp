#include "host/examplefolder.h"
#include "support/tests.h"

#include <csignal>
#include <QProcess>
#include <QSettings>

/// A signal from outside ends the host as its user would.
class QuittingTest : public QObject
{
    Q_OBJECT

private slots:
    void closesToolFirst_data();
    void closesToolFirst();
    void remembersToolForTheNextStart();

private:
    static bool runUntilSignal(const ExampleFolder &folder, const QStringList &arguments, int number,
                               int &status);
};

/// \return whether the host opened a tool, and ended by itself
bool QuittingTest::runUntilSignal(const ExampleFolder &folder, const QStringList &arguments, int number,
                                  int &status)
{
    QProcess host;
    host.start(QStringLiteral(TENDRO_HOST),
               QStringList{QStringLiteral("--plugins"), folder.path()} + arguments);
    if (!QTest::qWaitFor([&] { return !folder.events().isEmpty(); }, 30000))
        return false;
    ::kill(static_cast<pid_t>(host.processId()), number);
    const bool ended = host.waitForFinished(30000) && host.exitStatus() == QProcess::NormalExit;
    status = host.exitCode();
    return ended;
}

void QuittingTest::closesToolFirst_data()
{
    QTest::addColumn<int>("number");
    addRow("SIGINT", SIGINT);
    addRow("SIGTERM", SIGTERM);
}

void QuittingTest::closesToolFirst()
{
    QFETCH(int, number);
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    int status = -1;
    QVERIFY(runUntilSignal(folder, {QStringLiteral("--open"), QStringLiteral("Second")}, number, status));
    QCOMPARE(status, 0);
    QCOMPARE(folder.events(),
             QStringList({QStringLiteral("widget()"), QStringLiteral("closeWidget"),
                          QStringLiteral("widget closed"), QStringLiteral("driver missing"),
                          QStringLiteral("widget destroyed"), QStringLiteral("plugin destroyed")}));
}

void QuittingTest::remembersToolForTheNextStart()
{
    int status = -1;
    {
        const ExampleFolder folder;
        QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
        QVERIFY(
            runUntilSignal(folder, {QStringLiteral("--open"), QStringLiteral("Second")}, SIGTERM, status));
    }
    const QSettings settings(QStringLiteral("tendro-host"), QStringLiteral("tendro-host"));
    QCOMPARE(settings.value(QStringLiteral("tool")).toString(), QStringLiteral("Second"));
    const ExampleFolder folder;
    QVERIFY(folder.addLibrary(QStringLiteral("example_second")));
    // it opens the tool unasked, or there would be no event to wait for
    QVERIFY(runUntilSignal(folder, {}, SIGTERM, status));
    QCOMPARE(status, 0);
}

PADSCOPE_TESTS(QuittingTest);
#include "tst_quitting.moc"
