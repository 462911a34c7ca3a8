#include "faultmenu.h"

#include <QAction>

#include "captions.h"

FaultMenu::FaultMenu(const Simulation &simulation, QWidget *parent)
    : QMenu(tr("&Fault"), parent)
    , simulation_(simulation)
{
    nameByTitle(*this);
    setToolTipsVisible(true);
    const QStringList faults = simulation_.faults();
    for (const QString &fault : faults)
        addFault(fault);
    connect(this, &QMenu::aboutToShow, this, &FaultMenu::tickWhatIsOn);
}

void FaultMenu::addFault(const QString &fault)
{
    QAction *action = addAction(asCaption(fault), this, [this, fault] { trigger(fault); });
    const QString sentence = simulation_.faultText(fault);
    action->setToolTip(sentence);
    action->setStatusTip(sentence);
    action->setWhatsThis(sentence);
    action->setData(fault);
    action->setCheckable(simulation_.isOn(fault).has_value());
}

void FaultMenu::trigger(const QString &fault)
{
    const std::optional<bool> wasOn = simulation_.isOn(fault);
    const QString error = simulation_.trigger(fault);
    if (!error.isEmpty())
        emit told(error);
    else if (wasOn.value_or(false))
        emit told(tr("%1 is off.").arg(fault));
    else
        emit told(fault + QStringLiteral(": ") + simulation_.faultText(fault));
}

void FaultMenu::tickWhatIsOn()
{
    const QList<QAction *> faults = actions();
    for (QAction *action : faults)
        action->setChecked(simulation_.isOn(action->data().toString()).value_or(false));
}
