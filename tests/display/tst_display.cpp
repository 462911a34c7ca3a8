#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>

#include "support/displayserver.h"
#include "support/tests.h"

/// The tool from end to end on a display server with a window manager, by key and mouse events that come from
/// the server. Each step needs the one before it.
class Display : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void toolStarts();
    void title();
    void typedCommandAttaches();
    void historyIsRecalled();
    void rowsAreLogged();
    void sliderIsMoved();
    void minimisedStaysAttached();
    void closingDetaches();
    void settingsAreKept();
    void cleanupTestCase();

private:
    /// Ends the whole program, since no step works without this one.
    void failIfItEnds(QProcess &process, const char *message);
    /// The rest of each line of the state that begins with this name.
    QStringList stateLines(const QString &name) const;
    QString state(const QString &name) const { return stateLines(name).value(0); }
    QStringList calls() const { return stateLines("call"); }
    static QByteArray xdotool(const QStringList &arguments);
    void click(const QString &what) const
    {
        xdotool(QStringList("mousemove") + state("at " + what).split(' ') + QStringList{"click", "1"});
    }

    QProcess server;
    QProcess manager;
    QProcess tool;
    QString window;
};

namespace {

constexpr int timeoutMs = 20000;

} // namespace

QStringList Display::stateLines(const QString &name) const
{
    QFile file(QDir::home().filePath("state"));
    file.open(QIODevice::ReadOnly);
    const QRegularExpression beginning('^' + name + ' ');
    return QString::fromUtf8(file.readAll()).split('\n').filter(beginning).replaceInStrings(beginning, "");
}

/// What it prints; nothing if it fails, when it may still print a zero.
QByteArray Display::xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    // Events are handled meanwhile, so that the end of the manager is noticed.
    const bool isDone = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, timeoutMs);
    if (isDone && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return process.readAllStandardOutput().trimmed();
    qWarning() << "xdotool" << arguments << process.readAllStandardError();
    return {};
}

void Display::failIfItEnds(QProcess &process, const char *message)
{
    connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, [this, message] {
        QTest::qFail(message, __FILE__, __LINE__);
        cleanupTestCase();
        std::exit(EXIT_FAILURE);
    });
}

void Display::initTestCase()
{
    const QString display = startDisplayServer(server);
    QVERIFY(!display.isEmpty());
    failIfItEnds(server, "the display server ended");
    qputenv("DISPLAY", display.toLatin1());
    QStringList command = qEnvironmentVariable("TST_DISPLAY_MANAGER", "openbox").split(' ');
    manager.setProcessChannelMode(QProcess::ForwardedChannels);
    failIfItEnds(manager, "the window manager ended");
    manager.start(command.takeFirst(), command);
    QVERIFY(manager.waitForStarted(timeoutMs));
    // The manager tells how many desktops there are once it manages.
    QTRY_VERIFY_WITH_TIMEOUT(!xdotool({"get_num_desktops"}).isEmpty(), timeoutMs);
}

void Display::toolStarts()
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    tool.setProcessChannelMode(QProcess::ForwardedChannels);
    tool.start(DISPLAYED_PROGRAM, {PADSCOPE_PLUGIN_FOLDER, QDir::home().filePath("state")});
    QTRY_COMPARE_WITH_TIMEOUT(state("tab"), QString("Bar Graph"), timeoutMs);
}

void Display::title()
{
    const QStringList search{"search", "--sync", "--onlyvisible", "--name", "Tendro Host$"};
    window = QString::fromLatin1(xdotool(search)).section('\n', 0, 0);
    QTRY_COMPARE(xdotool({"getwindowname", window}), QByteArray("TendroPadscope - Tendro Host"));
    xdotool({"windowactivate", "--sync", window});
    QTRY_COMPARE(xdotool({"getactivewindow"}), window.toLatin1());
    QCOMPARE(state("status"), QString("Devices found"));
    QCOMPARE(calls(), QStringList());
}

