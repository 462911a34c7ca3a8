#include "qlineupdownedit.h"

#include <QKeyEvent>

namespace {

constexpr int maxHistoryLength = 50;

} // namespace

void QLineUpDownEdit::addToHistory(const QString &line)
{
    if (history.isEmpty() || history.first() != line)
        history.prepend(line);
    while (history.size() > maxHistoryLength)
        history.removeLast();
    historyIndex = 0;
}

void QLineUpDownEdit::keyPressEvent(QKeyEvent *event)
{
    const int lines = history.size();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Before the base class emits returnPressed(), so that the line is kept before it is sent.
        addToHistory(text());
        break;
    case Qt::Key_Up:
        if (lines >= 2)
            recall((historyIndex + 1) % lines);
        break;
    case Qt::Key_Down:
        if (lines >= 2)
            recall(historyIndex == 0 ? lines - 1 : (historyIndex - 1) % lines);
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void QLineUpDownEdit::recall(int index)
{
    historyIndex = index;
    setText(history.at(index));
    selectAll();
}
