#include <QLabel>
#include <QTabWidget>

#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/capturedoutput.h"
#include "support/driverlibrary.h"
#include "support/otherstore.h"
#include "support/tests.h"

/// What is typed, and what views send, on its way to the first board.
class CommandTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void firstCommandAttaches();
    void laterCommandsAreOnlySent();
    void commandsGoToTheFirstBoardOnly();
    void bytesOfACommand_data();
    void bytesOfACommand();
    void shownTextIsSentAndRealTextKept();
    void lineIsSelectedForTheNextTyping();
    void withoutBoardNothingIsSent();
    void withoutLibraryNothingIsSent();
    void attachesAgainAfterADetach();
    void boardGoneMeanwhileIsNotAddressed();
    void resetOnTheMonitorTabIsOnlySent();
    void fixedCommandIsSentUnchanged();
    void fixedCommandWithoutBoardDoesNothing();
    void fixedCommandWhileDetachedDoesNothing();
    void fixedCommandDoesNotAttach();
};

namespace {

void enter(qorvexgraph &window, const QString &line)
{
    window.commandLine->setText(line);
    QTest::keyClick(window.commandLine, Qt::Key_Return);
}

/// The calls that enumeration makes no part of.
QStringList takeCommands(const DriverLibrary &library)
{
    QStringList commands;
    for (const QString &call : library.takeCalls()) {
        if (call.startsWith("orvexSendCommand(") || call.startsWith("orvexSetDriverDebugMode("))
            commands += call;
    }
    return commands;
}

} // namespace

void CommandTests::init()
{
    otherStore().clear();
}

void CommandTests::firstCommandAttaches()
{
    const DriverLibrary library("complete", {1001});
    qorvexgraph window;
    enter(window, "A");

    const QStringList calls = library.takeCalls();
    QCOMPARE(calls.size(), 8);
    QCOMPARE(calls.at(0), QStringLiteral("orvexAttach()"));
    QVERIFY(calls.at(1).startsWith("orvexSetPnpCallback("));
    QCOMPARE(calls.at(2), QStringLiteral("orvexGetDeviceCount()"));
    QVERIFY(calls.at(3).startsWith("orvexEnumDeviceInfo(0, "));
    QCOMPARE(calls.at(4), QStringLiteral("orvexSetXferMask(1001, 255)"));
    QVERIFY(calls.at(5).startsWith("orvexSetCallback(1001, "));
    QCOMPARE(calls.at(6), QStringLiteral("orvexSetDriverDebugMode(1001, 4, 4294967295)"));
    QCOMPARE(calls.at(7), QStringLiteral("orvexSendCommand(1001, \"A\\x0d\")"));
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b>"));
    window.close();
}

void CommandTests::laterCommandsAreOnlySent()
{
    const DriverLibrary library("complete", {1001});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();
    enter(window, "A");
    enter(window, "A");
    const QString sent = QStringLiteral("orvexSendCommand(1001, \"A\\x0d\")");
    QCOMPARE(library.takeCalls(), QStringList({sent, sent}));
    window.close();
}

void CommandTests::commandsGoToTheFirstBoardOnly()
{
    const DriverLibrary library("complete", {9, 3, 5});
    qorvexgraph window;
    enter(window, "A");
    window.SendCommand("B\r");
    const QStringList expected{
        "orvexSetDriverDebugMode(9, 4, 4294967295)",
        "orvexSendCommand(9, \"A\\x0d\")",
        "orvexSendCommand(9, \"B\\x0d\")",
    };
    QCOMPARE(takeCommands(library), expected);
    window.close();
}

void CommandTests::bytesOfACommand_data()
{
    addColumns<QString, QString>("line", "bytes");
    addRow("empty", "", "\\x0d");
    addRow("blanks are kept", " a b ", " a b \\x0d");
    addRow("reset", ":RMM", ":RMM\\x0d");
    addRow("reset in lower case", ":rmm", ":rmm\\x0d");
    addRow("Latin-1", QString::fromUtf8("\xc3\xa9\xc3\xbf"), "\\xe9\\xff\\x0d");
    addRow("beyond Latin-1", QString::fromUtf8("a\xe2\x82\xac"), "a?\\x0d");
    addRow("percent", "%1%s", "%1%s\\x0d");
}

