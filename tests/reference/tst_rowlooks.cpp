#include "reference/reference.h"
#include "reference/shownwindow.h"
#include "rowdelegate.h"
#include "support/tests.h"

#include <cmath>

#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTreeView>

/// Plain rows look as the style draws them, on every screen and after every change of looks.
class RowLooks : public QObject
{
    Q_OBJECT

private slots:
    void scaledScreens_data();
    void scaledScreens();
    void turnedAndMovedPictures();
    void rulesInTheNameOfAFont();
    void delegateWithoutAView();
    void screenOfAnotherResolution();
    void directionThatChanges();
    void paletteThatChanges();
    void updatesThatTheHostStops();
    void labelOfALongRowIsAsHighAsAnother();
    void labelThatWraps();
    void moreTextsThanAreKept();
};

namespace {

void addRows(const ShownWindow &shown)
{
    shown.window->commandLine->setEnabled(false); // no cursor that blinks
    for (const char *row :
         {"___gjpqy___", "ABC   00 01 02 ", "a row that is wider than the view by far, and so is elided",
          "row\twith a tabulator", "", "|{}[]()"})
        shown.view->AddData(QLatin1String(row), QString());
}

void settle(const ShownWindow &shown)
{
    QVERIFY(shown.waitForFrame());
    // A layout that is due makes paintings that are due only then.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

/// What stands on the screen is what one painting of the whole window gives.
void verifyScreen(const ShownWindow &shown)
{
    settle(shown);
    const QString different = reference::difference(shown.onScreen(), shown.picture());
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

} // namespace

void RowLooks::scaledScreens_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QString>("size");
    for (const char *size : {"6", "8", "10", "12"}) {
        for (const qreal ratio : {1.0, 1.1, 1.2, 1.25, 1.4, 1.5, 1.7, 1.75, 1.8, 2.0, 2.3})
            QTest::addRow("%s points at %g", size, ratio) << ratio << size;
    }
}

void RowLooks::scaledScreens()
{
    QFETCH(qreal, ratio);
    QFETCH(QString, size);
    ShownWindow shown({{"Monitor Font Size", size}});
    shown.show(shown.view, {480, 360});
    addRows(shown);
    QVERIFY(shown.waitForFrame());
    shown.delegate()->layouts.clear();
    const QImage drawnByTheTool = shown.picture(ratio);
    // What the style paints is not kept.
    QCOMPARE(shown.delegate()->layouts.isEmpty(), ratio * 4 != std::floor(ratio * 4));
    QStyledItemDelegate plain;
    shown.view->treeView->setItemDelegate(&plain);
    const QString different = reference::difference(drawnByTheTool, shown.picture(ratio));
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

void RowLooks::turnedAndMovedPictures()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    settle(shown);
    QRandomGenerator random(1);
    const auto between = [&random](double least, double greatest) {
        return least + random.generateDouble() * (greatest - least);
    };
    QVector<QTransform> transforms;
    for (int i = 0; i < 60; ++i) {
        QTransform transform = QTransform::fromTranslate(between(-9, 9), between(-9, 9));
        if (i % 3 == 0)
            transform.rotate(between(-180, 180));
        if (i % 3 == 1)
            transform.scale(between(-2, 2), between(-2, 2));
        if (i % 6 == 2)
            transform.scale(random.bounded(1, 9) * 0.25, random.bounded(1, 9) * 0.25);
        if (i % 6 == 5)
            transform.shear(between(-1, 1), between(-1, 1));
        transforms.append(transform);
    }
    const auto picture = [&shown](const QTransform &transform) {
        QImage image(700, 500, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        painter.setTransform(transform);
        shown.view->treeView->viewport()->render(&painter);
        return image;
    };
    QVector<QImage> drawnByTheTool;
    for (const QTransform &transform : qAsConst(transforms))
        drawnByTheTool.append(picture(transform));
    QStyledItemDelegate plain;
    shown.view->treeView->setItemDelegate(&plain);
    for (int i = 0; i < transforms.size(); ++i) {
        const QString different = reference::difference(drawnByTheTool.at(i), picture(transforms.at(i)));
        QVERIFY2(different.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(i).arg(different)));
    }
}

void RowLooks::rulesInTheNameOfAFont()
{
    const QString name = "x\";} QTreeView::item {padding: 6px; color: red;} QLabel {font-family: \"x";
    ShownWindow shown({{"Monitor Font", name}});
    shown.show(shown.view, {480, 360});
    addRows(shown);
    settle(shown);
    const QImage drawnByTheTool = shown.picture();
    QStyledItemDelegate plain;
    shown.view->treeView->setItemDelegate(&plain);
    settle(shown);
    const QString different = reference::difference(drawnByTheTool, shown.picture());
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

void RowLooks::delegateWithoutAView()
{
    ShownWindow shown;
    addRows(shown);
    const QStyledItemDelegate plain;
    const auto picture = [&shown](const QStyledItemDelegate &delegate) {
        QImage image(200, 30, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        delegate.paint(&painter, option, shown.view->model->index(0, 0));
        return image;
    };
    const QModelIndex row = shown.view->model->index(0, 0);
    QCOMPARE(shown.delegate()->sizeHint(QStyleOptionViewItem(), row),
             plain.sizeHint(QStyleOptionViewItem(), row));
    QCOMPARE(picture(*shown.delegate()), picture(plain));
}

/// A view on a screen whose resolution changes.
class MovedView : public QTreeView
{
public:
    int dpi = 96;

protected:
    int metric(PaintDeviceMetric which) const override
    {
        return which == PdmDpiX || which == PdmDpiY ? dpi : QTreeView::metric(which);
    }
};

void RowLooks::screenOfAnotherResolution()
{
    RowDelegate delegate(QStringLiteral("QTreeView {}"), nullptr);
    const QStyledItemDelegate plain;
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("a row")));
    QWidget tab;
    tab.setStyleSheet(QStringLiteral("QTreeView {}"));
    MovedView view;
    view.setParent(&tab);
    const auto sizeHint = [&](const QStyledItemDelegate &asked) {
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.widget = &view;
        option.font = QFont(QFont(QStringLiteral("DejaVu Sans"), 10), &view);
        return asked.sizeHint(option, model.index(0, 0));
    };
    const QSize before = sizeHint(delegate);
    QCOMPARE(before, sizeHint(plain));
    QVERIFY(!delegate.hints.isEmpty());
    view.dpi = 192;
    QCOMPARE(sizeHint(delegate), sizeHint(plain));
    QVERIFY(sizeHint(delegate) != before);
}

void RowLooks::directionThatChanges()
{
    QImage expected;
    {
        ShownWindow shown;
        shown.window->setLayoutDirection(Qt::RightToLeft);
        shown.show(shown.view, {480, 360});
        addRows(shown);
        settle(shown);
        expected = shown.picture();
    }
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    settle(shown);
    shown.window->setLayoutDirection(Qt::RightToLeft);
    settle(shown);
    const QString different = reference::difference(shown.onScreen(), expected);
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

void RowLooks::paletteThatChanges()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    verifyScreen(shown);
    QPalette palette = shown.view->treeView->palette();
    palette.setColor(QPalette::Text, Qt::red);
    shown.view->treeView->setPalette(palette);
    verifyScreen(shown);
}

void RowLooks::updatesThatTheHostStops()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    addRows(shown);
    settle(shown);
    shown.window->setUpdatesEnabled(false);
    shown.view->pacer->sinceFrame.invalidate();
    shown.view->AddData("while the host stops updates", QString());
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QVERIFY(!shown.view->treeView->viewport()->updatesEnabled());
    shown.window->setUpdatesEnabled(true);
    verifyScreen(shown);
}

