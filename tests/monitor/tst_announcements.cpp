#include <QElapsedTimer>

#include "boundedtext.h"
#include "monitor/monitortest.h"
#include "support/accesstree.h"
#include "support/listener.h"

/// What a screen reader is told of the row below the rows.
class Announcements : public MonitorTest
{
    Q_OBJECT

private slots:
    void nameIsTheNewestRow();
    void longRowIsReadAsShown();
    void tellsNothingWhileTheLabelEnds();
    void newestRowOfASecondIsAnnounced();
    void aFloodIsAnnouncedOnceASecond();
    void nothingIsDoneWhileNobodyListens();
    void endsWithTheListener();
    void tabsComeAndGoWhileSomebodyListens();

private:
    void hear(QAccessibleEvent &event);
    std::unique_ptr<Listener> newListener()
    {
        announced.clear();
        announcedAt.clear();
        clock.start();
        return std::make_unique<Listener>([this](QAccessibleEvent &event) { hear(event); });
    }

    QStringList announced;       ///< names, since the listener began
    QVector<qint64> announcedAt; ///< ms since the listener began
    QElapsedTimer clock;
};

void Announcements::hear(QAccessibleEvent &event)
{
    if (event.type() != QAccessible::NameChanged || event.object() != lastRow)
        return;
    announced += event.accessibleInterface()->text(QAccessible::Name);
    announcedAt += clock.elapsed();
}

void Announcements::nameIsTheNewestRow()
{
    QCOMPARE(described(*accessOf(lastRow)), QString("StaticText: Newest row: : Newest row"));
    add("<b>bold</b> &amp; first");
    QCOMPARE(described(*accessOf(lastRow)), QString("StaticText: <b>bold</b> &amp; first: : Newest row"));
    view->AddData("left", "right");
    QCOMPARE(accessOf(lastRow)->text(QAccessible::Name), QString("left"));
    QLabel ofTheHost("other");
    QCOMPARE(described(*accessOf(&ofTheHost)), QString("StaticText: other"));
}

void Announcements::longRowIsReadAsShown()
{
    add(QString(8193, 'x'));
    QCOMPARE(accessOf(lastRow)->text(QAccessible::Name), QString(8192, 'x') + QChar(0x2026));
}

void Announcements::tellsNothingWhileTheLabelEnds()
{
    auto label = std::make_unique<BoundedLabel>();
    QAccessible::Id id = 0;
    int asked = 0;
    // Connected before Qt makes, and so called before Qt deletes the accessible object, at the same signal.
    connect(label.get(), &QObject::destroyed, this, [&] {
        const QAccessibleInterface *access = QAccessible::accessibleInterface(id);
        QVERIFY(!access->isValid());
        QCOMPARE(described(*access), QString("StaticText"));
        ++asked;
    });
    label->setText("row");
    id = QAccessible::uniqueId(accessOf(label.get()));
    label.reset();
    QCOMPARE(asked, 1);
}

void Announcements::newestRowOfASecondIsAnnounced()
{
    const auto listener = newListener();
    add("one");
    add("two");
    add("three");
    QVERIFY(announced.isEmpty());
    QTRY_COMPARE(announced, QStringList("three"));
    QVERIFY(announcedAt.first() >= 999);
    QVERIFY(!Inspect::isAnnouncing(*view));
}

void Announcements::aFloodIsAnnouncedOnceASecond()
{
    const auto listener = newListener();
    int row = 0;
    while (clock.elapsed() < 2500) {
        add(QString::number(++row));
        QCoreApplication::processEvents();
    }
    QVERIFY(announced.size() <= 2);
    QTRY_COMPARE(announced.value(announced.size() - 1), QString::number(row));
    QVERIFY(announced.size() <= 3);
    for (int i = 0; i < announcedAt.size(); ++i)
        QVERIFY(announcedAt[i] - (i == 0 ? 0 : announcedAt[i - 1]) >= 999);
}

void Announcements::nothingIsDoneWhileNobodyListens()
{
    add("one");
    QVERIFY(!Inspect::isAnnouncing(*view));
    newListener().reset();
    add("two");
    QVERIFY(!Inspect::isAnnouncing(*view));
    QVERIFY(announced.isEmpty());
}

void Announcements::endsWithTheListener()
{
    auto listener = newListener();
    add("one");
    QVERIFY(Inspect::isAnnouncing(*view));
    listener.reset();
    QVERIFY(!Inspect::isAnnouncing(*view));
}

void Announcements::tabsComeAndGoWhileSomebodyListens()
{
    auto listener = newListener();
    build();
    add("one");
    QVERIFY(Inspect::isAnnouncing(*view));
    build();
    QVERIFY(!Inspect::isAnnouncing(*view));
    listener.reset();
    listener = newListener();
    add("two");
    QTRY_COMPARE(announced, QStringList("two"));
}

PADSCOPE_TESTS(Announcements);
#include "tst_announcements.moc"
