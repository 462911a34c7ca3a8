#include "markcommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "capturefiles.h"
#include "options.h"
#include "recorderlink.h"

namespace {

using Recorders = std::map<pid_t, marking::RecorderLink>;

struct MarkOptions
{
    std::string text;
    pid_t recorder = 0;
};

/// "1234, 1301"
std::string processesOf(const Recorders &recorders)
{
    std::string text;
    for (const auto &[process, link] : recorders)
        text += (text.empty() ? "" : ", ") + std::to_string(process);
    return text;
}

/// \return null, and a line, when it is not clear which one is meant
const Recorders::value_type *chosen(const Recorders &recorders, pid_t wanted)
{
    if (recorders.empty()) {
        padscope::printError("you have no recording that runs");
        return nullptr;
    }
    const auto found = wanted != 0 ? recorders.find(wanted) : recorders.begin();
    if (found == recorders.end())
        padscope::printError("process " + std::to_string(wanted) +
                             " is no recorder of yours; these are: " + processesOf(recorders));
    else if (wanted == 0 && recorders.size() > 1)
        padscope::printError("several recordings run; --recorder takes one of " + processesOf(recorders));
    else
        return &*found;
    return nullptr;
}

int run(const MarkOptions &options)
{
    const Recorders recorders = marking::connectToRecorders();
    const Recorders::value_type *recorder = chosen(recorders, options.recorder);
    if (!recorder)
        return padscope::Usage;
    const std::optional<std::uint32_t> number = recorder->second.mark(options.text);
    if (!number) {
        padscope::printError("the recorder, process " + std::to_string(recorder->first) +
                             ", does not answer");
        return padscope::Failed;
    }
    std::printf("mark %u\n", *number);
    return std::fflush(stdout) == 0 ? padscope::Good : padscope::statusOfOutputError();
}

} // namespace

void addMarkCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("mark", "Sets a mark in a recording that runs");
    const auto options = std::make_shared<MarkOptions>();
    command->add_option("TEXT", options->text, "The mark's text; its number without one")
        ->type_name("")
        ->check(padscope::markText("a mark"));
    command->add_option("--recorder", options->recorder, "Process that records, when there are several")
        ->type_name("PID")
        ->check(CLI::PositiveNumber);
    command->callback([options, &status] { status = run(*options); });
}
