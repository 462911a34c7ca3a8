#include <cmath>
#include <QPainter>
#include <QRandomGenerator>
#include <QStyledItemDelegate>
#include <QStyleFactory>

#include "reference/reference.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

namespace {

class ShownRows : public ShownWindow
{
public:
    explicit ShownRows(const Settings &settings = {})
        : ShownWindow(settings)
    {
        show(view);
        for (const char *row :
             {"___gjpqy___", "ABC   00 01 02 ", "a row that is wider than the view by far, and so is elided",
              "row\twith a tabulator", "", "|{}[]()"})
            add(QLatin1String(row));
        settle();
    }

    /// From here on the style paints every row.
    void useStyle()
    {
        rows()->setItemDelegate(new QStyledItemDelegate(rows()));
        settle();
    }
};

/// Moved, turned, mirrored, scaled by eighths, scaled more in one direction, sheared.
QVector<QTransform> transforms()
{
    QRandomGenerator random(1);
    const auto between = [&random](double min, double max) {
        return min + random.generateDouble() * (max - min);
    };
    QVector<QTransform> transforms;
    for (int i = 0; i < 120; ++i) {
        const double unit = i % 6 == 2 ? 0.25 : 0.01;
        QTransform transform =
            QTransform::fromTranslate(random.bounded(-36, 37) * unit, random.bounded(-36, 37) * unit);
        if (i % 3 == 0)
            transform.rotate(between(-180, 180));
        if (i % 3 == 1)
            transform.scale(between(-2, 2), between(-2, 2));
        const double scale = random.bounded(4, 17) * 0.125;
        if (i % 6 == 2)
            transform.scale(scale, i % 12 == 2 ? scale : 1);
        if (i % 6 == 5)
            transform.shear(between(-1, 1), between(-1, 1));
        transforms.append(transform);
    }
    return transforms;
}

/// A view on a screen whose resolution changes.
class MovedView : public QTreeView
{
public:
    using QTreeView::QTreeView;
    int dpi = 96;

protected:
    int metric(PaintDeviceMetric which) const override
    {
        return which == PdmDpiX || which == PdmDpiY ? dpi : QTreeView::metric(which);
    }
};

} // namespace

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
    void keptSizesAndLayouts();
    void labelOfALongRowIsAsHighAsAnother();
    void labelThatWraps();
    void moreTextsThanAreKept();
};

void RowLooks::scaledScreens_data()
{
    addColumns<qreal, QString>("ratio", "size");
    for (const char *size : {"6", "8", "10", "12"}) {
        for (const qreal ratio : {1.0, 1.1, 1.125, 1.2, 1.25, 1.4, 1.5, 1.7, 1.75, 1.8, 2.0, 2.3})
            QTest::addRow("%s points at %g", size, ratio) << ratio << size;
    }
}

void RowLooks::scaledScreens()
{
    QFETCH(qreal, ratio);
    QFETCH(QString, size);
    ShownRows shown({{"Monitor Font Size", size}});
    Inspect::layouts(shown.delegate()).clear();
    const QImage drawnByTheTool = shown.picture(ratio);
    // What the style paints is not kept.
    QCOMPARE(Inspect::layouts(shown.delegate()).isEmpty(), ratio * 4 != std::floor(ratio * 4));
    shown.useStyle();
    reference::verifyNone(reference::difference(drawnByTheTool, shown.picture(ratio)));
}

void RowLooks::turnedAndMovedPictures()
{
    ShownRows shown;
    const auto pictures = [&shown] {
        QVector<QImage> images;
        for (const QTransform &transform : transforms()) {
            QImage image(700, 500, QImage::Format_RGB32);
            image.fill(Qt::magenta);
            QPainter painter(&image);
            painter.setTransform(transform);
            shown.rows()->viewport()->render(&painter);
            painter.end();
            images.append(image);
        }
        return images;
    };
    const QVector<QImage> drawnByTheTool = pictures();
    shown.useStyle();
    QCOMPARE(drawnByTheTool, pictures());
}

