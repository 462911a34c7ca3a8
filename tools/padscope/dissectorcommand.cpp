#include "dissectorcommand.h"

#include <cerrno>
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <cstring>
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

bool write(const fs::path &file)
{
    std::ofstream stream(file, std::ios::binary);
    stream << dissectorText();
    stream.close();
    return stream.good();
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
    if (!write(newFile))
        return fail(std::strerror(errno));
    fs::rename(newFile, file, error);
    if (error) {
        fs::remove(newFile, error);
        return fail("it cannot be replaced");
    }
    std::fprintf(stderr, "padscope: installed %s\n", file.c_str());
    return padscope::Good;
}

int print()
{
    std::signal(SIGPIPE, SIG_IGN);
    const std::string_view text = dissectorText();
    std::fwrite(text.data(), 1, text.size(), stdout);
    return std::fflush(stdout) == 0 ? padscope::Good : padscope::Failed;
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
