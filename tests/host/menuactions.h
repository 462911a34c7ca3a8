#pragma once

#include <QMenu>

inline QStringList captions(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions)
        texts += action->text();
    return texts;
}

/// Ends the program, with a list of what there is, when the menu has no action with this caption.
inline QAction *actionNamed(const QMenu &menu, const char *caption)
{
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (action->text() == QLatin1String(caption))
            return action;
    }
    qFatal("no action %s; there is %s", caption, qPrintable(captions(actions).join(QStringLiteral(", "))));
}
