#include "recordcommand.h"

#include <CLI/CLI.hpp>
#include <climits>
#include <cstdio>
#include <ctime>
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

int run(recorder::RecordOptions options)
{
    options.tap = tapFile();
    if (options.tap.empty()) {
        std::fputs("padscope: the tap is missing; is padscope installed whole?\n", stderr);
        return 1;
    }
    if (options.output.empty())
        options.output = newFileName();
    const bool isTerminal = isatty(STDERR_FILENO) != 0;
    const auto ignore = [](const recorder::Progress &) {};
    const recorder::RecordResult result =
        isTerminal ? recorder::record(options, printProgress) : recorder::record(options, ignore);
    if (isTerminal)
        std::fputc('\n', stderr);
    for (const std::string &line : result.lines)
        std::fprintf(stderr, "padscope: %s\n", line.c_str());
    return result.status;
}

} // namespace

void addRecordCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand(
        "record", "Runs a host and records what crosses between it and the driver library");
    const auto options = std::make_shared<recorder::RecordOptions>();
    command->add_option("-o,--output", options->output, "The capture to write; never overwrites")
        ->type_name("FILE");
    command->add_option("--driver", options->driver, "The driver library")->type_name("FILE");
    command->add_option("--ring", options->ringSize, "Memory for what is not written yet, such as 64K or 16M")
        ->type_name("SIZE")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(recorder::minRingSize, recorder::maxRingSize));
    command->add_option("--note", options->note, "Text that the capture begins with")->type_name("TEXT");
    command->add_option("HOST", options->command, "The host and its arguments, behind --")->required();
    command->callback([options, &status] { status = run(*options); });
}
