#include "languages/clippedtexts.h"

#include <algorithm>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyleOptionComboBox>
#include <QTabBar>

namespace {

QSize textSize(const QWidget &widget, const QString &text)
{
    return widget.fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, text);
}

bool isControl(const QWidget &widget)
{
    return qobject_cast<const QLabel *>(&widget) || qobject_cast<const QAbstractButton *>(&widget) ||
           qobject_cast<const QComboBox *>(&widget) || qobject_cast<const QSlider *>(&widget) ||
           qobject_cast<const QSpinBox *>(&widget) || qobject_cast<const QLineEdit *>(&widget);
}

class Finder
{
public:
    void look(const QWidget &widget)
    {
        if (const auto *label = qobject_cast<const QLabel *>(&widget))
            lookAtLabel(*label);
        else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
            lookAtButton(*button);
        else if (const auto *box = qobject_cast<const QComboBox *>(&widget))
            lookAtBox(*box);
        else if (const auto *bar = qobject_cast<const QTabBar *>(&widget))
            lookAtTabs(*bar);
        else if (const auto *menus = qobject_cast<const QMenuBar *>(&widget))
            lookAtMenus(*menus);
        else if (const auto *header = qobject_cast<const QHeaderView *>(&widget))
            lookAtHeader(*header);
    }

    QStringList lines;

private:
    void lookAtLabel(const QLabel &label)
    {
        compare(label, label.text(), label.size(),
                label.wordWrap() ? QSize(0, label.heightForWidth(label.width())) : label.sizeHint());
        lookAround(label, label.text());
    }

    /// A tool bar without room for its buttons shows one that has no text.
    void lookAtButton(const QAbstractButton &button)
    {
        if (button.objectName() == QLatin1String("qt_toolbar_ext_button"))
            lines += QStringLiteral("a tool bar without room");
        if (button.text().isEmpty())
            return;
        compare(button, button.text(), button.size(), button.sizeHint());
        lookAround(button, button.text());
    }

    void lookAtBox(const QComboBox &box)
    {
        QStyleOptionComboBox option;
        option.initFrom(&box);
        const QRect room =
            box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
        compare(box, box.currentText(), room.size(), textSize(box, box.currentText()));
        lookAround(box, box.currentText());
    }

    void lookAtTabs(const QTabBar &bar)
    {
        const QSize space(bar.style()->pixelMetric(QStyle::PM_TabBarTabHSpace, nullptr, &bar), 0);
        for (int i = 0; i < bar.count(); ++i)
            compare(bar, bar.tabText(i), bar.tabRect(i).intersected(bar.rect()).size(),
                    textSize(bar, bar.tabText(i)) + space);
    }

    void lookAtMenus(const QMenuBar &bar)
    {
        const QList<QAction *> actions = bar.actions();
        for (QAction *action : actions) {
            if (action->isVisible())
                compare(bar, action->text(), bar.actionGeometry(action).intersected(bar.rect()).size(),
                        textSize(bar, action->text()));
        }
    }

    void lookAtHeader(const QHeaderView &header)
    {
        for (int i = 0; i < header.count(); ++i) {
            const QString text = header.model()->headerData(i, header.orientation()).toString();
            compare(header, text,
                    {std::min(header.sectionSize(i), header.viewport()->width()), header.height()},
                    {header.sectionSizeHint(i), textSize(header, text).height()});
        }
    }

    void compare(const QWidget &widget, const QString &text, QSize size, QSize needed)
    {
        if (!text.isEmpty() && size.expandedTo(needed) != size)
            lines += QStringLiteral("%1 \"%2\": %3 x %4, needs %5 x %6")
                         .arg(QLatin1String(widget.metaObject()->className()), text)
                         .arg(size.width())
                         .arg(size.height())
                         .arg(needed.width())
                         .arg(needed.height());
    }

    void lookAround(const QWidget &widget, const QString &text)
    {
        const QWidget &parent = *widget.parentWidget();
        if (!parent.rect().contains(widget.geometry()))
            lines += QStringLiteral("\"%1\" leaves its parent").arg(text);
        const QList<QWidget *> others = parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget *other : others) {
            if (other != &widget && isControl(*other) && other->isVisible() &&
                other->geometry().intersects(widget.geometry()))
                lines += QStringLiteral("\"%1\" lies over another").arg(text);
        }
    }
};

/// Whether the label is that below a view, in the same parent.
bool repeatsRow(const QWidget &widget)
{
    const auto *label = qobject_cast<const QLabel *>(&widget);
    const auto *view =
        label ? label->parentWidget()->findChild<QAbstractItemView *>(QString(), Qt::FindDirectChildrenOnly)
              : nullptr;
    if (!view || !view->model() || view->model()->rowCount() == 0)
        return false;
    return view->model()->index(view->model()->rowCount() - 1, 0).data().toString() == label->text();
}

} // namespace

QStringList clippedTexts(const QWidget &window)
{
    // Texts that have just changed get their room first, as before the next frame.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    Finder finder;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (widget->isVisible() && !repeatsRow(*widget))
            finder.look(*widget);
    }
    return finder.lines;
}
