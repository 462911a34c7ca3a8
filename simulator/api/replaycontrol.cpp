#include "boundary.h"
#include "library.h"
#include "orvexsim.h"

namespace {

/// 0 when the scenario is a replay and `action(player)` returns true, else -1.
template <typename Action>
int control(Action action) noexcept
{
    return guarded([] { return -1; },
                   [&] {
                       const auto player = Library::instance().player();
                       return player && action(*player) ? 0 : -1;
                   });
}

} // namespace

extern "C" {

ORVEXSIM_EXPORT int orvexsim_replay(OrvexsimReplay *replay)
{
    return control([&](Player &player) {
        const Player::Status status = player.status();
        const Replay &played = player.replay();
        *replay = {static_cast<int>(status.state),
                   status.rate,
                   status.achievedRate,
                   status.positionNs,
                   played.lengthNs,
                   status.sent,
                   played.reports,
                   status.round,
                   played.plan.rounds,
                   status.errorMedian.count(),
                   status.errorP99.count(),
                   status.errorMax.count()};
        return true;
    });
}

ORVEXSIM_EXPORT int orvexsim_replay_is_on()
{
    return guarded([] { return 0; },
                   [] {
                       Library::instance(); // reads the scenario of the environment
                       return Library::isReplaying() ? 1 : 0;
                   });
}

ORVEXSIM_EXPORT int orvexsim_replay_pause(int paused)
{
    return control([&](Player &player) {
        const bool isAllowed = paused == 0 || paused == 1;
        if (isAllowed)
            player.pause(paused == 1);
        return isAllowed;
    });
}

ORVEXSIM_EXPORT int orvexsim_replay_step(int reports)
{
    return control([&](Player &player) {
        if (reports > 0)
            player.stepBy(reports);
        return reports > 0;
    });
}

ORVEXSIM_EXPORT int orvexsim_replay_seek(long long position)
{
    return control([&](Player &player) { return player.seek(position); });
}

ORVEXSIM_EXPORT int orvexsim_replay_rate(double rate)
{
    return control([&](Player &player) { return player.setRate(rate); });
}

ORVEXSIM_EXPORT int orvexsim_replay_restart()
{
    return control([&](Player &player) {
        player.restart();
        return true;
    });
}

} // extern "C"
