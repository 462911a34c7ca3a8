#pragma once

class QAccessibleInterface;
class QObject;
class QString;

/// Makes the accessible object of the label below the rows, whose name is the newest row.
/// \return null for any other object
QAccessibleInterface *rowAccess(const QString &className, QObject *object);
