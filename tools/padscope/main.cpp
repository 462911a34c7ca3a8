#include <CLI/CLI.hpp>

#include "checkcommand.h"
#include "decodecommand.h"
#include "dissectorcommand.h"
#include "infocommand.h"
#include "recordcommand.h"

namespace {

constexpr int usageStatus = 2;

} // namespace

int main(int argc, char **argv)
{
    CLI::App program("Records what a board sends, and decodes it.", "padscope");
    program.set_version_flag("--version", "padscope " PADSCOPE_VERSION);
    program.require_subcommand(1);
    int status = 0;
    addRecordCommand(program, status);
    addInfoCommand(program, status);
    addDecodeCommand(program, status);
    addCheckCommand(program, status);
    addDissectorCommand(program, status);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return program.exit(error) == 0 ? 0 : usageStatus;
    }
    return status;
}
