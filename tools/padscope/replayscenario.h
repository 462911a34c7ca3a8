#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace padscope {

/// What is played, and how. Times are seconds since the capture's first packet.
struct Replay
{
    std::string capture;        ///< absolute path
    std::optional<double> rate; ///< nothing: as fast as possible
    std::uint64_t rounds = 1;   ///< 0: without end
    double from = 0;
    std::optional<double> to;
    std::optional<double> skipGaps;       ///< longer pauses are shortened to this
    bool isPaused = false;                ///< at first
    bool isLockstep = false;              ///< waits for the host at each recorded command
    std::optional<std::uint32_t> session; ///< nothing: the only one
};

/// What a scenario's file holds; nothing when the capture's path is no UTF-8.
std::optional<std::string> scenarioText(const Replay &replay);

/// A scenario of the simulator in memory, which a process of the same user reads as long as this lives, and
/// nobody can change.
class ReplayScenario
{
public:
    /// \param name is shown by menus
    ReplayScenario(const std::string &name, const std::string &text);
    ~ReplayScenario();
    ReplayScenario(const ReplayScenario &) = delete;
    ReplayScenario &operator=(const ReplayScenario &) = delete;

    /// Why there is none; empty when all is well.
    const std::string &error() const { return trouble; }
    std::string path() const;

private:
    int file;
    std::string trouble;
};

} // namespace padscope
