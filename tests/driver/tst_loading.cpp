#include <dlfcn.h>

#include "orvexwrapper.h"
#include "support/capturedoutput.h"
#include "support/driverlibrary.h"
#include "support/entrypointnames.h"
#include "support/tests.h"

namespace {

QStringList loaderCalls;

QStringList takeLoaderCalls()
{
    return std::exchange(loaderCalls, {});
}

// RTLD_NOW is 2.
const QString opening = "dlopen(liborvexboardex.so.1, 2)";

} // namespace

// The linker sends the loader's functions through these, so that the binding's use of them is seen.
extern "C" {
void *__real_dlopen(const char *file, int mode);
void *__real_dlsym(void *handle, const char *name);

void *__wrap_dlopen(const char *file, int mode)
{
    loaderCalls += QString::asprintf("dlopen(%s, %d)", file, mode);
    return __real_dlopen(file, mode);
}

void *__wrap_dlsym(void *handle, const char *name)
{
    loaderCalls += name;
    return __real_dlsym(handle, name);
}
}

/// How the driver library is opened, resolved and closed.
class LoadingTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void nothingIsLoadedBeforeAttach();
    void libraryThatAppearsLaterIsFound();
    void everyNameIsLookedUpOnEveryAttach();
    void destructorDetachesOnceMoreAndCloses();
    void withoutAttachEntryTheLibraryStaysLoaded();
};

void LoadingTests::init()
{
    QVERIFY2(!DriverLibrary::isLoaded(), "a driver library is in the way");
    takeLoaderCalls();
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

void LoadingTests::libraryThatAppearsLaterIsFound()
{
    OrvexWrapper wrapper;
    for (int attaches = 0; attaches < 2; ++attaches) {
        CapturedOutput captured(stderr);
        QCOMPARE(wrapper.Attach(), 0);
        // No newline follows.
        QCOMPARE(captured.text(), QByteArray("liborvexboardex.so.1: cannot open shared object file: "
                                             "No such file or directory"));
        QCOMPARE(takeLoaderCalls(), QStringList(opening));
        QCOMPARE(wrapper.GetDeviceCount(), 0);
        QCOMPARE(wrapper.SendCommand(1, "A\r"), -1);
        QVERIFY(wrapper.GetTouchEnabled(1));
    }
    const DriverLibrary library("complete", {1, 2});
    library->setResult("orvexAttach", 42);
    CapturedOutput captured(stderr);
    QCOMPARE(wrapper.Attach(), 42);
    QCOMPARE(captured.text(), QByteArray());
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

void LoadingTests::destructorDetachesOnceMoreAndCloses()
{
    using Case = QPair<const char *, QStringList>;
    for (const auto &[variant, calls] :
         {Case("complete", {"orvexDetach()"}), Case("without/orvexDetach", {})}) {
        DriverLibrary library(variant);
        {
            OrvexWrapper wrapper;
            wrapper.Attach();
            wrapper.Detach();
            library.takeCalls();
        }
        QCOMPARE(library.takeCalls(), calls);
        // Closed once: it is still held here.
        QVERIFY(DriverLibrary::isLoaded());
        library.close();
        QVERIFY(!DriverLibrary::isLoaded());
    }
}

void LoadingTests::withoutAttachEntryTheLibraryStaysLoaded()
{
    const DriverLibrary library("without/orvexAttach", {1, 2, 3});
    OrvexWrapper wrapper;
    CapturedOutput captured(stderr);
    QCOMPARE(wrapper.Attach(), 0);
    QCOMPARE(captured.text(), QByteArray());
    QCOMPARE(wrapper.GetDeviceCount(), 3);
}

PADSCOPE_TESTS(LoadingTests);
#include "tst_loading.moc"
