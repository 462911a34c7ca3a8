#pragma once

#include <cstdio>
#include <memory>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include "support/table.h"

namespace testsupport {

/// Points everything that a program keeps of its user into one folder, and shuts out what the user has set.
inline void useHome(const QString &home)
{
    const auto set = [&home](const char *name, const char *folder) {
        qputenv(name, QFile::encodeName(home + QLatin1String(folder)));
    };
    set("HOME", "");
    set("XDG_CONFIG_HOME", "/config");
    set("XDG_CONFIG_DIRS", "/etc");
    set("XDG_DATA_HOME", "/data");
    set("XDG_CACHE_HOME", "/cache");
    set("XDG_RUNTIME_DIR", "");
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("LANGUAGE");
    qunsetenv("TZ");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

/// What Qt's platform plugin allocates here it does not free at the end, which is no leak of the tool's.
inline std::unique_ptr<QApplication> newApplication(int &argc, char **argv)
{
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler disabler;
#endif
    return std::make_unique<QApplication>(argc, argv);
}

/// Runs the tests of a class in a home folder that is new, before Qt has looked for any setting in it.
template <typename Tests>
int run(int argc, char **argv)
{
    const QTemporaryDir home;
    if (!home.isValid()) {
        std::fprintf(stderr, "no home folder for the tests: %s\n", qPrintable(home.errorString()));
        return 2;
    }
    useHome(home.path());
    const std::unique_ptr<QApplication> application = newApplication(argc, argv);
    Tests tests;
    return QTest::qExec(&tests, argc, argv);
}

} // namespace testsupport

/// The main() of a test program.
#define PADSCOPE_TEST_MAIN(Class)                                                                            \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return testsupport::run<Class>(argc, argv);                                                          \
    }
