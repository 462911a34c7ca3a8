#include "bargraph/barview.h"
#include "support/accesstree.h"
#include "support/tests.h"

/// The picture as a screen reader reads it.
class PictureAccess : public QObject
{
    Q_OBJECT

private slots:
    void init() { FakeWindow().settings.clear(); }
    void parts_data();
    void parts();
    void isReadAnew();
    void isOneTextPerPart();
    void textIsReadAndNothingElse();
    void liesWhereItIsPainted();
    void leavesOtherFramesAlone();
    void outlivesItsView();
};

namespace {

QString partsOf(const BarView &bars)
{
    QAccessibleInterface *picture = accessOf(bars.frame());
    QStringList parts{described(*picture)};
    for (int i = 0; i < picture->childCount(); ++i) {
        const QAccessibleInterface &part = *picture->child(i);
        if (!part.text(QAccessible::Value).isEmpty())
            parts += part.text(QAccessible::Name) + ": " + part.text(QAccessible::Value);
    }
    return parts.join('\n');
}

} // namespace

void PictureAccess::parts_data()
{
    addColumns<QByteArray, QString>("reports", "parts");
    addRow<QByteArray, QString>("nothing yet", "",
                                "Chart: Signals\n"
                                "X fine: 0, 60 and 120 degrees: 0, 0, 0. Magnitude: 0. Angle: 0 of 8192.\n"
                                "Y fine: 0, 60 and 120 degrees: 0, 0, 0. Magnitude: 0. Angle: 0 of 8192.\n"
                                "X coarse: 0, 60 and 120 degrees: 0, 0, 0. Magnitude: 0. Angle: 0 of 8192.\n"
                                "Y coarse: 0, 60 and 120 degrees: 0, 0, 0. Magnitude: 0. Angle: 0 of 8192.");
    // X fine points right, Y fine up, X coarse left, and Y coarse is too short for a needle.
    addRow<QByteArray, QString>(
        "vectors along the axes",
        "28 2f 01 f3f4f5f6f7 3412 7896 fc e803 0000 0000 0000 e803 e803 18fc 0000 0000 "
        "0900 0000 0000 1000 ff",
        "Chart: Signals\n"
        "X fine: 0, 60 and 120 degrees: 1000, 0, 0. Magnitude: 1000. Angle: 0 of 8192.\n"
        "Y fine: 0, 60 and 120 degrees: 0, 1000, 1000. Magnitude: 1732. Angle: 2048 of 8192.\n"
        "X coarse: 0, 60 and 120 degrees: -1000, 0, 0. Magnitude: 1000. Angle: 4096 of 8192.\n"
        "Y coarse: 0, 60 and 120 degrees: 9, 0, 0. Magnitude: 9. Angle: 0 of 8192.");
    addRow<QByteArray, QString>("voltages", "34 77 0c fe 01; 34 77 0c 2c 01; 34 77 0c fe 01",
                                "Chart: Signals\n"
                                "Voltage: Raw: 510, Volts: 2.489, Min: 300 Max: 510 Delta: 210");
}

void PictureAccess::parts()
{
    QFETCH(QByteArray, reports);
    BarView bars;
    for (const QByteArray &report : reports.split(';'))
        bars.display(hex(report));
    QTEST(partsOf(bars), "parts");
}

void PictureAccess::isReadAnew()
{
    BarView bars;
    QAccessibleInterface *channel = accessOf(bars.frame())->child(1);
    QAccessibleInterface *meter = accessOf(bars.frame())->child(4);
    QVERIFY(!channel->state().invisible || !bars.view.isVisible());
    bars.display(hex(fullReport));
    QVERIFY(channel->text(QAccessible::Value).startsWith("0, 60 and 120 degrees: 4, 5, 6. "));
    bars.display(hex("34 77 0c 00 00"));
    QCOMPARE(channel->text(QAccessible::Value), QString());
    QVERIFY(channel->state().invisible);
    QCOMPARE(meter->text(QAccessible::Value), QString("Raw: 0, Volts: 0, Min: 0 Max: 0 Delta: 0"));
    bars.view.resetMinMaxVoltage();
    QCOMPARE(meter->text(QAccessible::Value), QString("Raw: 0, Volts: 0, Min: -1 Max: -1 Delta: 0"));
}

