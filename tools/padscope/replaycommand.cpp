#include "replaycommand.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "capturefiles.h"
#include "options.h"
#include "plainrun.h"
#include "playable.h"
#include "replayplan.h"
#include "replayscenario.h"

namespace {

constexpr char library[] = "liborvexboardex.so.1";

struct ReplayOptions
{
    std::string file;
    std::string rate = "1";
    std::string loop = "1";
    std::string session;
    padscope::Replay replay;
};

/// Where there is none, a line tells where it was looked for.
std::string simulatorFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    std::string places;
    for (const char *folder : {SIMULATOR_DIR, "../../simulator"}) {
        std::string path = std::filesystem::weakly_canonical(program.parent_path() / folder, error);
        if (std::filesystem::exists(path + '/' + library, error))
            return path;
        places += (places.empty() ? "" : " and ") + path;
    }
    padscope::printError(std::string("no simulator; looked for ") + library + " in " + places);
    return {};
}

std::string withFirst(const std::string &folder, const char *path)
{
    return path && *path ? folder + ':' + path : folder;
}

std::optional<double> numberOf(const std::string &text, double min, double max)
{
    double number = 0;
    const bool isIt = CLI::detail::lexical_cast(text, number) && number >= min && number <= max;
    return isIt ? std::optional(number) : std::nullopt;
}

std::optional<std::uint64_t> roundsOf(const std::string &text)
{
    const bool isWhole = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    const std::optional<double> rounds = numberOf(text, 1, maxReplayRounds);
    return isWhole && rounds ? std::optional(static_cast<std::uint64_t>(*rounds)) : std::nullopt;
}

/// \param otherwise what a value is that is not allowed
CLI::Validator allowed(const char *otherwise, bool (*isAllowed)(const std::string &text))
{
    const auto check = [otherwise, isAllowed](const std::string &text) {
        return isAllowed(text) ? std::string() : text + " is " + otherwise;
    };
    return {check, ""};
}

CLI::Validator rateValue()
{
    return allowed("neither max nor a number from 0.1 to 100", [](const std::string &text) {
        return text == "max" || numberOf(text, minReplayRate, maxReplayRate).has_value();
    });
}

CLI::Validator loopValue()
{
    return allowed("neither forever nor a whole number from 1 to 1000000",
                   [](const std::string &text) { return text == "forever" || roundsOf(text).has_value(); });
}

CLI::Validator secondsValue()
{
    return allowed("no number of seconds from 0 to 1000000000",
                   [](const std::string &text) { return numberOf(text, 0, maxReplaySeconds).has_value(); });
}

CLI::Validator sessionValue()
{
    return allowed("no session, which has up to eight hexadecimal digits", [](const std::string &text) {
        return !text.empty() && text.size() <= 8 &&
               text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    });
}

/// Where this is recorded itself, the recorder's tap stays in front, and finds the simulator behind it.
recorder::HostProcess::Environment environmentOf(const std::string &scenario, const std::string &folder)
{
    std::string path = withFirst(folder, std::getenv("LD_LIBRARY_PATH"));
    recorder::HostProcess::Environment environment{{"ORVEXSIM_SCENARIO", scenario}};
    if (const char *tap = std::getenv("PADSCOPE_TAP"); tap && *tap) {
        environment.emplace_back("PADSCOPE_DRIVER", folder + '/' + library);
        path = withFirst(std::filesystem::path(tap).parent_path(), path.c_str());
    }
    environment.emplace_back("LD_LIBRARY_PATH", path);
    return environment;
}

/// Runs the host with the scenario in force.
int play(const padscope::Replay &replay, const std::vector<std::string> &host)
{
    const std::optional<std::string> text = padscope::scenarioText(replay);
    if (!text) {
        padscope::printError(replay.capture + ": a path that is no UTF-8 cannot be played");
        return padscope::Usage;
    }
    const std::string folder = simulatorFolder();
    if (folder.empty())
        return padscope::Failed;
    const padscope::ReplayScenario scenario(std::filesystem::path(replay.capture).filename(), *text);
    if (!scenario.error().empty()) {
        padscope::printError(scenario.error());
        return padscope::Failed;
    }
    const recorder::PlainRunResult result =
        recorder::runPlainly(host, environmentOf(scenario.path(), folder));
    if (result.startError != 0)
        padscope::printError(host.front() + ": " + std::strerror(result.startError));
    return result.status;
}

int run(const ReplayOptions &options, const std::vector<std::string> &host)
{
    padscope::Replay replay = options.replay;
    std::error_code error;
    replay.capture = std::filesystem::absolute(options.file, error);
    replay.rate = numberOf(options.rate, minReplayRate, maxReplayRate);
    replay.rounds = roundsOf(options.loop).value_or(0);
    if (!options.session.empty())
        replay.session = static_cast<std::uint32_t>(std::stoul(options.session, nullptr, 16));
    return padscope::isPlayable(options.file, replay) ? play(replay, host) : padscope::Usage;
}

} // namespace

void addReplayCommand(CLI::App &program, const std::vector<std::string> &host, int &status)
{
    CLI::App *command = program.add_subcommand("replay", "Runs a host on a simulator that plays a capture");
    const auto options = std::make_shared<ReplayOptions>();
    padscope::Replay &replay = options->replay;
    command->add_option("FILE", options->file, "The capture")->type_name("")->required();
    command->add_option("--rate", options->rate, "How fast: 0.1 to 100, or max")
        ->type_name("R")
        ->check(rateValue());
    command->add_option("--loop", options->loop, "How many rounds: 1 to 1000000, or forever")
        ->type_name("N")
        ->check(loopValue());
    command->add_option("--from", replay.from, "From this second on")->type_name("S")->check(secondsValue());
    command->add_option("--to", replay.to, "Before this second")->type_name("S")->check(secondsValue());
    command->add_option("--skip-gaps", replay.skipGaps, "Shortens longer pauses to this")
        ->type_name("S")
        ->check(secondsValue());
    command->add_flag("--paused", replay.isPaused, "Begins paused");
    command->add_flag("--lockstep", replay.isLockstep, "Waits for the host at each recorded command");
    command->add_option("--session", options->session, "Of several sessions in the file, this one")
        ->type_name("ID")
        ->check(sessionValue());
    command->footer("HOST [ARGUMENT...]          The host and its arguments, behind --");
    command->callback([options, &host, &status] {
        if (host.empty())
            throw CLI::RequiredError("-- HOST");
        if (options->replay.to && *options->replay.to <= options->replay.from)
            throw CLI::ValidationError("--to", "is not later than --from");
        status = run(*options, host);
    });
}
