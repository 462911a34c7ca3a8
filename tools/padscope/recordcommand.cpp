#include "recordcommand.h"

#include <CLI/CLI.hpp>
#include <climits>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <unistd.h>

#include "recordrun.h"

namespace {

std::string tapFile()
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char *place : {TAP_FROM_BUILD, TAP_FROM_INSTALLATION}) {
        const std::filesystem::path file = std::filesystem::weakly_canonical(folder / place, error);
        if (std::filesystem::exists(file, error))
            return file;
    }
    return {};
}

std::string newFileName()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char name[64];
    std::strftime(name, sizeof name, "padscope-%Y-%m-%d-%H%M%S.pcapng", &local);
    return name;
}

void printProgress(const recorder::Progress &progress)
{
    static recorder::Progress last;
    const double seconds = progress.seconds - last.seconds;
    const double rate = seconds > 0 ? static_cast<double>(progress.reports - last.reports) / seconds : 0;
    std::fprintf(stderr, "\r%.0f s  %llu reports  %.0f/s  %llu lost ", progress.seconds,
                 static_cast<unsigned long long>(progress.reports), rate,
                 static_cast<unsigned long long>(progress.lost));
    last = progress;
}

/// A stream that is closed would otherwise be the next file that is opened, and take our messages. The host
/// gets it closed.
void occupyStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", O_RDWR | O_CLOEXEC);
    }
}

int run(recorder::RecordOptions options)
{
    occupyStandardStreams();
    options.tap = tapFile();
    if (options.tap.empty()) {
        std::fputs("padscope: the tap is missing; is padscope installed whole?\n", stderr);
        return 1;
    }
    if (options.output.empty())
        options.output = newFileName();
    std::error_code error;
    if (!options.driver.empty())
        options.driver = std::filesystem::absolute(options.driver, error);
    const bool isTerminal = isatty(STDERR_FILENO) != 0;
    const auto ignore = [](const recorder::Progress &) {};
    const recorder::RecordResult result =
        isTerminal ? recorder::record(options, printProgress) : recorder::record(options, ignore);
    // Not before: the host would ignore it as well.
    std::signal(SIGPIPE, SIG_IGN);
    if (isTerminal)
        std::fputc('\n', stderr);
    for (const std::string &line : result.lines)
        std::fprintf(stderr, "padscope: %s\n", line.c_str());
    return result.status;
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
    command->add_option("--note", options->note, "Text that the capture begins with")->type_name("TEXT");
    command->footer("HOST [ARGUMENT...]          The host and its arguments, behind --");
    command->callback([options, &host, &status] {
        if (host.empty())
            throw CLI::RequiredError("-- HOST");
        options->command = host;
        status = run(*options);
    });
}
