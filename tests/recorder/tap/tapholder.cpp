// A host that does what its arguments say, in their order:
//   open, close  the tap, which it keeps open
//   own          opens the library itself
//   call         makes a call
//   exec         goes on in a new image of itself
//   fork         goes on in a child, and waits for it
//   maps         prints how many pieces of the recorder's memory it has
//   wait         for the end of standard input

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void *tap = nullptr;

bool call()
{
    const auto function = reinterpret_cast<int (*)()>(dlsym(tap, "orvexInterface"));
    return function && (function(), true);
}

int memories()
{
    std::FILE *maps = std::fopen("/proc/self/maps", "r");
    int found = 0;
    char line[4096];
    while (maps && std::fgets(line, sizeof line, maps))
        found += std::strstr(line, "memfd:padscope") ? 1 : 0;
    if (maps)
        std::fclose(maps);
    return found;
}

bool goOnInAChild()
{
    const pid_t child = fork();
    if (child == 0)
        return true;
    int status = -1;
    waitpid(child, &status, 0);
    _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 9);
}

bool doStep(const std::string &step, char **arguments)
{
    if (step == "open")
        return (tap = dlopen(TAP_FILE, RTLD_NOW)) != nullptr;
    if (step == "close")
        return dlclose(tap) == 0;
    if (step == "own")
        return dlopen(std::getenv("PADSCOPE_DRIVER"), RTLD_NOW) != nullptr;
    if (step == "call")
        return call();
    if (step == "exec")
        return execv("/proc/self/exe", arguments) == 0;
    if (step == "fork")
        return goOnInAChild();
    if (step == "maps")
        return std::printf("%d\n", memories()) > 0 && std::fflush(stdout) == 0;
    if (step == "wait")
        return std::getchar() == EOF;
    return false;
}

} // namespace

int main(int, char **arguments)
{
    for (char **step = arguments + 1; *step; ++step) {
        if (!doStep(*step, step))
            return 1;
    }
}
