#include "plotcommands.h"

#include <cerrno>
#include <CLI/CLI.hpp>
#include <cstring>
#include <filesystem>
#include <memory>
#include <unistd.h>

#include "capturefiles.h"
#include "options.h"

namespace {

struct PlotOptions
{
    std::string file;
    std::string what;
    std::string output;
};

/// Goes on as the program that draws. \return only when it can't be started
int start(std::vector<std::string> arguments)
{
    std::error_code error;
    const std::filesystem::path padscope = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string program = padscope.parent_path() / PLOTS_DIR "/padscope-plots";
    arguments.insert(arguments.begin(), program);
    std::vector<char *> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    padscope::printError(program + ": " + std::strerror(errno) + "; is padscope installed whole?");
    return padscope::Failed;
}

void addFiles(CLI::App *command, PlotOptions &options, const std::vector<std::string> &extensions)
{
    command->add_option("FILE", options.file, "A capture; - is standard input")->type_name("")->required();
    command
        ->add_option("-o,--output", options.output,
                     "The file to write, " + CLI::detail::join(extensions, ", ") + "; overwrites nothing")
        ->type_name("OUT")
        ->required()
        ->check(padscope::newFile(extensions));
}

} // namespace

void addPlotCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("plot", "Draws a capture");
    const auto options = std::make_shared<PlotOptions>();
    addFiles(command, *options, {".svg", ".png", ".pdf"});
    command->add_option("--what", options->what, "path, signals, quality, voltage or rates")
        ->type_name("NAME")
        ->required()
        ->check(padscope::oneOf({"path", "signals", "quality", "voltage", "rates"}));
    command->callback([options, &status] {
        status = start({"plot", options->file, options->what, options->output});
    });
}

void addReportCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("report", "Writes a page about a capture, to be mailed");
    const auto options = std::make_shared<PlotOptions>();
    addFiles(command, *options, {".html"});
    command->callback([options, &status] { status = start({"report", options->file, options->output}); });
}
