#include <QLabel>

#include "orvexwrapper.h"
#include "qorvexgraph.h"
#include "support/capturedoutput.h"
#include "support/driverlibrary.h"
#include "support/tests.h"

/// How boards come under the tool's control, and go.
class AttachmentTests : public QObject
{
    Q_OBJECT

private slots:
    void callsOfAnAttach_data();
    void callsOfAnAttach();
    void recordIsPreparedOnce();
    void boardWithoutRecordIsLeftOut();
    void countBelowZeroIsNoBoard();
    void secondAttachRegistersDataCallbacksAgain();
    void connectionsAccumulate();
    void callsOfADetach();
    void detachWhenDetachedOnlyShowsIt();
    void statusTexts_data();
    void statusTexts();
    void withoutLibraryTheToolIsAttachedToNothing();
    void libraryThatAppearsIsFoundByTheNextAttach();
    void destructorMakesNoDriverCall();
};

namespace {

QStringList firstAttachCalls(const qorvexgraph &window, const DriverLibrary &library, const QVector<int> &ids)
{
    const QString context = addressText(&window);
    const QString pnp = addressText(&qorvexgraph::pnp);
    const QString data = addressText(&qorvexgraph::DataCallback);
    QStringList calls{"orvexAttach()", "orvexSetPnpCallback(" + pnp + ", " + context + ")",
                      "orvexGetDeviceCount()"};
    for (int i = 0; i < ids.size(); ++i) {
        const QString id = QString::number(ids.at(i));
        const QString record = addressText(library->recordAddress(0));
        calls += "orvexEnumDeviceInfo(" + QString::number(i) + ", " + record + ")";
        calls += "orvexSetXferMask(" + id + ", 255)";
        calls += "orvexSetCallback(" + id + ", " + data + ", " + context + ")";
    }
    return calls;
}

QByteArray bytesSeen(const DriverLibrary &library, int call)
{
    return {reinterpret_cast<const char *>(library->recordSeen(call)), 840};
}

} // namespace

void AttachmentTests::callsOfAnAttach_data()
{
    QTest::addColumn<QVector<int>>("ids");
    addRow("no board", QVector<int>{});
    addRow("one board", QVector<int>{1001});
    addRow("two boards, larger id first", QVector<int>{2002, -5});
}

void AttachmentTests::callsOfAnAttach()
{
    QFETCH(QVector<int>, ids);
    const DriverLibrary library("complete", ids);
    qorvexgraph window;

    window.AttachHardware();
    QCOMPARE(library.takeCalls(), firstAttachCalls(window, library, ids));
    QCOMPARE(window.deviceIds, ids.toList());
    QVERIFY(window.hardware);
    QVERIFY(!window.paused);
    window.close();
}

void AttachmentTests::recordIsPreparedOnce()
{
    const DriverLibrary library("complete", {258, 7});
    qorvexgraph window;
    window.AttachHardware();

    // A six in little-endian order, and 836 bytes of zero.
    QCOMPARE(bytesSeen(library, 0), QByteArray("\6\0\0\0", 4) + QByteArray(836, '\0'));
    // The second call finds what the library wrote for the first: the id 258 at offset 20, A5 around it.
    QCOMPARE(bytesSeen(library, 1), QByteArray("\6\0\0\0", 4) + QByteArray(16, '\xA5') +
                                        QByteArray("\2\1\0\0", 4) + QByteArray(816, '\xA5'));
    QCOMPARE(library->recordAddress(1), library->recordAddress(0));
    window.close();
}

void AttachmentTests::boardWithoutRecordIsLeftOut()
{
    const DriverLibrary library("complete", {11, 12, 13});
    library->setFailingIndex(1);
    qorvexgraph window;
    window.AttachHardware();

    QCOMPARE(window.deviceIds, QList<int>({11, 13}));
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>2 devices found.</b>"));
    QCOMPARE(library->dataCallbackCount(12), 0);
    const QStringList calls = library.takeCalls();
    QVERIFY(!calls.contains("orvexSetXferMask(12, 255)"));
    QVERIFY(calls.contains("orvexSetXferMask(13, 255)"));
    window.close();
}

void AttachmentTests::countBelowZeroIsNoBoard()
{
    const DriverLibrary library("complete", {11});
    library->setResult("orvexGetDeviceCount", -1);
    qorvexgraph window;
    window.AttachHardware();
    QCOMPARE(window.deviceIds, QList<int>());
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<i>No device found.</i>"));
    window.close();
}

