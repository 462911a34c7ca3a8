#include "replayscenario.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/mman.h>
#include <unistd.h>

namespace padscope {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t maxNameLength = 249; // of a file in memory

Json orNull(const std::optional<double> &number)
{
    return number ? Json(*number) : Json();
}

std::string sessionText(std::uint32_t session)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", session);
    return text;
}

Json jsonOf(const Replay &replay)
{
    const Json rate = replay.rate ? Json(*replay.rate) : Json("max");
    const Json loop = replay.rounds > 0 ? Json(replay.rounds) : Json("forever");
    const Json session = replay.session ? Json(sessionText(*replay.session)) : Json();
    return {{"replay",
             {{"capture", replay.capture},
              {"rate", rate},
              {"loop", loop},
              {"from", replay.from},
              {"to", orNull(replay.to)},
              {"skipGaps", orNull(replay.skipGaps)},
              {"paused", replay.isPaused},
              {"lockstep", replay.isLockstep},
              {"session", session}}}};
}

} // namespace

std::optional<std::string> scenarioText(const Replay &replay)
{
    try {
        return jsonOf(replay).dump(2);
    } catch (const Json::exception &) {
        return std::nullopt;
    }
}

ReplayScenario::ReplayScenario(const std::string &name, const std::string &text)
    : file(memfd_create(name.substr(0, maxNameLength).c_str(), MFD_CLOEXEC | MFD_ALLOW_SEALING))
{
    const bool isWritten =
        file >= 0 && write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    constexpr int seals = F_SEAL_WRITE | F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_SEAL;
    if (!isWritten || fcntl(file, F_ADD_SEALS, seals) != 0)
        trouble = std::string("no memory for the scenario: ") + std::strerror(errno);
}

ReplayScenario::~ReplayScenario()
{
    if (file >= 0)
        close(file);
}

std::string ReplayScenario::path() const
{
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file);
}

} // namespace padscope
