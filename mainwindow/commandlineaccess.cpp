#include "commandlineaccess.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>

#include "accesstext.h"
#include "qlineupdownedit.h"

namespace {

/// Qt's own object of a text field can't be derived from.
class CommandLine : public QAccessibleWidget, public AccessText, public QAccessibleEditableTextInterface
{
public:
    explicit CommandLine(QLineUpDownEdit *edit)
        : QAccessibleWidget(edit, QAccessible::EditableText)
    {
    }

    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString &text) override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    QString localizedActionName(const QString &name) const override;
    QString localizedActionDescription(const QString &name) const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

    QString text(int start, int end) const override;
    int characterCount() const override { return shown().size(); }
    void selection(int index, int *start, int *end) const override;
    int selectionCount() const override { return line() && line()->hasSelectedText() ? 1 : 0; }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override { return line() ? line()->cursorPosition() : 0; }
    void setCursorPosition(int position) override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int, int end) override { setCursorPosition(end); }
    QString attributes(int offset, int *start, int *end) const override;

    void deleteText(int start, int end) override { replaceText(start, end, QString()); }
    void insertText(int offset, const QString &text) override { replaceText(offset, offset, text); }
    void replaceText(int start, int end, const QString &text) override;

private:
    /// Null once the command line is being destroyed.
    QLineUpDownEdit *line() const { return isValid() ? static_cast<QLineUpDownEdit *>(object()) : nullptr; }
    /// A host may hide what is typed.
    QString shown() const { return line() ? line()->displayText() : QString(); }
    bool isEditable() const { return line() && line()->isEnabled() && !line()->isReadOnly(); }
    /// An assistive program may name any place.
    int bounded(int offset) const { return qBound(0, offset, characterCount()); }
};

QAccessible::State CommandLine::state() const
{
    QAccessible::State state;
    state.invalid = true;
    if (!line())
        return state;
    state = QAccessibleWidget::state();
    state.editable = isEditable();
    state.readOnly = line()->isReadOnly();
    state.passwordEdit = line()->echoMode() != QLineEdit::Normal;
    state.selectableText = true;
    return state;
}

QString CommandLine::text(QAccessible::Text kind) const
{
    if (!line())
        return {};
    return kind == QAccessible::Value ? shown() : QAccessibleWidget::text(kind);
}

void CommandLine::setText(QAccessible::Text kind, const QString &text)
{
    if (kind == QAccessible::Value)
        replaceText(0, characterCount(), text);
    else if (line())
        QAccessibleWidget::setText(kind, text);
}

void *CommandLine::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QStringList CommandLine::actionNames() const
{
    return line() ? QAccessibleWidget::actionNames() << pressAction() : QStringList();
}

QString CommandLine::localizedActionName(const QString &name) const
{
    return name == pressAction() ? QLineUpDownEdit::tr("Send") : QAccessibleWidget::localizedActionName(name);
}

QString CommandLine::localizedActionDescription(const QString &name) const
{
    return name == pressAction() ? QLineUpDownEdit::tr("Sends the command to the first board")
                                 : QAccessibleWidget::localizedActionDescription(name);
}

void CommandLine::doAction(const QString &name)
{
    if (name != pressAction()) {
        QAccessibleWidget::doAction(name);
        return;
    }
    // A host's slot may delete the command line, and this object with it.
    const QPointer<QLineUpDownEdit> edit = line();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        if (edit)
            QCoreApplication::sendEvent(edit, &key);
    }
}

QStringList CommandLine::keyBindingsForAction(const QString &name) const
{
    return name == pressAction() ? QStringList(QKeySequence(Qt::Key_Return).toString())
                                 : QAccessibleWidget::keyBindingsForAction(name);
}

QString CommandLine::text(int start, int end) const
{
    const int first = bounded(start);
    return shown().mid(first, bounded(end) - first);
}

void CommandLine::selection(int index, int *start, int *end) const
{
    *start = *end = 0;
    if (index != 0 || selectionCount() == 0)
        return;
    *start = line()->selectionStart();
    *end = line()->selectionEnd();
}

void CommandLine::removeSelection(int index)
{
    if (index == 0 && line())
        line()->deselect();
}

void CommandLine::setSelection(int index, int start, int end)
{
    if (index == 0 && line())
        line()->setSelection(bounded(start), bounded(end) - bounded(start));
}

void CommandLine::setCursorPosition(int position)
{
    if (line())
        line()->setCursorPosition(bounded(position));
}

/// Measured from the cursor, which alone tells how far the text is scrolled.
QRect CommandLine::characterRect(int offset) const
{
    if (!line() || offset < 0 || offset >= characterCount())
        return {};
    const QFontMetrics metrics = line()->fontMetrics();
    const QString text = shown();
    const auto widthBefore = [&](int end) { return metrics.horizontalAdvance(text.left(end)); };
    const QRect cursor = line()->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const int left = cursor.center().x() + widthBefore(offset) - widthBefore(cursorPosition());
    const QSize size(metrics.horizontalAdvance(text.at(offset)), cursor.height());
    return {line()->mapToGlobal(QPoint(left, cursor.top())), size};
}

int CommandLine::offsetAtPoint(const QPoint &point) const
{
    return line() ? line()->cursorPositionAt(line()->mapFromGlobal(point)) : -1;
}

QString CommandLine::attributes(int, int *start, int *end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

void CommandLine::replaceText(int start, int end, const QString &text)
{
    if (!isEditable())
        return;
    // As a user does it, so that it can be undone.
    setSelection(0, start, end);
    if (text.isEmpty() && line()->hasSelectedText())
        line()->del();
    else
        line()->insert(text);
}

} // namespace

QAccessibleInterface *commandLineAccess(const QString &className, QObject *object)
{
    if (className != QLatin1String("QLineUpDownEdit"))
        return nullptr;
    return new CommandLine(static_cast<QLineUpDownEdit *>(object));
}
