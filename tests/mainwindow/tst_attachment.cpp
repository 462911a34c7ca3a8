#include "mainwindow/testwindow.h"
#include "support/capturedoutput.h"
#include "support/markingtranslator.h"

/// How boards come under the tool's control.
class AttachmentTests : public QObject
{
    Q_OBJECT

private slots:
    void callsOfAnAttach_data();
    void callsOfAnAttach();
    void recordIsPreparedOnce();
    void boardWithoutRecordIsLeftOut();
    void countBelowZeroIsNoBoard();
    void connectionsAccumulate();
    void detachWhenDetachedOnlyShowsIt();
    void statusTexts_data();
    void statusTexts();
    void libraryThatAppearsIsFoundByTheNextAttach();
};

namespace {

/// \param firstRecord number of records that the library has seen before
QStringList callsOfAnEnumeration(const TestWindow &window, const QVector<int> &ids, int firstRecord)
{
    QStringList calls("orvexGetDeviceCount()");
    for (int i = 0; i < ids.size(); ++i) {
        const QString record = addressText(window.library->recordAddress(firstRecord));
        calls += QString("orvexEnumDeviceInfo(%1, %2)").arg(i).arg(record);
        calls += QString("orvexSetXferMask(%1, 255)").arg(ids.at(i));
        calls += QString("orvexSetCallback(%1, %2, %3)")
                     .arg(ids.at(i))
                     .arg(addressText(&qorvexgraph::DataCallback), addressText(&window));
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
    TestWindow window(ids);
    window.AttachHardware();
    const QString notification =
        QString("orvexSetPnpCallback(%1, %2)").arg(addressText(&qorvexgraph::pnp), addressText(&window));
    QCOMPARE(window.library.takeCalls(),
             QStringList({"orvexAttach()", notification}) + callsOfAnEnumeration(window, ids, 0));
    QCOMPARE(Inspect::deviceIds(window), ids.toList());
    QVERIFY(Inspect::isAttached(window));

    // Again, but for the callback of notifications.
    const OrvexWrapper *binding = Inspect::binding(window);
    window.AttachHardware();
    QCOMPARE(window.library.takeCalls(),
             QStringList("orvexAttach()") + callsOfAnEnumeration(window, ids, ids.size()));
    QCOMPARE(Inspect::deviceIds(window), ids.toList());
    QCOMPARE(Inspect::binding(window), binding);
}

void AttachmentTests::recordIsPreparedOnce()
{
    const AttachedWindow window({258, 7});
    // A six in little-endian order, and 836 bytes of zero.
    QCOMPARE(bytesSeen(window.library, 0), QByteArray("\6\0\0\0", 4) + QByteArray(836, '\0'));
    // The second call finds what the library wrote for the first: the id 258 at offset 20, A5 around it.
    QCOMPARE(bytesSeen(window.library, 1), QByteArray("\6\0\0\0", 4) + QByteArray(16, '\xA5') +
                                               QByteArray("\2\1\0\0", 4) + QByteArray(816, '\xA5'));
}

void AttachmentTests::boardWithoutRecordIsLeftOut()
{
    TestWindow window({11, 12, 13});
    window.library->setFailingIndex(1);
    window.AttachHardware();
    QCOMPARE(Inspect::deviceIds(window), QList<int>({11, 13}));
    QCOMPARE(statusOf(window), QString("<b>2 devices found.</b>"));
    QCOMPARE(window.library->dataCallbackCount(12), 0);
    QCOMPARE(window.library.takeCalls().filter("orvexSetXferMask"),
             QStringList({"orvexSetXferMask(11, 255)", "orvexSetXferMask(13, 255)"}));
}

void AttachmentTests::countBelowZeroIsNoBoard()
{
    TestWindow window;
    window.library->setResult("orvexGetDeviceCount", -1);
    window.AttachHardware();
    QCOMPARE(Inspect::deviceIds(window), QList<int>());
    QCOMPARE(statusOf(window), QString("<i>No device found.</i>"));
}

void AttachmentTests::connectionsAccumulate()
{
    AttachedWindow window;
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 1);
    window.AttachHardware();
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 2);
    window.detach();
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 2);
    window.AttachHardware();
    QCOMPARE(window.receivers(SIGNAL(DataReceived())), 3);
}

void AttachmentTests::detachWhenDetachedOnlyShowsIt()
{
    TestWindow window;
    window.detach();
    QCOMPARE(statusOf(window), QString("<i>No device found.</i> <i>Paused</i>"));
    QCOMPARE(window.library.takeCalls(), QStringList());

    window.AttachHardware();
    window.detach();
    window.library.takeCalls();
    statusLabelOf(window)->setText("overwritten");
    window.detach();
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b> <i>Paused</i>"));
    QCOMPARE(window.library.takeCalls(), QStringList());
}

void AttachmentTests::statusTexts_data()
{
    addColumns<QVector<int>, QString>("ids", "status");
    addRow("no board", QVector<int>{}, "<i>No device found.</i>");
    addRow("one board", QVector<int>{5}, "<b>1 device found.</b>");
    addRow("two boards", QVector<int>{5, 6}, "<b>2 devices found.</b>");
    addRow("twelve boards", QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, "<b>12 devices found.</b>");
}

void AttachmentTests::statusTexts()
{
    QFETCH(QVector<int>, ids);
    QFETCH(QString, status);
    AttachedWindow window(ids);
    QCOMPARE(statusOf(window), status);
    window.detach();
    QCOMPARE(statusOf(window), status + " <i>Paused</i>");

    const MarkingTranslator translator;
    window.AttachHardware();
    QCOMPARE(statusOf(window), "{qorvexgraph: " + status + "}");
    window.detach();
    // The text of the mark begins with a blank.
    QCOMPARE(statusOf(window), "{qorvexgraph: " + status + "}{qorvexgraph:  <i>Paused</i>}");
}

void AttachmentTests::libraryThatAppearsIsFoundByTheNextAttach()
{
    QVERIFY(!DriverLibrary::isLoaded());
    qorvexgraph window;
    const CapturedOutput message(stderr);
    window.AttachHardware();
    QVERIFY(Inspect::isAttached(window));
    QCOMPARE(statusOf(window), QString("<i>No device found.</i>"));

    const DriverLibrary library("complete", {11});
    window.AttachHardware();
    QCOMPARE(statusOf(window), QString("<b>1 device found.</b>"));
    // The callback of notifications went nowhere with the first attach, and is not offered again.
    QCOMPARE(library->pnpCallbackCount(), 0);
    window.close();
    QVERIFY(Inspect::isDetached(window));
}

PADSCOPE_TESTS(AttachmentTests);
#include "tst_attachment.moc"
