#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>

#include "simulation.h"

class HostWindow;
class QAction;
class QMenu;
class ReplayBar;

/// The menu "Replay" of the host's window, and the bar that shows where the replay is. Both are there while a
/// replay is the scenario in force.
///
/// The keys of its actions act when no widget that has the keyboard uses them, so that no tool behaves
/// otherwise. Shortcuts would come first.
class ReplayMenu : public QObject
{
    Q_OBJECT

public:
    /// The window owns this and must have been built.
    ReplayMenu(HostWindow &window, const Simulation &simulation);

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    /// Another scenario may be in force.
    void update();

private:
    QAction *addAction(const QString &caption, Qt::Key key, void (ReplayMenu::*slot)());
    void setShown(bool isShown);
    void togglePause();
    void step();
    void goFaster();
    void goSlower();
    void restart();

    const Simulation simulation_;
    QMenu *menu_;
    ReplayBar *bar_;
    QHash<int, QAction *> actions_; ///< by their keys
    QAction *pause_;                ///< among these
    QTimer timer_;                  ///< runs while there is a replay
};
