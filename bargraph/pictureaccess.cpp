#include "pictureaccess.h"

#include <QAccessibleWidget>
#include <QFrame>

#include "accesstext.h"
#include "bargraph.h"

namespace {

class Picture : public QAccessibleWidget
{
public:
    explicit Picture(QFrame *frame)
        : QAccessibleWidget(frame, QAccessible::Chart)
    {
    }
    ~Picture() override
    {
        for (const QAccessible::Id id : ids) {
            if (id)
                QAccessible::deleteAccessibleInterface(id);
        }
    }

    /// Null once the view is being destroyed.
    bargraph *view() const { return isValid() ? qobject_cast<bargraph *>(object()->parent()) : nullptr; }

    int childCount() const override { return bargraph::partCount; }
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

private:
    mutable QAccessible::Id ids[bargraph::partCount] = {}; ///< 0 before a part is asked for
};

/// One part of the picture: a text that can be read and not changed.
class Part : public QAccessibleInterface, public AccessText
{
public:
    Part(const Picture &pictureOfPart, int indexOfPart)
        : picture(pictureOfPart)
        , part(indexOfPart)
    {
    }

    bool isValid() const override { return picture.isValid() && picture.view(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return isValid() ? picture.window() : nullptr; }
    QAccessibleInterface *parent() const override
    {
        return isValid() ? QAccessible::queryAccessibleInterface(picture.object()) : nullptr;
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::StaticText; }
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override {}
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this) : nullptr;
    }

    QString text(int start, int end) const override
    {
        return end < 0 ? value().mid(start) : value().mid(start, end - start);
    }
    int characterCount() const override { return value().size(); }
    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint &) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    QString value() const { return isValid() ? picture.view()->partText(part) : QString(); }

    const Picture &picture; ///< outlives its parts
    const int part;
};

QAccessibleInterface *Picture::child(int index) const
{
    if (index < 0 || index >= bargraph::partCount)
        return nullptr;
    if (!ids[index])
        ids[index] = QAccessible::registerAccessibleInterface(new Part(*this, index));
    return QAccessible::accessibleInterface(ids[index]);
}

QAccessibleInterface *Picture::childAt(int x, int y) const
{
    for (int index = 0; index < bargraph::partCount; ++index) {
        QAccessibleInterface *part = child(index);
        if (part && !part->state().invisible && part->rect().contains(x, y))
            return part;
    }
    return nullptr;
}

int Picture::indexOfChild(const QAccessibleInterface *child) const
{
    for (int index = 0; index < bargraph::partCount; ++index) {
        if (child && ids[index] && QAccessible::accessibleInterface(ids[index]) == child)
            return index;
    }
    return -1;
}

QRect Part::rect() const
{
    if (!isValid())
        return {};
    const auto *frame = static_cast<const QFrame *>(picture.object());
    const QRect place = picture.view()->partRect(part).translated(-frame->pos());
    return {frame->mapToGlobal(place.topLeft()), place.size()};
}

QAccessible::State Part::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    state.invisible = !isValid() || picture.state().invisible || value().isEmpty();
    state.readOnly = true;
    return state;
}

QString Part::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return isValid() ? bargraph::partName(part) : QString();
    case QAccessible::Value:
    case QAccessible::Description:
        return value();
    default:
        return {};
    }
}

} // namespace

QAccessibleInterface *pictureAccess(const QString &className, QObject *object)
{
    if (className != QLatin1String("QFrame"))
        return nullptr;
    const auto *view = qobject_cast<bargraph *>(object->parent());
    return view && view->hasPictureIn(object) ? new Picture(static_cast<QFrame *>(object)) : nullptr;
}
