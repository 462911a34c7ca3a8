// Teaches the thread sanitizer what a QMutex is: Debian's Qt is not instrumented, and without this a QMutex
// guards nothing in its eyes. A QWaitCondition lets go of one out of its sight. The definitions here take the
// place of Qt's and call them.

#include <dlfcn.h>
#include <QDeadlineTimer>
#include <QMutex>
#include <QWaitCondition>
#include <sanitizer/tsan_interface.h>

namespace {

constexpr unsigned int lockFlags = __tsan_mutex_linker_init;
constexpr unsigned int tryLockFlags = lockFlags | __tsan_mutex_try_lock;

template <typename Function>
Function qtOwn(const char *mangledName)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, mangledName));
}

} // namespace

void QMutex::lock() noexcept
{
    static const auto own = qtOwn<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    __tsan_mutex_pre_lock(this, lockFlags);
    own(this);
    __tsan_mutex_post_lock(this, lockFlags, 0);
}

bool QMutex::tryLock(int timeout) noexcept
{
    static const auto own = qtOwn<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    __tsan_mutex_pre_lock(this, tryLockFlags);
    const bool locked = own(this, timeout);
    __tsan_mutex_post_lock(this, locked ? tryLockFlags : tryLockFlags | __tsan_mutex_try_lock_failed, 0);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto own = qtOwn<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_mutex_pre_unlock(this, 0);
    own(this);
    __tsan_mutex_post_unlock(this, 0);
}

bool QWaitCondition::wait(QMutex *mutex, unsigned long ms)
{
    static const auto own =
        qtOwn<bool (*)(QWaitCondition *, QMutex *, unsigned long)>("_ZN14QWaitCondition4waitEP6QMutexm");
    __tsan_mutex_pre_unlock(mutex, 0);
    __tsan_mutex_post_unlock(mutex, 0);
    const bool woken = own(this, mutex, ms);
    __tsan_mutex_pre_lock(mutex, lockFlags);
    __tsan_mutex_post_lock(mutex, lockFlags, 0);
    return woken;
}

bool QWaitCondition::wait(QMutex *mutex, QDeadlineTimer deadline)
{
    static const auto own = qtOwn<bool (*)(QWaitCondition *, QMutex *, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_mutex_pre_unlock(mutex, 0);
    __tsan_mutex_post_unlock(mutex, 0);
    const bool woken = own(this, mutex, deadline);
    __tsan_mutex_pre_lock(mutex, lockFlags);
    __tsan_mutex_post_lock(mutex, lockFlags, 0);
    return woken;
}
