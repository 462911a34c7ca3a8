#include "session.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tap {

namespace {

/// In a page of its own, which a forked child finds zeroed: it is off without a handler.
struct OnMark
{
    ring::Control *control;
};

std::atomic<OnMark *> mark{nullptr};

OnMark *newMark()
{
    const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void *page = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED)
        return nullptr;
    if (madvise(page, size, MADV_WIPEONFORK) != 0) {
        munmap(page, size);
        return nullptr;
    }
    return new (page) OnMark{nullptr};
}

bool isRing(const ring::Control &control, std::size_t size)
{
    return control.magic == ring::magic && control.cellCount > 0 &&
           (control.cellCount & (control.cellCount - 1)) == 0 && ring::sizeOf(control.cellCount) == size;
}

/// \return null with errno set
ring::Control *map(int file)
{
    struct stat status
    {
    };
    if (fstat(file, &status) != 0)
        return nullptr;
    const auto size = static_cast<std::size_t>(status.st_size);
    errno = EINVAL;
    if (status.st_uid != geteuid() || size < ring::cellsOffset)
        return nullptr;
    void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, file, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    auto *control = static_cast<ring::Control *>(memory);
    if (isRing(*control, size))
        return control;
    munmap(memory, size);
    errno = EINVAL;
    return nullptr;
}

ring::Control *mapFile(const char *path)
{
    const int file = open(path, O_RDWR | O_CLOEXEC);
    if (file < 0)
        return nullptr;
    ring::Control *control = map(file);
    const int error = errno;
    close(file);
    errno = error;
    return control;
}

/// \return false when another process has the recording
bool takeOver(ring::Control &control)
{
    std::int32_t nobody = 0;
    if (control.owner.compare_exchange_strong(nobody, getpid()))
        return true;
    control.forwardingProcesses.fetch_add(1);
    return false;
}

} // namespace

void say(const char *line, const char *detail)
{
    std::fprintf(stderr, "padscope: %s%s\n", line, detail);
}

const char *environmentOf(const char *name)
{
    const char *value = secure_getenv(name);
    return value && *value ? value : nullptr;
}

void openRing()
{
    if (recording())
        return;
    const char *path = environmentOf("PADSCOPE_RING");
    if (!path)
        return;
    ring::Control *control = mapFile(path);
    if (!control) {
        say("nothing is recorded: the recorder's memory cannot be mapped: ", std::strerror(errno));
        return;
    }
    OnMark *newOne = mark.load() ? mark.load() : newMark();
    if (!newOne)
        say("nothing is recorded: a forked child could not be told: ", std::strerror(errno));
    if (!newOne || !takeOver(*control)) {
        munmap(control, ring::sizeOf(control->cellCount));
        return;
    }
    newOne->control = control;
    mark.store(newOne, std::memory_order_release);
}

ring::Control *recording()
{
    const OnMark *current = mark.load(std::memory_order_acquire);
    return current ? current->control : nullptr;
}

// The initial-exec model: others allocate at a thread's first callback.
std::uint32_t threadId()
{
    static thread_local std::uint32_t id __attribute__((tls_model("initial-exec"))) = 0;
    if (id == 0)
        id = static_cast<std::uint32_t>(gettid());
    return id;
}

int &callDepth()
{
    static thread_local int depth __attribute__((tls_model("initial-exec"))) = 0;
    return depth;
}

} // namespace tap
