#include "mainwindow/testwindow.h"

namespace {

const QString commandB = "orvexSendCommand(1, \"B\\x0d\")";
const QString commandC = "orvexSendCommand(1, \"C\\x0d\")";

/// Until a timer has sent the commands that wait, if any do.
void waitForCommands(const TestWindow &window)
{
    QTRY_VERIFY(!Inspect::hasWaitingCommands(window));
    QTest::qWait(10); // longer than a repeated attach waits
}

} // namespace

/// Commands that the user types while the driver library, inside one of its calls, runs the event loop.
class TypingHazards : public QObject
{
    Q_OBJECT

private slots:
    void insideTheFirstAttach_data();
    void insideTheFirstAttach();
    void insideTheSendingOfTheFirstThatWaits();
    void exceptionPassesTheSendingOfOneThatWaits();
    void afterACloseInsideTheAttachForOneThatWaits();
    void insideARepeatedAttach();
    void withoutBoards();
};

void TypingHazards::insideTheFirstAttach_data()
{
    addColumns<QString, QString, QStringList, bool>("steps", "inside", "sent", "attached");
    addRow("two commands", "attach", "A B", QStringList{debugMode, commandA, commandB}, true);
    addRow("of another command", "A", "B", QStringList{debugMode, commandA, debugMode, commandB}, true);
    addRow("typed before the waiting one is sent", "A C", "B",
           QStringList{debugMode, commandA, debugMode, commandB, commandC}, true);
    addRow("before a close", "attach", "A close", QStringList{}, false);
    addRow("after a close", "attach", "close show A", QStringList{debugMode, commandA}, true);
}

void TypingHazards::insideTheFirstAttach()
{
    QFETCH(QString, steps);
    QFETCH(QString, inside);
    QFETCH(bool, attached);
    TestWindow window;
    for (int round = 0; round < 2; ++round) {
        window.show();
        const InsideCall typing(window.library, "orvexAttach()", [&] { window.perform(inside); });
        window.perform(steps);
        waitForCommands(window);
        QTEST(takeCommands(window.library), "sent");
        QCOMPARE(Inspect::isAttached(window), attached);
        QCOMPARE(Inspect::isDetached(window), !attached);

        // Nothing is kept back, and what is dropped is dropped for good.
        window.AttachHardware();
        waitForCommands(window);
        QCOMPARE(takeCommands(window.library), QStringList());
        window.type("C");
        QCOMPARE(takeCommands(window.library), QStringList(commandC));
        window.detach();
        window.library.takeCalls();
    }
}

void TypingHazards::insideTheSendingOfTheFirstThatWaits()
{
    TestWindow window;
    int attaches = 0;
    const ObservedCalls observed(window.library, [&](const QString &call) {
        if (call == "orvexAttach()" && ++attaches == 1)
            window.perform("A B");
        else if (call == commandA)
            window.type("C");
    });
    window.AttachHardware();
    waitForCommands(window);
    QCOMPARE(takeCommands(window.library), QStringList({debugMode, commandA, commandB, commandC}));
    // The first, and the one for the commands.
    QCOMPARE(attaches, 2);
}

void TypingHazards::exceptionPassesTheSendingOfOneThatWaits()
{
    TestWindow window;
    int attaches = 0;
    const ObservedCalls observed(window.library, [&](const QString &call) {
        if (call == "orvexAttach()" && ++attaches == 1)
            window.perform("A B");
        else if (call == commandA)
            throw HostError();
    });
    window.AttachHardware();
    QVERIFY_EXCEPTION_THROWN(Inspect::attachAgain(window), HostError);
    waitForCommands(window);
    QCOMPARE(takeCommands(window.library).filter("orvexSendCommand"), QStringList({commandA, commandB}));
}

void TypingHazards::afterACloseInsideTheAttachForOneThatWaits()
{
    TestWindow window;
    window.show();
    int attaches = 0;
    const ObservedCalls observed(window.library, [&](const QString &call) {
        if (call == "orvexAttach()" && ++attaches <= 2)
            window.perform(attaches == 1 ? "close show A" : "close show B");
    });
    window.AttachHardware();
    QTRY_COMPARE(attaches, 3);
    waitForCommands(window);
    QVERIFY(Inspect::isAttached(window));
    // The second close has dropped the first.
    QCOMPARE(takeCommands(window.library), QStringList({debugMode, commandB}));
}

void TypingHazards::insideARepeatedAttach()
{
    AttachedWindow window;
    QStringList sent;
    const InsideCall typing(window.library, "orvexAttach()", [&] {
        window.type("A");
        sent = takeCommands(window.library);
    });
    window.AttachHardware();
    // There is a binding, so it is sent at once.
    QCOMPARE(sent, QStringList(commandA));
    QCOMPARE(takeCommands(window.library), QStringList());
}

void TypingHazards::withoutBoards()
{
    TestWindow window(QVector<int>{});
    const InsideCall typing(window.library, "orvexAttach()", [&] { window.type("A"); });
    window.AttachHardware();
    waitForCommands(window);
    QCOMPARE(takeCommands(window.library), QStringList());
    // It is not kept for boards that come.
    window.library.setBoards({1});
    window.AttachHardware();
    window.type("B");
    QCOMPARE(takeCommands(window.library), QStringList(commandB));
}

PADSCOPE_TESTS(TypingHazards);
#include "tst_hazards_typing.moc"