void PictureAccess::isOneTextPerPart()
{
    BarView bars;
    QAccessibleInterface *picture = accessOf(bars.frame());
    QCOMPARE(picture->childCount(), 5);
    QCOMPARE(picture->child(-1), nullptr);
    QCOMPARE(picture->child(5), nullptr);
    QAccessibleInterface *part = picture->child(2);
    QCOMPARE(picture->child(2), part);
    QCOMPARE(picture->indexOfChild(part), 2);
    QCOMPARE(picture->indexOfChild(picture), -1);
    QCOMPARE(part->parent(), picture);
    const QString whole = "0, 60 and 120 degrees: 0, 0, 0. Magnitude: 0. Angle: 0 of 8192.";
    QAccessibleTextInterface *text = part->textInterface();
    QCOMPARE(text->characterCount(), whole.size());
    QCOMPARE(text->text(0, -1), whole);
    QCOMPARE(text->text(3, 5), QString("60"));
    part->setText(QAccessible::Value, "changed");
    QCOMPARE(text->text(0, 1000), whole);
}

void PictureAccess::textIsReadAndNothingElse()
{
    BarView bars;
    QAccessibleInterface *part = accessOf(bars.frame())->child(0);
    QAccessibleTextInterface *text = part->textInterface();
    QVERIFY(!part->editableTextInterface());
    QVERIFY(part->state().readOnly);
    text->setSelection(0, 1, 3);
    text->addSelection(1, 3);
    text->removeSelection(0);
    text->setCursorPosition(5);
    text->scrollToSubstring(0, 1);
    int start = -1;
    int end = -1;
    text->selection(0, &start, &end);
    QCOMPARE(end, 0);
    QCOMPARE(text->selectionCount(), 0);
    QCOMPARE(text->cursorPosition(), 0);
    QCOMPARE(text->offsetAtPoint({0, 0}), 0);
    QCOMPARE(text->characterRect(3), part->rect());
    QCOMPARE(text->attributes(3, &start, &end), QString());
    QCOMPARE(end, text->characterCount());
    QCOMPARE(part->childCount(), 0);
    QCOMPARE(part->child(0), nullptr);
    QCOMPARE(part->childAt(0, 0), nullptr);
    QCOMPARE(part->indexOfChild(part), -1);
}

void PictureAccess::liesWhereItIsPainted()
{
    BarView bars;
    bars.view.resize(900, 600);
    bars.view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bars.view));
    QAccessibleInterface *picture = accessOf(bars.frame());
    const QPoint corner = bars.frame()->mapToGlobal(QPoint(0, 0));
    QCOMPARE(picture->rect(), QRect(corner, bars.frame()->size()));
    // 20 pixels from the left; bars are 95 and dials 90 pixels from one channel to the next.
    QCOMPARE(picture->child(0)->rect(), QRect(corner.x() + 20, corner.y(), 80, bars.frame()->height()));
    QCOMPARE(picture->child(3)->rect(), QRect(corner.x() + 290, corner.y(), 95, bars.frame()->height()));
    const QPoint inYFine = corner + QPoint(120, 50);
    QCOMPARE(picture->childAt(inYFine.x(), inYFine.y()), picture->child(1));
    bars.display(hex("34 77 0c 00 00"));
    QCOMPARE(picture->childAt(inYFine.x(), inYFine.y()), picture->child(4));
}

void PictureAccess::leavesOtherFramesAlone()
{
    BarView bars;
    QFrame ofTheHost(&bars.view);
    QFrame loose;
    QCOMPARE(roleOf(*accessOf(&ofTheHost)), QString("Border"));
    QCOMPARE(accessOf(&loose)->childCount(), 0);
}

/// Assistive programs ask later what they have been told of.
void PictureAccess::outlivesItsView()
{
    auto bars = std::make_unique<BarView>();
    const QAccessible::Id picture = QAccessible::uniqueId(accessOf(bars->frame()));
    const QAccessible::Id part = QAccessible::uniqueId(accessOf(bars->frame())->child(0));
    QVERIFY(QAccessible::accessibleInterface(part)->isValid());
    // The frame is still there, its view no longer: as while the view is being destroyed.
    QAccessibleInterface *orphan = QAccessible::accessibleInterface(part);
    QFrame *frame = bars->frame();
    frame->setParent(nullptr);
    QVERIFY(!orphan->isValid());
    QCOMPARE(described(*orphan), QString("StaticText"));
    QCOMPARE(orphan->rect(), QRect());
    QCOMPARE(orphan->parent(), nullptr);
    QVERIFY(orphan->state().invalid);
    delete frame;
    QCOMPARE(QAccessible::accessibleInterface(part), nullptr);
    QCOMPARE(QAccessible::accessibleInterface(picture), nullptr);
    bars.reset();
    QFrame later;
    QCOMPARE(roleOf(*accessOf(&later)), QString("Border"));
}

PADSCOPE_TESTS(PictureAccess);
#include "tst_pictureaccess.moc"
