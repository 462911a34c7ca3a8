#include "mainwindow/testwindow.h"
#include "support/otherstore.h"

/// What is typed, and what views send, on its way to the first board.
class CommandTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void onlyTheFirstCommandAttaches();
    void commandsGoToTheFirstBoardOnly();
    void bytesOfACommand_data();
    void bytesOfACommand();
    void shownTextIsSentAndRealTextKept();
    void withoutBoardNothingIsSent();
    void attachesAgainAfterADetach();
    void currentTabIsOfferedTheCommandFirst();
    void fixedCommandIsSentUnchanged();
    void fixedCommandNeedsABoardAndABinding();
};

void CommandTests::init()
{
    otherStore().clear();
}

void CommandTests::onlyTheFirstCommandAttaches()
{
    TestWindow window;
    window.type("A");
    const QStringList calls = window.library.takeCalls();
    QCOMPARE(calls.size(), 8);
    QCOMPARE(calls.first(), QString("orvexAttach()"));
    QCOMPARE(calls.mid(6), QStringList({debugMode, commandA}));
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b>"));
    QCOMPARE(window.commandLine->selectedText(), QString("A"));
    window.type("A");
    QCOMPARE(window.library.takeCalls(), QStringList(commandA));
}

void CommandTests::commandsGoToTheFirstBoardOnly()
{
    TestWindow window({9, 3, 5});
    window.type("A");
    window.SendCommand("B\r");
    const QStringList expected{
        "orvexSetDriverDebugMode(9, 4, 4294967295)",
        "orvexSendCommand(9, \"A\\x0d\")",
        "orvexSendCommand(9, \"B\\x0d\")",
    };
    QCOMPARE(takeCommands(window.library), expected);
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
    AttachedWindow window;
    window.type(line);
    QCOMPARE(window.library.takeCalls(), QStringList("orvexSendCommand(1, \"" + bytes + "\")"));
}

void CommandTests::shownTextIsSentAndRealTextKept()
{
    AttachedWindow window;
    window.commandLine->setEchoMode(QLineEdit::NoEcho);
    window.type("hidden");
    QCOMPARE(window.library.takeCalls(), QStringList("orvexSendCommand(1, \"\\x0d\")"));
    QCOMPARE(window.commandLine->historyLines(), QStringList("hidden"));
}

void CommandTests::withoutBoardNothingIsSent()
{
    TestWindow window(QVector<int>{});
    window.type(":RMM");
    QCOMPARE(takeCommands(window.library), QStringList());
    QCOMPARE(window.commandLine->historyLines(), QStringList(":RMM"));
    QCOMPARE(window.commandLine->selectedText(), QString(":RMM"));

    // Attached by now, if to nothing: no further attempt.
    window.type("A");
    QCOMPARE(window.library.takeCalls(), QStringList());
}

void CommandTests::attachesAgainAfterADetach()
{
    AttachedWindow window;
    window.detach();
    window.library.takeCalls();
    window.type("A");
    QCOMPARE(takeCommands(window.library), QStringList({debugMode, commandA}));

    // The board is gone meanwhile.
    window.detach();
    window.library.setBoards({});
    window.library.takeCalls();
    window.type("A");
    QCOMPARE(takeCommands(window.library), QStringList());
    QCOMPARE(Inspect::deviceIds(window), QList<int>());
}

void CommandTests::currentTabIsOfferedTheCommandFirst()
{
    AttachedWindow window;
    const RecordingView *other = window.showRecordingView();
    const RecordingView *current = window.showRecordingView();
    QStringList offered;
    const InsideCall sending(window.library, "orvexSendCommand(", [&] { offered = current->commands; });
    window.type("A");
    QCOMPARE(offered, QStringList("A\r"));
    QCOMPARE(other->commands, QStringList());

    // Not what a view sends, nor what is not sent.
    window.SendCommand("B\r");
    window.library.setBoards({});
    window.AttachHardware();
    window.type("C");
    QCOMPARE(current->commands, QStringList("A\r"));
}

void CommandTests::fixedCommandIsSentUnchanged()
{
    AttachedWindow window;
    for (const char *command : {".\rU8\r", "<", "", "\xe9"})
        window.SendCommand(command);
    const QStringList expected{
        "orvexSendCommand(1, \".\\x0dU8\\x0d\")",
        "orvexSendCommand(1, \"<\")",
        "orvexSendCommand(1, \"\")",
        "orvexSendCommand(1, \"\\xe9\")",
    };
    QCOMPARE(window.library.takeCalls(), expected);
}

void CommandTests::fixedCommandNeedsABoardAndABinding()
{
    TestWindow window;
    window.SendCommand("B\r");
    QCOMPARE(window.library.takeCalls(), QStringList());
    QVERIFY(Inspect::isDetached(window));

    window.AttachHardware();
    window.detach();
    window.library.takeCalls();
    QCOMPARE(Inspect::deviceIds(window), QList<int>({1}));
    window.SendCommand("B\r");
    QCOMPARE(window.library.takeCalls(), QStringList());

    window.library.setBoards({});
    window.AttachHardware();
    window.library.takeCalls();
    window.SendCommand("B\r");
    QCOMPARE(window.library.takeCalls(), QStringList());
}

PADSCOPE_TESTS(CommandTests);
#include "tst_commands.moc"
