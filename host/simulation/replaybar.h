#pragma once

#include <QToolBar>

#include "orvexsim.h"

class QLabel;
class QSlider;

/// Where a replay is: a slider that seeks, the time, the rate and the state.
///
/// The slider leaves the keys of the menu "Replay" to it.
class ReplayBar : public QToolBar
{
    Q_OBJECT

public:
    explicit ReplayBar(QWidget *parent);

    void showReplay(const OrvexsimReplay &replay);

signals:
    /// The user wants to go to this time, in nanoseconds.
    void sought(qint64 position);

private:
    void showTime(qint64 position);
    void seekTo(int ms);

    QSlider *slider_; ///< in milliseconds
    QLabel *time_;
    QLabel *state_;
    qint64 length_ = 0; ///< ns
};
