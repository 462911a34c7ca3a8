#include <algorithm>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>
#include <vector>

#include "checkcommand.h"
#include "decodecommand.h"
#include "diffcommand.h"
#include "dissectorcommand.h"
#include "escaping.h"
#include "infocommand.h"
#include "markcommand.h"
#include "plotcommands.h"
#include "recordcommand.h"
#include "redactcommand.h"
#include "replaycommand.h"
#include "statscommand.h"

namespace {

constexpr int usageStatus = 2;
constexpr char version[] = "padscope " PADSCOPE_VERSION;

std::string usageError(const CLI::App *, const CLI::Error &error)
{
    std::string line = "padscope: ";
    decoding::appendEscaped(line, error.what());
    return line + "; see --help\n";
}

/// Takes the host's command off those of `record` and `replay`: it is passed on as it is.
std::vector<std::string> takeHost(int &argc, char **argv)
{
    const std::string verb = argc < 2 ? "" : argv[1];
    if (verb != "record" && verb != "replay")
        return {};
    char **const end = argv + argc;
    char **const mark = std::find(argv, end, std::string("--"));
    argc = static_cast<int>(mark - argv);
    return {mark == end ? end : mark + 1, end};
}

int run(int argc, char **argv)
{
    CLI::App program("Records what a board sends, and decodes it.", "padscope");
    program.set_version_flag("--version", version, "Prints the version");
    program.set_help_flag("-h,--help", "Prints this");
    program.failure_message(usageError);
    program.require_subcommand(1);
    int status = 0;
    const std::vector<std::string> host = takeHost(argc, argv);
    addRecordCommand(program, host, status);
    addReplayCommand(program, host, status);
    addInfoCommand(program, status);
    addDecodeCommand(program, status);
    addCheckCommand(program, status);
    addStatsCommand(program, status);
    addRedactCommand(program, status);
    addDiffCommand(program, status);
    addDissectorCommand(program, status);
    addPlotCommand(program, status);
    addReportCommand(program, status);
    addMarkCommand(program, status);
    for (CLI::App *command : program.get_subcommands(nullptr))
        command->set_version_flag("--version", version, "Prints the version");
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return program.exit(error) == 0 ? 0 : usageStatus;
    }
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::fputs((std::string("padscope: ") + error.what() + '\n').c_str(), stderr);
        return 1;
    }
}
