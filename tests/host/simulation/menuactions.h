#pragma once

#include <QMenu>

/// Ends the program, with a list of what there is, when the menu has no action with this caption.
inline QAction *actionNamed(const QMenu &menu, const char *caption)
{
    QStringList there;
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (action->text() == QLatin1String(caption))
            return action;
        there += action->text();
    }
    qFatal("no action %s; there is %s", caption, qPrintable(there.join(QStringLiteral(", "))));
}
