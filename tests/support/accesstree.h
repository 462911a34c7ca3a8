#pragma once

#include <QAccessible>
#include <QMetaEnum>
#include <QStringList>

// What a screen reader is told, in words.

inline QAccessibleInterface *accessOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

inline QString roleOf(const QAccessibleInterface &object)
{
    return QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(object.role()));
}

/// Role, name, value and description, without those at the end that are empty:
/// "Slider: Fast - Slow: 50: Milliseconds".
inline QString described(const QAccessibleInterface &object)
{
    QStringList texts{roleOf(object)};
    for (const auto kind : {QAccessible::Name, QAccessible::Value, QAccessible::Description})
        texts += object.text(kind);
    while (texts.last().isEmpty())
        texts.removeLast();
    return texts.join(QLatin1String(": "));
}

/// The object and all below it, parents first.
inline QList<QAccessibleInterface *> accessTree(QAccessibleInterface *root)
{
    QList<QAccessibleInterface *> all{root};
    for (int i = 0; i < root->childCount(); ++i) {
        if (QAccessibleInterface *child = root->child(i))
            all += accessTree(child);
    }
    return all;
}

/// Those that take the focus or are read and have no name.
inline QStringList namelessIn(QAccessibleInterface *root)
{
    const QList<QAccessible::Role> read{
        QAccessible::StaticText, QAccessible::Chart,    QAccessible::Tree,    QAccessible::MenuBar,
        QAccessible::PopupMenu,  QAccessible::MenuItem, QAccessible::ToolBar, QAccessible::StatusBar,
        QAccessible::Button,     QAccessible::CheckBox, QAccessible::Slider};
    QStringList nameless;
    for (const QAccessibleInterface *object : accessTree(root)) {
        const bool counts = object->state().focusable || read.contains(object->role());
        if (counts && object->text(QAccessible::Name).isEmpty())
            nameless += described(*object) + QLatin1Char(' ') +
                        (object->object() ? object->object()->metaObject()->className() : "");
    }
    return nameless;
}
