#pragma once

#include <QRect>
#include <QString>

// Points and rectangles as the data files have them: "30,200" and, by its corners, "30,200..54,249".

inline QString textOf(const QPoint &point)
{
    return QStringLiteral("%1,%2").arg(point.x()).arg(point.y());
}

inline QString textOf(const QRect &rect)
{
    return textOf(rect.topLeft()) + ".." + textOf(rect.bottomRight());
}
