#include "recordcommand.h"

#include <cerrno>
#include <CLI/CLI.hpp>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <poll.h>
#include <unistd.h>

#include "events.h"
#include "options.h"
#include "recordrun.h"

namespace {

std::string tapFile()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return std::filesystem::weakly_canonical(program.parent_path() / TAP_DIR "/liborvexboardex.so.1", error);
}

std::string newFileName()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char stem[64];
    std::strftime(stem, sizeof stem, "padscope-%Y-%m-%d-%H%M%S", &local);
    std::string name = std::string(stem) + ".pcapng";
    std::error_code error;
    for (int i = 2; std::filesystem::exists(name, error); ++i)
        name = std::string(stem) + '-' + std::to_string(i) + ".pcapng";
    return name;
}

/// What is told on standard error while the host runs.
class ProgressLine
{
public:
    void show(const recorder::Progress &progress)
    {
        sayWaiting(progress.isWaitingForOthers);
        if (!isTerminal || !takesText())
            return;
        const double seconds = progress.seconds - last.seconds;
        const double rate = seconds > 0 ? static_cast<double>(progress.reports - last.reports) / seconds : 0;
        std::fprintf(stderr, "\r%.0f s  %llu reports  %.0f/s  %llu lost ", progress.seconds,
                     static_cast<unsigned long long>(progress.reports), rate,
                     static_cast<unsigned long long>(progress.lost));
        last = progress;
        isShown = true;
    }

    void end()
    {
        if (isShown && takesText())
            std::fputc('\n', stderr);
        isShown = false;
    }

private:
    /// A terminal that is stopped by Ctrl+S, or that this job may not write to, would stop the recording.
    static bool takesText()
    {
        const pid_t foreground = tcgetpgrp(STDERR_FILENO);
        pollfd terminal{STDERR_FILENO, POLLOUT, 0};
        return (foreground < 0 || foreground == getpgrp()) && poll(&terminal, 1, 0) > 0 &&
               (terminal.revents & POLLOUT) != 0;
    }

    /// Not of those that end within a second.
    void sayWaiting(bool isWaiting)
    {
        if (isWaiting && ++secondsWaited == 2 && takesText()) {
            end();
            std::fputs(
                "padscope: the host has ended; waiting for processes that it has left behind, which may "
                "open the driver library (SIGINT ends this)\n",
                stderr);
        }
    }

    const bool isTerminal = isatty(STDERR_FILENO) != 0;
    bool isShown = false;
    int secondsWaited = 0;
    recorder::Progress last;
};

/// A stream that is closed would otherwise be the next file that is opened, and take our messages. The host
/// gets it closed.
void occupyStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", O_RDWR | O_CLOEXEC);
    }
}

/// The part of `record` that waits for events.
struct EventOptions
{
    std::vector<std::string> names;
    double before = 10;
    double after = 5;
};

std::optional<recorder::Trigger> triggerOf(const EventOptions &options)
{
    if (options.names.empty())
        return std::nullopt;
    constexpr double nsPerSecond = 1e9;
    recorder::Trigger trigger;
    trigger.beforeNs = static_cast<std::uint64_t>(options.before * nsPerSecond);
    trigger.afterNs = static_cast<std::uint64_t>(options.after * nsPerSecond);
    trigger.isEvent = padscope::isAnyOf(options.names);
    return trigger;
}

int run(recorder::RecordOptions options)
{
    occupyStandardStreams();
    options.tap = tapFile();
    if (access(options.tap.c_str(), R_OK) != 0) {
        std::fprintf(stderr, "padscope: %s: %s; is padscope installed whole?\n", options.tap.c_str(),
                     std::strerror(errno));
        return 1;
    }
    if (options.output.empty())
        options.output = newFileName();
    std::error_code error;
    if (!options.driver.empty())
        options.driver = std::filesystem::absolute(options.driver, error);
    ProgressLine line;
    const recorder::RecordResult result =
        recorder::record(options, [&line](const recorder::Progress &progress) { line.show(progress); });
    // Not before: the host would ignore it as well.
    std::signal(SIGPIPE, SIG_IGN);
    line.end();
    for (const std::string &text : result.lines)
        std::fprintf(stderr, "padscope: %s\n", text.c_str());
    return result.status;
}

void addEventOptions(CLI::App *command, EventOptions &options)
{
    CLI::Option *on =
        command
            ->add_option(
                "--on", options.names,
                "Writes only what lies around this: mark, call:NAME, type:NAME or signal (repeatable)")
            ->type_name("EVENT")
            ->allow_extra_args(false)
            ->check(padscope::eventName());
    const auto addSeconds = [command, on](const char *name, double &seconds, const char *description) {
        constexpr double maxSeconds = 86'400;
        command->add_option(name, seconds, description)
            ->type_name("S")
            ->check(padscope::finiteNumber())
            ->check(CLI::Range(0.0, maxSeconds))
            ->needs(on);
    };
    addSeconds("--before", options.before, "Seconds before the event, up to 86400; 10 unless said otherwise");
    addSeconds("--after", options.after, "Seconds behind the event, up to 86400; 5 unless said otherwise");
}

} // namespace

void addRecordCommand(CLI::App &program, const std::vector<std::string> &host, int &status)
{
    CLI::App *command = program.add_subcommand(
        "record", "Runs a host and records what crosses between it and the driver library");
    const auto options = std::make_shared<recorder::RecordOptions>();
    command->add_option("-o,--output", options->output, "The capture to write; never overwrites")
        ->type_name("FILE");
    command->add_option("--driver", options->driver, "The driver library, in place of what the host loads")
        ->type_name("FILE")
        ->check(CLI::ExistingFile);
    command->add_option("--ring", options->ringSize, "Memory for what is not written yet, such as 64K or 16M")
        ->type_name("SIZE")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(recorder::minRingSize, recorder::maxRingSize));
    command->add_option("--note", options->note, "Text that the capture begins with")
        ->type_name("TEXT")
        ->check(padscope::markText("a note"));
    const auto events = std::make_shared<EventOptions>();
    addEventOptions(command, *events);
    command->footer("HOST [ARGUMENT...]          The host and its arguments, behind --");
    command->callback([options, events, &host, &status] {
        if (host.empty())
            throw CLI::RequiredError("-- HOST");
        options->command = host;
        options->trigger = triggerOf(*events);
        status = run(*options);
    });
}
