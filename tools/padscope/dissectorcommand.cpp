#include "dissectorcommand.h"

#include <cerrno>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pwd.h>
#include <unistd.h>

#include "capturefiles.h"
#include "dissector.h"

namespace {

namespace fs = std::filesystem;

/// Where Wireshark of any version looks for a user's plugins in Lua.
fs::path pluginFolder()
{
    const char *home = std::getenv("HOME");
    const passwd *user = home && *home ? nullptr : getpwuid(getuid());
    return fs::path(user ? user->pw_dir : home ? home : "/") / ".local/lib/wireshark/plugins";
}

/// Whether a file is a dissector of ours, of any version: all begin with the same line.
bool isDissector(const fs::path &file)
{
    std::string line;
    std::getline(std::ifstream(file), line);
    return line == dissectorText().substr(0, dissectorText().find('\n'));
}

/// Writes a new file. \return an error number, or 0
int writeNew(const fs::path &file)
{
    std::FILE *stream = std::fopen(file.c_str(), "wx");
    if (!stream)
        return errno;
    const std::string_view text = dissectorText();
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    return std::fclose(stream) == 0 && isWritten ? 0 : errno;
}

int install()
{
    const fs::path file = pluginFolder() / "padscope.lua";
    const auto fail = [&file](const std::string &reason) {
        padscope::printError(file.string() + ": " + reason);
        return padscope::Failed;
    };
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (error)
        return fail(error.message());
    if (fs::exists(fs::symlink_status(file, error)) && !isDissector(file))
        return fail("it is not Padscope's, and is left as it is");
    const fs::path newFile = file.string() + '.' + std::to_string(getpid());
    const int writeError = writeNew(newFile);
    if (writeError == EEXIST)
        return fail(newFile.string() + " is in the way");
    if (writeError == 0)
        fs::rename(newFile, file, error);
    else
        error.assign(writeError, std::generic_category());
    if (error) {
        const std::string reason = error.message();
        fs::remove(newFile, error);
        return fail(reason);
    }
    std::fprintf(stderr, "padscope: installed %s\n", file.c_str());
    return padscope::Good;
}

int print()
{
    padscope::ignoreBrokenPipes();
    const std::string_view text = dissectorText();
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return isWritten && std::fflush(stdout) == 0 ? padscope::Good : padscope::statusOfOutputError();
}

} // namespace

void addDissectorCommand(CLI::App &program, int &status)
{
    CLI::App *command =
        program.add_subcommand("dissector", "Prints Wireshark's dissector of captures, in Lua");
    const auto isInstalled = std::make_shared<bool>(false);
    command->add_flag("--install", *isInstalled, "Puts it into your folder of Wireshark's plugins instead");
    command->callback([isInstalled, &status] { status = *isInstalled ? install() : print(); });
}
