#pragma once

#include <QLineEdit>
#include <QStringList>

#include "accessfactory.h"
#include "commandlineaccess.h"

/// Command line that remembers what was entered and recalls it with the Up and Down keys.
class QLineUpDownEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Prepends a line unless it repeats the newest one, and resets the recall to the newest line. Keeps at
    /// most 50 lines.
    void addToHistory(const QString &line);

    /// The lines entered, newest first.
    const QList<QString> &historyLines() const { return history; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void recall(int index);

    QList<QString> history;
    int historyIndex = 0; ///< index of the line that was recalled last
    AccessFactory<commandLineAccess> accessFactory;
};
