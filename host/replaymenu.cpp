#include "replaymenu.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

#include "hostwindow.h"
#include "replaybar.h"
#include "replaynumbers.h"

namespace {

constexpr int intervalMs = 50;

} // namespace

ReplayMenu::ReplayMenu(HostWindow &window, const Simulation &simulation)
    : QObject(&window)
    , simulation_(simulation)
    , menu_(window.addMenu(tr("Replay")))
    , bar_(new ReplayBar(&window))
    , pause_(addAction(tr("&Pause"), Qt::Key_Space, &ReplayMenu::togglePause))
{
    pause_->setCheckable(true);
    addAction(tr("&Step"), Qt::Key_Right, &ReplayMenu::step);
    addAction(tr("&Faster"), Qt::Key_Up, &ReplayMenu::goFaster);
    addAction(tr("S&lower"), Qt::Key_Down, &ReplayMenu::goSlower);
    addAction(tr("&Restart"), Qt::Key_Home, &ReplayMenu::restart);
    window.addToolBar(Qt::BottomToolBarArea, bar_);
    window.installEventFilter(this);
    connect(bar_, &ReplayBar::sought, this, [this](qint64 position) {
        simulation_.seekReplay(position);
        update();
    });
    connect(&timer_, &QTimer::timeout, this, &ReplayMenu::update);
    setShown(false);
    update();
}

QAction *ReplayMenu::addAction(const QString &caption, Qt::Key key, void (ReplayMenu::*slot)())
{
    // What stands behind a tab is shown as the shortcut is.
    const QString keyName = QKeySequence(key).toString(QKeySequence::NativeText);
    QAction *action = menu_->addAction(caption + QLatin1Char('\t') + keyName, this, slot);
    actions_.insert(key, action);
    return action;
}

/// A key comes to the window when no widget below it has taken it.
bool ReplayMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !timer_.isActive())
        return QObject::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    QAction *action = actions_.value(key->key());
    if (!action || (key->modifiers() & ~Qt::KeypadModifier) != 0)
        return QObject::eventFilter(watched, event);
    action->trigger();
    return true;
}

void ReplayMenu::update()
{
    const std::optional<OrvexsimReplay> replay = simulation_.replay();
    if (replay.has_value() != timer_.isActive())
        setShown(replay.has_value());
    if (!replay)
        return;
    pause_->setChecked(replay->state == ORVEXSIM_REPLAY_PAUSED);
    bar_->showReplay(*replay);
}

void ReplayMenu::setShown(bool isShown)
{
    menu_->menuAction()->setVisible(isShown);
    bar_->setVisible(isShown);
    if (isShown)
        timer_.start(intervalMs);
    else
        timer_.stop();
}

void ReplayMenu::togglePause()
{
    const std::optional<OrvexsimReplay> replay = simulation_.replay();
    if (replay && replay->state != ORVEXSIM_REPLAY_ENDED)
        simulation_.pauseReplay(replay->state != ORVEXSIM_REPLAY_PAUSED);
    update();
}

void ReplayMenu::step()
{
    simulation_.stepReplay();
    update();
}

void ReplayMenu::goFaster()
{
    if (const std::optional<OrvexsimReplay> replay = simulation_.replay())
        simulation_.setReplayRate(fasterReplayRate(replay->rate));
    update();
}

void ReplayMenu::goSlower()
{
    if (const std::optional<OrvexsimReplay> replay = simulation_.replay())
        simulation_.setReplayRate(slowerReplayRate(replay->rate));
    update();
}

void ReplayMenu::restart()
{
    simulation_.restartReplay();
    update();
}
