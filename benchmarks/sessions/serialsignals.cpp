// Loaded before CuteCom: it closes a terminal that lacks the signals of a serial port, as a pseudo-terminal
// does.

#include <cstdarg>
#include <dlfcn.h>
#include <sys/ioctl.h>

extern "C" [[gnu::visibility("default")]] int ioctl(int file, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request == TIOCMGET)
        *static_cast<int *>(argument) = 0;
    if (request == TIOCMGET || request == TIOCMSET || request == TIOCMBIS || request == TIOCMBIC)
        return 0;
    using Ioctl = int (*)(int, unsigned long, void *);
    static const auto next = reinterpret_cast<Ioctl>(dlsym(RTLD_NEXT, "ioctl"));
    return next(file, request, argument);
}
