#include "tendropadscope.h"

#include <QAction>
#include <QIcon>
#include <QPixmap>

#include "qorvexgraph.h"

QString TendroPadscope::id() const
{
    return tr("TendroPadscope");
}

QString TendroPadscope::description() const
{
    return tr("Board diagnostic tool.");
}

QString TendroPadscope::copyright() const
{
    return tr("Copyright (c) 2010 Corvane");
}

QString TendroPadscope::version() const
{
    return tr("Version 1.0");
}

QString TendroPadscope::category() const
{
    return QLatin1String("9/advanced/padscope");
}

void TendroPadscope::closeWidget()
{
    if (toolWindow)
        toolWindow->close();
}

QAction *TendroPadscope::action()
{
    if (toolAction)
        return toolAction;
    const QIcon icon(QPixmap(QLatin1String(":/images/resources/qorvexgraph.png")));
    // The comment is part of the translation key and stays as it is.
    const QString caption =
        metaObject()->tr("Padscope", "This is the caption of a button that start a program call padscope.");
    toolAction = new QAction(icon, caption, this);
    toolAction->setToolTip(description());
    return toolAction;
}

QWidget *TendroPadscope::widget()
{
    if (!toolWindow)
        toolWindow = new qorvexgraph;
    return toolWindow;
}