void RowLooks::rulesInTheNameOfAFont()
{
    const QString name = "x\";} QTreeView::item {padding: 6px; color: red;} QLabel {font-family: \"x";
    ShownRows shown({{"Monitor Font", name}});
    const QImage drawnByTheTool = shown.picture();
    shown.useStyle();
    reference::verifyNone(reference::difference(drawnByTheTool, shown.picture()));
}

void RowLooks::delegateWithoutAView()
{
    const ShownRows shown;
    const QStyledItemDelegate plain;
    const QModelIndex row = shown.model->index(0, 0);
    const auto picture = [&row](const QStyledItemDelegate &delegate) {
        QImage image(200, 30, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        delegate.paint(&painter, option, row);
        return image;
    };
    QCOMPARE(shown.delegate().sizeHint(QStyleOptionViewItem(), row),
             plain.sizeHint(QStyleOptionViewItem(), row));
    QCOMPARE(picture(shown.delegate()), picture(plain));
}

// Sizes and layouts are kept until the screen or the font changes, sizes also until the style does.
void RowLooks::keptSizesAndLayouts()
{
    const RowDelegate delegate(QStringLiteral("QTreeView {}"), nullptr);
    const QStyledItemDelegate plain;
    QWidget tab;
    tab.setStyleSheet(QStringLiteral("QTreeView {}"));
    MovedView view(&tab);
    int points = 10;
    const auto verify = [&](const char *text, int hints, int layouts) {
        QStandardItemModel model;
        model.appendRow(new QStandardItem(QLatin1String(text)));
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.widget = &view;
        option.font = QFont(QFont(QStringLiteral("DejaVu Sans"), points), &view);
        option.rect = QRect(0, 0, 400, 100);
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        QCOMPARE(delegate.sizeHint(option, model.index(0, 0)), plain.sizeHint(option, model.index(0, 0)));
        QCOMPARE(Inspect::hints(delegate).size(), hints);
        QImage image(400, 100, QImage::Format_RGB32);
        image.setDotsPerMeterX(qRound(view.dpi / 0.0254));
        image.setDotsPerMeterY(qRound(view.dpi / 0.0254));
        QPainter painter(&image);
        delegate.paint(&painter, option, model.index(0, 0));
        QCOMPARE(Inspect::layouts(delegate).size(), layouts);
    };
    verify("a row", 1, 1);
    verify("another", 2, 2);
    verify("a row", 2, 2);
    view.dpi = 192;
    verify("a row", 1, 1);
    verify("another", 2, 2);
    points = 20;
    verify("a row", 1, 1);
    verify("another", 2, 2);
    // Layouts depend on the font alone.
    QApplication::setStyle(QStyleFactory::create("windows"));
    verify("a row", 1, 2);
    verify("another", 2, 2);
    QApplication::setStyle(QStyleFactory::create("fusion"));
}

void RowLooks::labelOfALongRowIsAsHighAsAnother()
{
    for (int size = 8; size <= 20; ++size) {
        const ShownWindow shown;
        QFont font = shown.window->font();
        font.setPixelSize(size);
        shown.window->setFont(font);
        shown.label()->setText("short");
        const int height = shown.label()->sizeHint().height();
        shown.label()->setText(QString(10000, 'x'));
        QCOMPARE(shown.label()->sizeHint().height(), height);
    }
}

void RowLooks::labelThatWraps()
{
    ShownRows shown;
    QLabel *label = shown.label();
    label->setWordWrap(true);
    shown.add("short");
    shown.settle();
    const int height = label->height();
    shown.add(QStringLiteral("more words than one line holds ").repeated(6));
    shown.settle();
    QCOMPARE(label->height(), label->heightForWidth(label->width()));
    QVERIFY(label->height() > height);
}

void RowLooks::moreTextsThanAreKept()
{
    ShownRows shown;
    int max = 0;
    for (int row = 0; row < 400; ++row) {
        shown.add(QString::number(row));
        if (row % 5 == 0)
            shown.picture();
        max = qMax(max, Inspect::layouts(shown.delegate()).size());
    }
    QVERIFY2(max > 200 && max <= 256, qPrintable(QString::number(max)));
    shown.settle();
    reference::verifyNone(reference::difference(shown.onScreen(), shown.picture()));
}

PADSCOPE_TESTS(RowLooks);
#include "tst_rowlooks.moc"
