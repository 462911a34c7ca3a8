#include "replaybar.h"

#include <algorithm>
#include <limits>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include "captions.h"
#include "replaynumbers.h"

namespace {

constexpr qint64 nsPerMs = 1000000;
constexpr int pagesOfLength = 20;
constexpr int stepsOfPage = 10;

class PositionSlider : public QSlider
{
public:
    PositionSlider()
        : QSlider(Qt::Horizontal)
    {
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        switch (event->key()) {
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Home:
            event->ignore();
            break;
        default:
            QSlider::keyPressEvent(event);
        }
    }
};

int msOf(qint64 ns)
{
    return static_cast<int>(std::min<qint64>(ns / nsPerMs, std::numeric_limits<int>::max()));
}

QString stateText(int state)
{
    switch (state) {
    case ORVEXSIM_REPLAY_WAITING:
        return ReplayBar::tr("waiting");
    case ORVEXSIM_REPLAY_PLAYING:
        return ReplayBar::tr("playing");
    case ORVEXSIM_REPLAY_PAUSED:
        return ReplayBar::tr("paused");
    default:
        return ReplayBar::tr("ended");
    }
}

} // namespace

ReplayBar::ReplayBar(QWidget *parent)
    : QToolBar(tr("Replay"), parent)
    , slider_(new PositionSlider)
    , time_(new QLabel)
    , state_(new QLabel)
{
    setMovable(false);
    setAccessibleName(tr("Replay"));
    nameExtension(*this, tr("More of the replay"));
    slider_->setAccessibleName(tr("Position of the replay"));
    // Their names are what they show.
    time_->setAccessibleDescription(tr("Time of the replay"));
    state_->setAccessibleDescription(tr("Rate and state of the replay"));
    time_->setMargin(4);
    state_->setMargin(4);
    // A drag seeks when it ends, since each seek sends from its place on.
    slider_->setTracking(false);
    addWidget(slider_);
    addWidget(time_);
    addWidget(state_);
    connect(slider_, &QSlider::sliderMoved, this, [this](int ms) { showTime(ms * nsPerMs); });
    connect(slider_, &QSlider::valueChanged, this, &ReplayBar::seekTo);
}

void ReplayBar::showReplay(const OrvexsimReplay &replay)
{
    const QSignalBlocker blocker(slider_); // a lower maximum moves it as well
    length_ = replay.length;
    const int maximum = msOf(length_);
    if (slider_->maximum() != maximum) {
        slider_->setMaximum(maximum);
        slider_->setPageStep(std::max(maximum / pagesOfLength, 1));
        slider_->setSingleStep(std::max(slider_->pageStep() / stepsOfPage, 1));
    }
    state_->setText(replayRateText(replay.rate) + QStringLiteral(", ") + stateText(replay.state));
    if (slider_->isSliderDown())
        return;
    slider_->setValue(msOf(replay.position));
    showTime(replay.position);
}

void ReplayBar::showTime(qint64 position)
{
    time_->setText(replayTimeText(position) + QStringLiteral(" / ") + replayTimeText(length_));
}

/// The last millisecond ends where the replay ends.
void ReplayBar::seekTo(int ms)
{
    emit sought(ms == slider_->maximum() ? length_ : ms * nsPerMs);
}
