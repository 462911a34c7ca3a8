#pragma once

#include <QMenu>
#include <QString>
#include <QToolBar>

/// The text as a caption of a menu or an action, in which an ampersand alone would mark a letter.
inline QString asCaption(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// The caption without mnemonics.
inline QString withoutMarks(QString caption)
{
    caption.replace(QLatin1String("&&"), QLatin1String("\n")).remove(QLatin1Char('&'));
    return caption.replace(QLatin1Char('\n'), QLatin1Char('&'));
}

/// Names the menu by its title for screen readers, which otherwise name only what opens it.
inline void nameByTitle(QMenu &menu)
{
    menu.setAccessibleName(withoutMarks(menu.title()));
}

/// Names the button that a tool bar has when it is too narrow.
inline void nameExtension(const QToolBar &bar, const QString &name)
{
    if (auto *extension = bar.findChild<QWidget *>(QStringLiteral("qt_toolbar_ext_button")))
        extension->setAccessibleName(name);
}
