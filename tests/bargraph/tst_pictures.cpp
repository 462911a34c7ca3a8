#include <QImage>
#include <QRegularExpression>

#include "bargraph/geometrytext.h"
#include "bargraph/picture.h"
#include "support/datalines.h"
#include "support/tests.h"

namespace {

/// "30,200" or "30,200..54,249"
QRect rectOf(const QString &text)
{
    const QStringList numbers = text.split(QRegularExpression(",|\\.\\."));
    const auto pointAt = [&numbers](int i) { return QPoint(numbers[i].toInt(), numbers[i + 1].toInt()); };
    return {pointAt(0), pointAt(numbers.size() - 2)};
}

QImage pictureOf(const QString &state)
{
    const int ratio = state.contains("@2") ? 2 : 1;
    PictureView bars(QString(state).remove("@2"));
    QImage image(bars.view.size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    bars.render(&image);
    return image;
}

/// Whether two colours differ by no more than rounding in a gradient's table does.
bool isAbout(const QColor &actual, const QColor &expected)
{
    constexpr int tolerance = 3;
    return qAbs(actual.red() - expected.red()) <= tolerance &&
           qAbs(actual.green() - expected.green()) <= tolerance &&
           qAbs(actual.blue() - expected.blue()) <= tolerance;
}

/// Pixels that have a colour.
struct Found
{
    int count = 0;
    QRect extent;
};

Found find(const QImage &image, QString colour, const QRect &part)
{
    const bool about = colour.startsWith('~');
    const QColor wanted(colour.remove('~'));
    Found found;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor actual = image.pixelColor(x, y);
            if (about ? !isAbout(actual, wanted) : actual != wanted)
                continue;
            ++found.count;
            found.extent |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

} // namespace

/// The pixels of the picture. The cases are lines of a data file.
class TestPictures : public QObject
{
    Q_OBJECT

private slots:
    void pixels_data();
    void pixels();
};

void TestPictures::pixels_data()
{
    addColumns<QString, QString, QString, QString>("state", "colour", "where", "extent");
    for (const QStringList &line : dataLines(TEST_FOLDER "/pixels.txt", 3, 4)) {
        const QString name = line.mid(0, 3).join(", ");
        addRow(qPrintable(name), line[0], line[1], line[2], line.value(3));
    }
}

void TestPictures::pixels()
{
    QFETCH(QString, state);
    QFETCH(QString, colour);
    QFETCH(QString, where);
    QFETCH(QString, extent);
    const QRect part = rectOf(where);
    const Found found = find(pictureOf(state), colour, part);
    if (extent.isEmpty())
        QCOMPARE(found.count, part.width() * part.height());
    else
        QCOMPARE(found.count > 0 ? textOf(found.extent) : "none", extent);
}

PADSCOPE_TESTS(TestPictures);
#include "tst_pictures.moc"
