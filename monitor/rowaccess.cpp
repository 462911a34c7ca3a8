#include "rowaccess.h"

#include <QAccessibleWidget>

#include "boundedtext.h"

namespace {

/// Named by the row, if it has a text, and described by the name that the label was given.
class LastRow : public QAccessibleWidget
{
public:
    explicit LastRow(BoundedLabel *label)
        : QAccessibleWidget(label, QAccessible::StaticText)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true; // as any label's
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid() || (kind != QAccessible::Name && kind != QAccessible::Description))
            return {};
        const auto *label = static_cast<const BoundedLabel *>(object());
        return kind == QAccessible::Name && !label->text().isEmpty() ? shownPart(label->text())
                                                                     : label->accessibleName();
    }
};

} // namespace

QAccessibleInterface *rowAccess(const QString &className, QObject *object)
{
    if (className != QLatin1String("QLabel"))
        return nullptr;
    auto *label = dynamic_cast<BoundedLabel *>(object);
    return label ? new LastRow(label) : nullptr;
}
