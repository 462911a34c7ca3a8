#pragma once

class QAccessibleInterface;
class QObject;
class QString;

/// Makes the accessible object of the bar graph's picture: a chart with a text for each part of the picture.
///
/// Nothing is computed before it is asked for, and no change is announced: assistive programs keep names, and
/// read texts anew each time.
/// \return null for any other object
QAccessibleInterface *pictureAccess(const QString &className, QObject *object);