void RowLooks::labelOfALongRowIsAsHighAsAnother()
{
    for (int size = 8; size <= 20; ++size) {
        ShownWindow shown;
        QFont font = shown.window->font();
        font.setPixelSize(size);
        shown.window->setFont(font);
        QLabel *label = shown.view->lastRowLabel;
        label->setText("short");
        const int height = label->sizeHint().height();
        label->setText(QString(10000, 'x'));
        QCOMPARE(label->sizeHint().height(), height);
    }
}

void RowLooks::labelThatWraps()
{
    ShownWindow shown;
    shown.show(shown.view, {480, 360});
    QLabel *label = shown.view->lastRowLabel;
    label->setWordWrap(true);
    shown.view->AddData("short", QString());
    settle(shown);
    const int height = label->height();
    shown.view->AddData(QStringLiteral("more words than one line holds ").repeated(6), QString());
    settle(shown);
    QCOMPARE(label->height(), label->heightForWidth(label->width()));
    QVERIFY(label->height() > height);
}

void RowLooks::moreTextsThanAreKept()
{
    ShownWindow shown;
    shown.window->commandLine->setEnabled(false);
    shown.show(shown.view, {480, 360});
    int most = 0;
    for (int row = 0; row < 400; ++row) {
        shown.view->AddData(QString::number(row), QString());
        if (row % 5 == 0)
            shown.picture();
        most = qMax(most, shown.delegate()->layouts.size());
    }
    QVERIFY2(most > 200 && most <= 256, qPrintable(QString::number(most)));
    verifyScreen(shown);
}

PADSCOPE_TESTS(RowLooks);
#include "tst_rowlooks.moc"