void AttachmentTests::secondAttachRegistersDataCallbacksAgain()
{
    const DriverLibrary library("complete", {11, 12});
    qorvexgraph window;
    window.AttachHardware();
    const OrvexWrapper *wrapper = window.hardware;
    library.takeCalls();
    window.AttachHardware();

    QStringList calls = library.takeCalls();
    QVERIFY(!calls.isEmpty());
    QCOMPARE(calls.takeFirst(), QStringLiteral("orvexAttach()"));
    // No plug-and-play callback, but all the rest.
    QCOMPARE(calls.size(), 7);
    QCOMPARE(calls.first(), QStringLiteral("orvexGetDeviceCount()"));
    QCOMPARE(calls.filter("orvexSetCallback(").size(), 2);
    QCOMPARE(calls.filter("orvexSetXferMask(").size(), 2);
    QCOMPARE(window.hardware, wrapper);
    QCOMPARE(window.deviceIds, QList<int>({11, 12}));
    window.close();
}

void AttachmentTests::connectionsAccumulate()
{
    const DriverLibrary library("complete");
    qorvexgraph window;
    for (int attaches = 1; attaches <= 3; ++attaches) {
        window.AttachHardware();
        QCOMPARE(window.receivers(SIGNAL(DataReceived())), attaches);
    }
    window.detachFromHardware();
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 3);
    window.AttachHardware();
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 4);
    window.close();
}

void AttachmentTests::callsOfADetach()
{
    DriverLibrary library("complete", {11, 12});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();
    window.detachFromHardware();

    const QStringList expected{
        "orvexSetDriverDebugMode(11, 1, 4294967295)",
        "orvexSendCommand(11, \":MDU0\\x0d\")",
        "orvexSendCommand(11, \":MDP0\\x0d\")",
        "orvexSetDriverDebugMode(12, 1, 4294967295)",
        "orvexSendCommand(12, \":MDU0\\x0d\")",
        "orvexSendCommand(12, \":MDP0\\x0d\")",
        "orvexDetach()",
        "orvexDetach()",
    };
    QCOMPARE(library.takeCalls(), expected);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(window.deviceIds, QList<int>({11, 12}));
    library.close();
    QVERIFY(!DriverLibrary::isLoaded());
}

void AttachmentTests::detachWhenDetachedOnlyShowsIt()
{
    const DriverLibrary library("complete", {11});
    qorvexgraph window;
    window.detachFromHardware();
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<i>No device found.</i> <i>Paused</i>"));
    QCOMPARE(library.takeCalls(), QStringList());

    window.AttachHardware();
    window.detachFromHardware();
    library.takeCalls();
    window.statusLabel->setText("overwritten");
    window.detachFromHardware();
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b> <i>Paused</i>"));
    QCOMPARE(library.takeCalls(), QStringList());
}

void AttachmentTests::statusTexts_data()
{
    addColumns<QVector<int>, QString, QString>("ids", "attached", "detached");
    addRow("no board", QVector<int>{}, "<i>No device found.</i>", "<i>No device found.</i> <i>Paused</i>");
    addRow("one board", QVector<int>{5}, "<b>1 device found.</b>", "<b>1 device found.</b> <i>Paused</i>");
    addRow("two boards", QVector<int>{5, 6}, "<b>2 devices found.</b>",
           "<b>2 devices found.</b> <i>Paused</i>");
    addRow("twelve boards", QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, "<b>12 devices found.</b>",
           "<b>12 devices found.</b> <i>Paused</i>");
}

void AttachmentTests::statusTexts()
{
    QFETCH(QVector<int>, ids);
    const DriverLibrary library("complete", ids);
    qorvexgraph window;
    window.AttachHardware();
    QTEST(window.statusLabel->text(), "attached");
    window.detachFromHardware();
    QTEST(window.statusLabel->text(), "detached");
}

void AttachmentTests::withoutLibraryTheToolIsAttachedToNothing()
{
    QVERIFY(!DriverLibrary::isLoaded());
    qorvexgraph window;
    CapturedOutput captured(stderr);
    window.AttachHardware();
    QCOMPARE(captured.text(),
             QByteArray("liborvexboardex.so.1: cannot open shared object file: No such file or directory"));
    QVERIFY(window.hardware);
    QVERIFY(!window.paused);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<i>No device found.</i>"));
    window.detachFromHardware();
    QVERIFY(!window.hardware);
}

void AttachmentTests::libraryThatAppearsIsFoundByTheNextAttach()
{
    qorvexgraph window;
    CapturedOutput captured(stderr);
    window.AttachHardware();
    QVERIFY(!captured.text().isEmpty());

    const DriverLibrary library("complete", {11});
    window.AttachHardware();
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b>"));
    // The plug-and-play callback went nowhere with the first attach, and is not offered again.
    QCOMPARE(library->pnpCallbackCount(), 0);
    window.close();
}

void AttachmentTests::destructorMakesNoDriverCall()
{
    const DriverLibrary library("complete", {11});
    OrvexWrapper *left = nullptr;
    {
        qorvexgraph window;
        window.AttachHardware();
        left = window.hardware;
        library.takeCalls();
    }
    QCOMPARE(library.takeCalls(), QStringList());
    delete left;
}

PADSCOPE_TESTS(AttachmentTests);
#include "tst_attachment.moc"
