#include <QRegularExpression>

#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/observedcalls.h"
#include "support/tests.h"

namespace {

void type(const qorvexgraph &window, const char *text)
{
    window.commandLine->setText(text);
    QTest::keyClick(window.commandLine, Qt::Key_Return);
}

/// Does something inside an orvexAttach(), once.
class InsideAttach
{
public:
    InsideAttach(const DriverLibrary &library, std::function<void()> action)
        : observed(library, [this, action](const QString &call) {
            if (call == QLatin1String("orvexAttach()") && !std::exchange(isDone, true))
                action();
        })
    {
    }

private:
    bool isDone = false;
    ObservedCalls observed;
};

const QString debugMode = QStringLiteral("orvexSetDriverDebugMode(1, 4, 4294967295)");
const QString commandA = QStringLiteral("orvexSendCommand(1, \"A\\x0d\")");
const QString commandB = QStringLiteral("orvexSendCommand(1, \"B\\x0d\")");
const QString commandC = QStringLiteral("orvexSendCommand(1, \"C\\x0d\")");

/// The commands so far, and the debug modes that go before them.
QStringList commandsSeen(const DriverLibrary &library)
{
    return library.takeCalls().filter(QRegularExpression("orvexSendCommand|orvexSetDriverDebugMode"));
}

/// What a slot of the host's throws, and its notify() catches.
struct HostError
{
};

} // namespace

/// Commands that the user types while the driver library, inside one of its calls, runs the event loop.
class TypingHazards : public QObject
{
    Q_OBJECT

private slots:
    void insideTheFirstAttach();
    void insideTheAttachOfAnotherCommand();
    void insideAttachesOneAfterTheOther();
    void insideTheSendingOfTheFirstThatWaits();
    void exceptionPassesTheSendingOfOneThatWaits();
    void afterACloseInsideTheAttachForOneThatWaits();
    void beforeACloseInsideTheFirstAttach();
    void afterACloseInsideTheFirstAttach();
    void insideARepeatedAttach();
    void withoutBoards();
};

void TypingHazards::insideTheFirstAttach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    {
        const InsideAttach observed(library, [&] {
            type(window, "A");
            type(window, "B");
        });
        window.AttachHardware();
    }
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QCOMPARE(commandsSeen(library), (QStringList{debugMode, commandA, commandB}));
    QCOMPARE(window.commandLine->selectedText(), QStringLiteral("B"));
    QCOMPARE(window.commandLine->historyLines(), (QStringList{"B", "A"}));

    type(window, "C");
    QCOMPARE(commandsSeen(library), QStringList{commandC});
    window.detachFromHardware();
}

void TypingHazards::insideTheAttachOfAnotherCommand()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    {
        const InsideAttach observed(library, [&] { type(window, "B"); });
        type(window, "A");
    }
    QCOMPARE(commandsSeen(library), (QStringList{debugMode, commandA}));
    // Typed before the waiting one was sent.
    type(window, "C");
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QCOMPARE(commandsSeen(library), (QStringList{debugMode, commandB, commandC}));
    window.detachFromHardware();
}

void TypingHazards::insideAttachesOneAfterTheOther()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    for (int round = 0; round < 3; ++round) {
        {
            const InsideAttach observed(library, [&] { type(window, "A"); });
            window.AttachHardware();
        }
        QTRY_VERIFY(window.waitingCommands.isEmpty());
        QCOMPARE(commandsSeen(library), (QStringList{debugMode, commandA}));
        window.detachFromHardware();
        library.takeCalls();
    }
}

void TypingHazards::insideTheSendingOfTheFirstThatWaits()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    bool isAttached = false;
    const ObservedCalls observed(library, [&](const QString &call) {
        if (call == QLatin1String("orvexAttach()") && !std::exchange(isAttached, true)) {
            type(window, "A");
            type(window, "B");
        } else if (call == commandA) {
            type(window, "C");
        }
    });
    window.AttachHardware();
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QTest::qWait(10); // longer than a repeated attach waits
    const QStringList calls = library.takeCalls();
    QCOMPARE(calls.filter(QRegularExpression("orvexSendCommand|orvexSetDriverDebugMode")),
             (QStringList{debugMode, commandA, commandB, commandC}));
    // The first, and the one for the commands.
    QCOMPARE(calls.filter("orvexAttach()").size(), 2);
    window.detachFromHardware();
}

void TypingHazards::exceptionPassesTheSendingOfOneThatWaits()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    bool isAttached = false;
    const ObservedCalls observed(library, [&](const QString &call) {
        if (call == QLatin1String("orvexAttach()") && !std::exchange(isAttached, true)) {
            type(window, "A");
            type(window, "B");
        } else if (call == commandA) {
            throw HostError();
        }
    });
    window.AttachHardware();
    QVERIFY_EXCEPTION_THROWN(window.attachAgain(), HostError);
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QCOMPARE(commandsSeen(library).filter("orvexSendCommand"), (QStringList{commandA, commandB}));
    window.detachFromHardware();
}

void TypingHazards::afterACloseInsideTheAttachForOneThatWaits()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    int attaches = 0;
    const ObservedCalls observed(library, [&](const QString &call) {
        if (call != QLatin1String("orvexAttach()") || ++attaches > 2)
            return;
        window.close();
        window.show();
        type(window, attaches == 1 ? "A" : "B");
    });
    window.AttachHardware();
    QTRY_COMPARE(attaches, 3);
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QVERIFY(window.hardware);
    // The second close has dropped the first.
    QCOMPARE(commandsSeen(library), (QStringList{debugMode, commandB}));
    window.detachFromHardware();
}

void TypingHazards::beforeACloseInsideTheFirstAttach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    {
        const InsideAttach observed(library, [&] {
            type(window, "A");
            window.close();
        });
        window.AttachHardware();
    }
    QTest::qWait(10); // longer than a repeated attach waits
    QCOMPARE(commandsSeen(library), QStringList());
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);

    window.AttachHardware();
    QTest::qWait(10);
    QCOMPARE(commandsSeen(library), QStringList());
    window.detachFromHardware();
}

void TypingHazards::afterACloseInsideTheFirstAttach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    {
        const InsideAttach observed(library, [&] {
            window.close();
            window.show();
            type(window, "A");
        });
        window.AttachHardware();
    }
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QVERIFY(window.hardware);
    QVERIFY(!window.paused);
    QCOMPARE(commandsSeen(library), (QStringList{debugMode, commandA}));
    window.detachFromHardware();
}

void TypingHazards::insideARepeatedAttach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    QStringList seen;
    const InsideAttach observed(library, [&] {
        type(window, "A");
        seen = commandsSeen(library);
    });
    window.AttachHardware();
    // There is a binding, so it is sent at once.
    QCOMPARE(seen, QStringList{commandA});
    QCOMPARE(commandsSeen(library), QStringList());
    window.detachFromHardware();
}

void TypingHazards::withoutBoards()
{
    const DriverLibrary library("complete");
    qorvexgraph window;
    {
        const InsideAttach observed(library, [&] { type(window, "A"); });
        window.AttachHardware();
    }
    QTRY_VERIFY(window.waitingCommands.isEmpty());
    QCOMPARE(commandsSeen(library), QStringList());
    // It is not kept for boards that come.
    library.setBoards({1});
    window.AttachHardware();
    type(window, "B");
    QCOMPARE(commandsSeen(library), QStringList{commandB});
    window.detachFromHardware();
}

PADSCOPE_TESTS(TypingHazards);
#include "tst_hazards_typing.moc"
