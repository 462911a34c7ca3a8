#pragma once

#include <QColor>
#include <QFontDatabase>
#include <QFrame>
#include <QImage>
#include <QLayout>

#include "bargraph/display.h"

// What the tests of the painting share. What nothing paints is magenta.

/// The font of all texts in the pictures, the same on every machine.
inline QFont testFont()
{
    static const int id = QFontDatabase::addApplicationFont(QStringLiteral(PADSCOPE_TEST_FONT));
    QFont font(QFontDatabase::applicationFontFamilies(id).value(0));
    font.setPixelSize(13);
    return font;
}

inline QImage emptyPicture(const QSize &size, int ratio = 1)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    return image;
}

inline QImage blackPicture(const QSize &size)
{
    QImage image = emptyPicture(size);
    image.fill(Qt::black);
    return image;
}

/// What the view itself paints, without its controls, when its frame lies at a given place.
inline QImage pictureOf(bargraph *view, const QRect &frame, const QSize &size, int ratio = 1)
{
    // Within its window it would be cut to the window's size.
    QWidget *parent = view->parentWidget();
    view->setParent(nullptr);
    view->viewFont = testFont();
    view->layout()->setEnabled(false);
    view->resize(size);
    view->drawFrame->setGeometry(frame);
    QImage image = emptyPicture(size, ratio);
    view->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    view->setParent(parent);
    return image;
}

inline QString colourAt(const QImage &image, int x, int y)
{
    return image.pixelColor(x, y).name();
}

/// The smallest rectangle around all pixels of a colour in a part of a picture.
inline QRect extentOf(const QImage &image, const QColor &colour, const QRect &part)
{
    QRect extent;
    const QRect all = part & image.rect();
    for (int y = all.top(); y <= all.bottom(); ++y) {
        for (int x = all.left(); x <= all.right(); ++x) {
            if (image.pixelColor(x, y) == colour)
                extent |= QRect(x, y, 1, 1);
        }
    }
    return extent;
}

/// Whether two colours differ by no more than rounding in a gradient's table does.
inline bool isAbout(const QColor &actual, const QColor &expected)
{
    constexpr int tolerance = 3;
    return qAbs(actual.red() - expected.red()) <= tolerance &&
           qAbs(actual.green() - expected.green()) <= tolerance &&
           qAbs(actual.blue() - expected.blue()) <= tolerance;
}

inline void setSignals(bargraph *view, const QVector<int> &values)
{
    for (int i = 0; i < 12; ++i)
        view->channelSignals[i] = static_cast<qint16>(values.value(i, 0));
}

inline QRect corners(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}
