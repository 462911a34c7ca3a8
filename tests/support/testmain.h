#pragma once

#include <memory>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

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

} // namespace testsupport
