#include "librarysearch.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <elf.h>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "entrypoints.h"
#include "spawnarguments.h"

namespace recorder {

namespace {

constexpr char anyProgram[] = "/bin/sh"; ///< stands for a host that the loader does not start itself

std::vector<std::string> foldersOf(const char *list, const char *separators)
{
    std::vector<std::string> folders;
    const std::string text = list ? list : "";
    for (std::size_t begin = 0; !text.empty() && begin <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        folders.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return folders;
}

bool areSameFile(const std::string &one, const std::string &other)
{
    std::error_code error;
    return std::filesystem::equivalent(one, other, error);
}

/// LD_LIBRARY_PATH without the folders of the tap.
std::string searchPath(const std::string &tap)
{
    std::string path;
    for (const std::string &folder : foldersOf(std::getenv("LD_LIBRARY_PATH"), ":;")) {
        const std::string file = (folder.empty() ? "." : folder) + '/' + orvexLibraryName;
        if (!areSameFile(file, tap))
            path += (path.empty() ? "" : ":") + (folder.empty() ? "." : folder);
    }
    return path;
}

/// The file that posix_spawnp() starts; empty when there is none.
std::string programFile(const std::string &name)
{
    if (name.find('/') != std::string::npos)
        return name;
    const char *path = std::getenv("PATH");
    for (const std::string &folder : foldersOf(path ? path : "/bin:/usr/bin", ":")) {
        std::string file = (folder.empty() ? "." : folder) + '/' + name;
        if (access(file.c_str(), X_OK) == 0)
            return file;
    }
    return {};
}

template <typename Structure>
bool readAt(int file, std::uint64_t offset, Structure &structure)
{
    const ssize_t count = pread(file, &structure, sizeof structure, static_cast<off_t>(offset));
    return count == static_cast<ssize_t>(sizeof structure);
}

/// The dynamic loader that an ELF file names; empty for any other file, and for one of 32 bits.
std::string loaderNamedIn(int file)
{
    Elf64_Ehdr head{};
    if (!readAt(file, 0, head) || std::string(reinterpret_cast<char *>(head.e_ident), SELFMAG) != ELFMAG ||
        head.e_ident[EI_CLASS] != ELFCLASS64)
        return {};
    for (unsigned i = 0; i < head.e_phnum; ++i) {
        Elf64_Phdr part{};
        if (!readAt(file, head.e_phoff + std::uint64_t{i} * sizeof part, part))
            return {};
        char path[256] = {};
        if (part.p_type == PT_INTERP && part.p_filesz < sizeof path &&
            pread(file, path, part.p_filesz, static_cast<off_t>(part.p_offset)) > 0)
            return path;
    }
    return {};
}

std::string loaderOf(const std::string &program)
{
    const int file = open(program.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    std::string loader = loaderNamedIn(file);
    close(file);
    return loader;
}

/// What a program prints.
std::string outputOf(const std::vector<std::string> &command, const std::vector<std::string> &environment)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return {};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = -1;
    const int error = posix_spawn(&process, command.front().c_str(), &actions, nullptr,
                                  pointersTo(command).data(), pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::string output;
    char bytes[4096];
    for (ssize_t count = 1; error == 0 && (count = read(ends[0], bytes, sizeof bytes)) > 0;)
        output.append(bytes, static_cast<std::size_t>(count));
    close(ends[0]);
    if (error == 0)
        waitpid(process, nullptr, 0);
    return output;
}

/// Of a line "<TAB>name => path (0x7f0123456789)".
std::string pathInList(const std::string &list)
{
    const std::string name = '\t' + std::string(orvexLibraryName) + " => ";
    const std::size_t begin = list.find(name);
    if (begin == std::string::npos)
        return {};
    const std::string line = list.substr(begin + name.size(), list.find('\n', begin) - begin - name.size());
    return line.substr(0, line.rfind(" (0x"));
}

} // namespace

FoundLibrary findDriverLibrary(const std::string &host, const std::string &tap)
{
    std::string program = programFile(host);
    std::string loader = loaderOf(program);
    if (loader.empty()) {
        program = anyProgram;
        loader = loaderOf(program);
    }
    const std::string path = searchPath(tap);
    FoundLibrary found;
    found.places = "LD_LIBRARY_PATH (" + (path.empty() ? "empty" : path) + "), the RUNPATH of " + host +
                   ", the loader's cache and its default folders";
    if (loader.empty())
        return found;
    // As a preloaded library it is searched for like one that the host loads.
    std::error_code error;
    const std::string listed =
        outputOf({loader, "--list", std::filesystem::absolute(program, error)},
                 {std::string("LD_PRELOAD=") + orvexLibraryName, "LD_LIBRARY_PATH=" + path});
    const std::string file = pathInList(listed);
    if (!file.empty() && !areSameFile(file, tap))
        found.path = std::filesystem::absolute(file, error);
    return found;
}

} // namespace recorder
