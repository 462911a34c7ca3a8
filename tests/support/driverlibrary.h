#pragma once

#include <dlfcn.h>
#include <QStringList>

#include "driver/fake/fakeboards.h"

/// Loads a variant of the fake driver library by its path; the tool's own look-up by name then finds it.
///
/// Its own handle keeps the library, with its call log, loaded when the tool has closed it.
class DriverLibrary
{
public:
    /// \param variant "complete", "old" (no name that ends in Ex but the calibration's), "empty" (no name at
    ///        all) or "without/orvexLock" (lacks just that name)
    /// \param ids the boards that are plugged in
    explicit DriverLibrary(const char *variant, const QVector<int> &ids = {})
    {
        const QByteArray path = QByteArray(PADSCOPE_FAKE_DRIVERS "/") + variant + "/liborvexboardex.so.1";
        handle = dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL);
        if (!handle)
            qFatal("no fake driver library: %s", dlerror());
        const auto function = reinterpret_cast<FakeBoardsFunction>(dlsym(handle, "fake_boards"));
        if (!function)
            qFatal("not a fake driver library: %s", path.constData());
        boards = function();
        boards->reset();
        setBoards(ids);
    }
    ~DriverLibrary() { close(); }

    DriverLibrary(const DriverLibrary &) = delete;
    DriverLibrary &operator=(const DriverLibrary &) = delete;

    const FakeBoards *operator->() const { return boards; }

    void setBoards(const QVector<int> &ids) const { boards->setBoards(ids.constData(), ids.size()); }

    /// Delivers a report on the caller's thread, or on so many new ones.
    void deliver(int device, const QByteArray &report, int threads = 0) const
    {
        boards->deliver(device, reinterpret_cast<const unsigned char *>(report.constData()),
                        static_cast<unsigned int>(report.size()), threads);
    }

    /// The calls so far, which are then forgotten.
    QStringList takeCalls() const
    {
        QStringList calls;
        for (int i = 0; i < boards->callCount(); ++i)
            calls += QString::fromLatin1(boards->callText(i));
        boards->clearCalls();
        return calls;
    }

    /// Lets go of the library, which unloads it unless the tool holds it too.
    void close()
    {
        if (handle)
            dlclose(handle);
        handle = nullptr;
    }

    /// Whether any library is loaded under the name that the tool looks for.
    static bool isLoaded()
    {
        void *loaded = dlopen("liborvexboardex.so.1", RTLD_NOW | RTLD_NOLOAD);
        if (loaded)
            dlclose(loaded);
        return loaded != nullptr;
    }

private:
    void *handle = nullptr;
    const FakeBoards *boards = nullptr;
};

/// A pointer, as the call log of the fake library shows it.
template <typename Pointer>
QString addressText(Pointer pointer)
{
    return QString::asprintf("%p", reinterpret_cast<const void *>(pointer));
}
