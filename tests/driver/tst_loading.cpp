#include <dlfcn.h>

#include "orvexwrapper.h"
#include "support/capturedoutput.h"
#include "support/driverlibrary.h"
#include "support/entrypointnames.h"
#include "support/tests.h"

// The linker sends the loader's functions through these, so that the binding's use of them is seen.
extern "C" {
void *__real_dlopen(const char *file, int mode);
void *__real_dlsym(void *handle, const char *name);
int __real_dlclose(void *handle);
void *__wrap_dlopen(const char *file, int mode);
void *__wrap_dlsym(void *handle, const char *name);
int __wrap_dlclose(void *handle);
}

namespace {

QStringList loaderCalls;

QStringList takeLoaderCalls()
{
    QStringList calls;
    calls.swap(loaderCalls);
    return calls;
}

// RTLD_NOW is 2.
const QString opening = QStringLiteral("dlopen(liborvexboardex.so.1, 2)");

} // namespace

void *__wrap_dlopen(const char *file, int mode)
{
    loaderCalls += QString::asprintf("dlopen(%s, %d)", file, mode);
    return __real_dlopen(file, mode);
}

void *__wrap_dlsym(void *handle, const char *name)
{
    loaderCalls += QString::fromLatin1(name);
    return __real_dlsym(handle, name);
}

int __wrap_dlclose(void *handle)
{
    loaderCalls += QStringLiteral("dlclose");
    return __real_dlclose(handle);
}

/// How the driver library is opened, resolved and closed.
class LoadingTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void withoutLibraryEachAttachSaysSo();
    void libraryThatAppearsLaterIsFound();
    void everyNameIsLookedUpOnEveryAttach();
    void destructorDetachesOnceMore();
    void destructorClosesWithoutDetachEntry();
    void withoutAttachEntryTheLibraryStaysLoaded();
    void nothingIsLoadedBeforeAttach();
};

void LoadingTests::init()
{
    QVERIFY2(!DriverLibrary::isLoaded(), "a driver library is in the way");
    loaderCalls.clear();
}

void LoadingTests::withoutLibraryEachAttachSaysSo()
{
    // No newline follows.
    const QByteArray message(
        "liborvexboardex.so.1: cannot open shared object file: No such file or directory");
    OrvexWrapper wrapper;
    CapturedOutput once(stderr);
    QCOMPARE(wrapper.Attach(), 0);
    QCOMPARE(once.text(), message);
    QCOMPARE(takeLoaderCalls(), QStringList(opening));
    QCOMPARE(wrapper.GetDeviceCount(), 0);
    QCOMPARE(wrapper.SendCommand(1, "A\r"), -1);
    QVERIFY(wrapper.GetTouchEnabled(1));

    CapturedOutput again(stderr);
    QCOMPARE(wrapper.Attach(), 0);
    QCOMPARE(again.text(), message);
}

void LoadingTests::libraryThatAppearsLaterIsFound()
{
    OrvexWrapper wrapper;
    CapturedOutput captured(stderr);
    QCOMPARE(wrapper.Attach(), 0);
    QVERIFY(!captured.text().isEmpty());

    const DriverLibrary library("complete", {1, 2});
    library->setResult("orvexAttach", 42);
    CapturedOutput silent(stderr);
    QCOMPARE(wrapper.Attach(), 42);
    QCOMPARE(silent.text(), QByteArray());
    QCOMPARE(wrapper.GetDeviceCount(), 2);
}

void LoadingTests::everyNameIsLookedUpOnEveryAttach()
{
    QCOMPARE(entryPointNames.size(), 47);
    const DriverLibrary library("complete");
    OrvexWrapper wrapper;
    takeLoaderCalls();

    wrapper.Attach();
    QCOMPARE(takeLoaderCalls(), QStringList(opening) + entryPointNames);
    wrapper.Attach();
    QCOMPARE(takeLoaderCalls(), entryPointNames);
    QCOMPARE(library.takeCalls(), QStringList({"orvexAttach()", "orvexAttach()"}));
}

void LoadingTests::destructorDetachesOnceMore()
{
    DriverLibrary library("complete");
    auto *wrapper = new OrvexWrapper;
    wrapper->Attach();
    wrapper->Detach();
    library.takeCalls();
    takeLoaderCalls();

    delete wrapper;
    QCOMPARE(library.takeCalls(), QStringList("orvexDetach()"));
    QCOMPARE(takeLoaderCalls(), QStringList("dlclose"));
    library.close();
    QVERIFY(!DriverLibrary::isLoaded());
}

void LoadingTests::destructorClosesWithoutDetachEntry()
{
    DriverLibrary library("without/orvexDetach");
    auto *wrapper = new OrvexWrapper;
    wrapper->Attach();
    library.takeCalls();
    library.close();
    QVERIFY(DriverLibrary::isLoaded());

    delete wrapper;
    QVERIFY(!DriverLibrary::isLoaded());
}

void LoadingTests::withoutAttachEntryTheLibraryStaysLoaded()
{
    const DriverLibrary library("without/orvexAttach");
    library.setBoards({1, 2, 3});
    OrvexWrapper wrapper;
    CapturedOutput captured(stderr);

    QCOMPARE(wrapper.Attach(), 0);
    QCOMPARE(captured.text(), QByteArray());
    QCOMPARE(wrapper.GetDeviceCount(), 3);
}

void LoadingTests::nothingIsLoadedBeforeAttach()
{
    {
        OrvexWrapper wrapper;
        wrapper.Detach();
        QCOMPARE(wrapper.GetDeviceCount(), 0);
    }
    QCOMPARE(takeLoaderCalls(), QStringList());
}

PADSCOPE_TESTS(LoadingTests);
#include "tst_loading.moc"
