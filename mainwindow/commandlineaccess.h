#pragma once

class QAccessibleInterface;
class QObject;
class QString;

/// Makes the accessible object of the command line: a text field with an action that does what Return does.
/// \return null for any other object
QAccessibleInterface *commandLineAccess(const QString &className, QObject *object);
