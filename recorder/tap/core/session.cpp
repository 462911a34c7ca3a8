#include "session.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tap {

namespace {

/// In a page of its own, which a forked child finds zeroed: it is off without a handler.
struct OnMark
{
    ring::Control *control;
    bool isForwarding; ///< another process has the recording
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
    return new (page) OnMark{nullptr, false};
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

/// This process's number in the recorder's /proc, which getpid() does not know in a PID namespace of the
/// host's own. 0 when it has none there.
std::int32_t ownNumber()
{
    char digits[16] = {};
    if (readlink("/proc/self", digits, sizeof digits - 1) <= 0)
        return 0;
    return std::atoi(digits);
}

/// Random, and another one in each file that is executed.
std::uint64_t ownImage()
{
    std::uint64_t image = 0;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): as the kernel gives it
    if (const auto *random = reinterpret_cast<const void *>(getauxval(AT_RANDOM)))
        std::memcpy(&image, random, sizeof image);
    return image;
}

/// \return false when another process has the recording
bool takeOver(ring::Control &control, std::int32_t self)
{
    std::int32_t owner = 0;
    const bool isFirst = control.owner.compare_exchange_strong(owner, self);
    if (!isFirst && owner != self) {
        control.forwardingProcesses.fetch_add(1);
        return false;
    }
    // Threads that were writing have gone when the owner has executed another file.
    if (control.ownerImage.exchange(ownImage()) != ownImage() && !isFirst)
        control.abandoned.store(ring::abandonedMark | ring::cellsOf(control.reserved.load()));
    return true;
}

bool isForwarding()
{
    const OnMark *current = mark.load();
    return current && current->isForwarding;
}

/// exit() unloads the libraries as well, behind this.
bool isExiting = false;
[[maybe_unused]] const int exitHandler = std::atexit([] { isExiting = true; });

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
    const char *path = environmentOf("PADSCOPE_RING");
    if (recording() || isForwarding() || !path)
        return;
    ring::Control *control = mapFile(path);
    if (!control) {
        say("nothing is recorded: the recorder's memory cannot be mapped: ", std::strerror(errno));
        return;
    }
    OnMark *ownMark = mark.load() ? mark.load() : newMark();
    const std::int32_t self = ownNumber();
    if (!ownMark)
        say("nothing is recorded: a forked child could not be told: ", std::strerror(errno));
    else if (self == 0)
        say("nothing is recorded: this process is not in the recorder's /proc");
    else if (takeOver(*control, self))
        ownMark->control = control;
    else
        ownMark->isForwarding = true;
    if (ownMark && ownMark->control)
        madvise(control, ring::sizeOf(control->cellCount), MADV_DONTFORK); // children would keep it
    else
        munmap(control, ring::sizeOf(control->cellCount));
    mark.store(ownMark, std::memory_order_release);
}

void noteFailedOpening()
{
    const char *path = environmentOf("PADSCOPE_RING");
    ring::Control *control = path ? mapFile(path) : nullptr;
    if (!control)
        return;
    control->failedOpenings.fetch_add(1);
    munmap(control, ring::sizeOf(control->cellCount));
}

void noteLibraryStays()
{
    ring::Control *control = recording();
    if (control && !isExiting)
        control->timesPassedBy.fetch_add(1);
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