void CommandTests::bytesOfACommand()
{
    QFETCH(QString, line);
    QFETCH(QString, bytes);
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.AttachHardware();
    enter(window, line);
    QCOMPARE(takeCommands(library), QStringList("orvexSendCommand(1, \"" + bytes + "\")"));
    window.close();
}

void CommandTests::shownTextIsSentAndRealTextKept()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.AttachHardware();
    window.commandLine->setEchoMode(QLineEdit::NoEcho);
    enter(window, "hidden");
    QCOMPARE(takeCommands(library), QStringList("orvexSendCommand(1, \"\\x0d\")"));
    QCOMPARE(window.commandLine->history, QList<QString>({"hidden"}));
    window.close();
}

void CommandTests::lineIsSelectedForTheNextTyping()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    enter(window, "first");
    QCOMPARE(window.commandLine->selectedText(), QStringLiteral("first"));
    QTest::keyClicks(window.commandLine, "next");
    QCOMPARE(window.commandLine->text(), QStringLiteral("next"));
    window.close();
}

void CommandTests::withoutBoardNothingIsSent()
{
    const DriverLibrary library("complete");
    qorvexgraph window;
    enter(window, ":RMM");
    QCOMPARE(takeCommands(library), QStringList());
    QCOMPARE(window.commandLine->history, QList<QString>({":RMM"}));
    QCOMPARE(window.commandLine->selectedText(), QStringLiteral(":RMM"));

    // Attached by now, if to nothing: no further attempt.
    enter(window, "A");
    QCOMPARE(library.takeCalls(), QStringList());
    window.close();
}

void CommandTests::withoutLibraryNothingIsSent()
{
    QVERIFY(!DriverLibrary::isLoaded());
    qorvexgraph window;
    const CapturedOutput captured(stderr);
    enter(window, "A");
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<i>No device found.</i>"));
    QCOMPARE(window.commandLine->history, QList<QString>({"A"}));
    QCOMPARE(window.commandLine->selectedText(), QStringLiteral("A"));
    window.close();
}

void CommandTests::attachesAgainAfterADetach()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    enter(window, "A");
    window.hide();
    window.detachFromHardware();
    library.takeCalls();
    enter(window, "B");
    QCOMPARE(takeCommands(library),
             QStringList({"orvexSetDriverDebugMode(1, 4, 4294967295)", "orvexSendCommand(1, \"B\\x0d\")"}));
    window.close();
}

void CommandTests::boardGoneMeanwhileIsNotAddressed()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.AttachHardware();
    window.detachFromHardware();
    library.setBoards({});
    library.takeCalls();
    enter(window, "B");
    QCOMPARE(takeCommands(library), QStringList());
    QCOMPARE(window.deviceIds, QList<int>());
    window.close();
}

void CommandTests::resetOnTheMonitorTabIsOnlySent()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.tabs->setCurrentWidget(window.monitorView);
    window.AttachHardware();
    library.takeCalls();
    enter(window, ":RMM");
    QCOMPARE(library.takeCalls(), QStringList("orvexSendCommand(1, \":RMM\\x0d\")"));
    window.close();
}

void CommandTests::fixedCommandIsSentUnchanged()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();
    for (const char *command : {".\rU8\r", "<", "", "\xe9"})
        window.SendCommand(command);
    const QStringList expected{
        "orvexSendCommand(1, \".\\x0dU8\\x0d\")",
        "orvexSendCommand(1, \"<\")",
        "orvexSendCommand(1, \"\")",
        "orvexSendCommand(1, \"\\xe9\")",
    };
    QCOMPARE(library.takeCalls(), expected);
    window.close();
}

void CommandTests::fixedCommandWithoutBoardDoesNothing()
{
    const DriverLibrary library("complete");
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();
    window.SendCommand("B\r");
    QCOMPARE(library.takeCalls(), QStringList());
    window.close();
}

void CommandTests::fixedCommandWhileDetachedDoesNothing()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.AttachHardware();
    window.detachFromHardware();
    library.takeCalls();
    QCOMPARE(window.deviceIds, QList<int>({1}));
    window.SendCommand("B\r");
    QCOMPARE(library.takeCalls(), QStringList());
}

void CommandTests::fixedCommandDoesNotAttach()
{
    const DriverLibrary library("complete", {1});
    qorvexgraph window;
    window.SendCommand("B\r");
    QCOMPARE(library.takeCalls(), QStringList());
    QVERIFY(!window.hardware);
}

PADSCOPE_TESTS(CommandTests);
#include "tst_commands.moc"
