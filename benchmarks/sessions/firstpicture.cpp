// Loaded before a program: ends it at its first picture, and prints how long after its start that was.
// The environment has FIRST_PICTURE_START, nanoseconds of the monotonic clock at the start. With
// FIRST_PICTURE_OF_SIGNALS it is the first of the bar graph with signals.

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <QApplication>
#include <QBackingStore>
#include <QRegion>
#include <QWidget>
#include <unistd.h>

#include "inspect.h"

namespace {

long long monotonicNs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return 1'000'000'000LL * now.tv_sec + now.tv_nsec;
}

/// Whether the bar graph with signals is in what was painted.
bool showsSignals(const QRegion &painted)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (!widget->inherits("bargraph") || !widget->isVisible())
            continue;
        const QRect frame(widget->mapTo(widget->window(), QPoint()), widget->size());
        return painted.intersects(frame) && Inspect::hasSignals(static_cast<bargraph *>(widget));
    }
    return false;
}

} // namespace

/// What Qt calls when a window's picture is complete.
void QBackingStore::flush(const QRegion &region, QWindow *window, const QPoint &offset)
{
    using Flush = void (*)(QBackingStore *, const QRegion &, QWindow *, const QPoint &);
    static const auto next =
        reinterpret_cast<Flush>(dlsym(RTLD_NEXT, "_ZN13QBackingStore5flushERK7QRegionP7QWindowRK6QPoint"));
    next(this, region, window, offset);
    if (qEnvironmentVariableIsSet("FIRST_PICTURE_OF_SIGNALS") && !showsSignals(region))
        return;
    std::printf("%lld\n", monotonicNs() - std::atoll(std::getenv("FIRST_PICTURE_START")));
    std::fflush(stdout);
    _exit(0);
}