void Display::typedCommandAttaches()
{
    click("line");
    xdotool({"type", "--delay", "20", "first"});
    QTRY_COMPARE(state("line"), QString("first"));
    xdotool({"key", "Return"});
    QTRY_COMPARE(state("status"), QString("<b>1 device found.</b>"));
    QTRY_VERIFY(calls().contains("orvexSendCommand(1001, \"first\\r\")"));
    QCOMPARE(calls().first(), QString("orvexAttach()"));
}

void Display::historyIsRecalled()
{
    // The line was selected when it was sent, so that the next one replaces it.
    xdotool({"type", "--delay", "20", "?"});
    QTRY_COMPARE(state("line"), QString("?"));
    xdotool({"key", "Return"});
    QTRY_VERIFY(calls().contains("orvexSendCommand(1001, \"?\\r\")"));
    xdotool({"key", "Up"});
    QTRY_COMPARE(state("line"), QString("first"));
    xdotool({"key", "Down"});
    QTRY_COMPARE(state("line"), QString("?"));
}

void Display::rowsAreLogged()
{
    click("monitor");
    QTRY_COMPARE(state("tab"), QString("Monitor"));
    click("box");
    const QDir logs(QDir::home().filePath("qorvexgraph logs"));
    QTRY_COMPARE(logs.entryList(QDir::Files).size(), 1);
    QFile log(logs.filePath(logs.entryList(QDir::Files).first()));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QByteArray logged;
    QTRY_VERIFY_WITH_TIMEOUT((logged += log.readAll()).contains("X Fine 0: "), timeoutMs);
}

void Display::sliderIsMoved()
{
    QCOMPARE(state("slider"), QString("100"));
    // A page to the right, and then by the keyboard.
    click("slider");
    QTRY_COMPARE(state("slider"), QString("110"));
    xdotool({"key", "Home"});
    QTRY_COMPARE(state("slider"), QString("0"));
    xdotool({"key", "Right"});
    QTRY_COMPARE(state("slider"), QString("1"));
}

void Display::minimisedStaysAttached()
{
    const int before = calls().size();
    xdotool({"windowminimize", "--sync", window});
    QTRY_COMPARE(state("minimised"), QString("1"));
    // Long enough for a detach to have come.
    QTest::qWait(500);
    QCOMPARE(calls().size(), before);
    QCOMPARE(state("status"), QString("<b>1 device found.</b>"));
    xdotool({"windowactivate", "--sync", window});
    QTRY_COMPARE(state("minimised"), QString("0"));
}

void Display::closingDetaches()
{
    xdotool({"key", "alt+F4"});
    QTRY_COMPARE_WITH_TIMEOUT(tool.state(), QProcess::NotRunning, timeoutMs);
    QCOMPARE(tool.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.exitCode(), 0);
    const QStringList last = calls();
    QVERIFY(last.contains("orvexSendCommand(1001, \":MDU0\\r\")"));
    QVERIFY(last.contains("orvexSendCommand(1001, \":MDP0\\r\")"));
    QCOMPARE(last.last(), QString("orvexDetach()"));
    QVERIFY2(state("status").endsWith("<i>Paused</i>"), qPrintable(state("status")));
}

void Display::settingsAreKept()
{
    const QSettings settings(QDir::home().filePath("config/Corvane/qorvexgraph.conf"), QSettings::IniFormat);
    QCOMPARE(settings.value("history/0").toString(), QString("?"));
    QCOMPARE(settings.value("history/1").toString(), QString("first"));
    QCOMPARE(settings.value("Log To File").toBool(), true);
    QCOMPARE(settings.value("monitor.displayThreshold").toInt(), 1);
}

void Display::cleanupTestCase()
{
    for (QProcess *process : {&tool, &manager, &server}) {
        process->disconnect(this);
        process->terminate();
        process->waitForFinished(5000);
    }
}

PADSCOPE_TESTS(Display);
#include "tst_display.moc"
