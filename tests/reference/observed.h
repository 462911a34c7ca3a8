#pragma once

#include <QImage>
#include <QString>

class ShownWindow;

/// What the "Monitor" tab shows after an action.
struct Observed
{
    QString action;
    QString numbers;     ///< of scroll bars, geometry, header, selection and label
    QImage beforeEvents; ///< a picture from before the event loop ran; null after most actions
    QImage anew;         ///< the window, painted anew
    QImage onScreen;
};

/// \param pixelRatio of the picture that is painted anew
Observed observe(const ShownWindow &shown, qreal pixelRatio);

/// \return what differs; empty when nothing does
QString difference(const Observed &actual, const Observed &expected);
