#include "toolparts.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabWidget>

#include "captions.h"

namespace {

/// All widgets of a class in the tool, the tool itself first if it is one.
template <typename Part>
QList<Part *> partsOf(QWidget &tool)
{
    QList<Part *> parts = tool.findChildren<Part *>();
    if (auto *self = qobject_cast<Part *>(&tool))
        parts.prepend(self);
    return parts;
}

bool takesText(const QLineEdit &line)
{
    const QWidget *owner = line.parentWidget();
    return line.isEnabled() && !line.isReadOnly() && !qobject_cast<const QAbstractSpinBox *>(owner) &&
           !qobject_cast<const QComboBox *>(owner);
}

void pressKey(QWidget &target, uint key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, static_cast<int>(key), modifiers, text);
    QCoreApplication::sendEvent(&target, &press);
    QKeyEvent release(QEvent::KeyRelease, static_cast<int>(key), modifiers, text);
    QCoreApplication::sendEvent(&target, &release);
}

/// Whether the view is in the tool's own window: the list of a combo box has its own window.
bool showsRows(const QAbstractItemView &view, const QWidget &tool)
{
    return view.model() && view.window() == tool.window() && !qobject_cast<const QHeaderView *>(&view);
}

QString rowText(const QAbstractItemModel &model, int row, const QModelIndex &parent)
{
    QStringList cells;
    for (int column = 0; column < model.columnCount(parent); ++column)
        cells += model.index(row, column, parent).data().toString();
    QString text = cells.join(QLatin1Char('\t'));
    return text.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
}

/// In the context of the first of the widget's classes that has a translation, or the text itself.
QString translated(const QWidget &widget, const QString &text)
{
    for (const QMetaObject *type = widget.metaObject(); type; type = type->superClass()) {
        QString translation = QCoreApplication::translate(type->className(), text.toUtf8().constData());
        if (translation != text)
            return translation;
    }
    return text;
}

} // namespace

QTabWidget *tabsOf(QWidget &tool)
{
    return partsOf<QTabWidget>(tool).value(0);
}

QStringList tabCaptions(const QTabWidget &tabs)
{
    QStringList captions;
    for (int i = 0; i < tabs.count(); ++i) {
        captions += withoutMarks(tabs.tabText(i));
    }
    return captions;
}

int indexOfTab(const QTabWidget &tabs, const QString &caption)
{
    const QStringList captions = tabCaptions(tabs);
    int index = captions.indexOf(caption);
    for (const QWidget *around = &tabs; index < 0 && around; around = around->parentWidget())
        index = captions.indexOf(withoutMarks(translated(*around, caption)));
    return index;
}

QLineEdit *lineEditOf(QWidget &tool)
{
    const QList<QLineEdit *> lines = partsOf<QLineEdit>(tool);
    for (QLineEdit *line : lines) {
        if (takesText(*line))
            return line;
    }
    return nullptr;
}

void typeLine(QLineEdit &line, const QString &text)
{
    line.setFocus();
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        const bool shifted = QChar::isUpper(character);
        pressKey(line, QChar::toUpper(character), shifted ? Qt::ShiftModifier : Qt::NoModifier,
                 QString::fromUcs4(&character, 1));
    }
    pressKey(line, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
}

QStringList itemRows(QWidget &tool)
{
    QStringList rows;
    const QList<QAbstractItemView *> views = partsOf<QAbstractItemView>(tool);
    for (const QAbstractItemView *view : views) {
        if (!showsRows(*view, tool))
            continue;
        const QAbstractItemModel &model = *view->model();
        for (int row = 0; row < model.rowCount(view->rootIndex()); ++row)
            rows += rowText(model, row, view->rootIndex());
    }
    return rows;
}
