#pragma once

#include <QLineEdit>
#include <QStringList>

/// Command line that remembers what was entered and recalls it with the Up and Down keys.
class QLineUpDownEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Puts a line in front unless it repeats the newest one, and starts recalling from the front again.
    /// At most 50 lines are kept.
    void addToHistory(const QString &line);

    /// The lines entered, newest first.
    const QList<QString> &historyLines() const { return history; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void recall(int index);

    QList<QString> history;
    int historyIndex = 0; ///< index of the line that was recalled last
};
