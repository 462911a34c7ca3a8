#include "fuzz/fuzzing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QTemporaryDir>

namespace fuzz {

namespace {

/// Warnings about what was read are no findings, and would slow the fuzzer down.
void ignoreMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        std::abort();
    }
}

} // namespace

void startApplication()
{
    static QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home.path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    // Never destroyed: the fuzzer leaves by exit().
    new QApplication(argc, argv);
    qInstallMessageHandler(ignoreMessage);
}

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

std::uint8_t Input::byte()
{
    if (left == 0)
        return 0;
    --left;
    return *rest++;
}

QByteArray Input::bytes(std::size_t length)
{
    const std::size_t taken = std::min(length, left);
    // A buffer of just this size, so that the sanitizer sees each read past it.
    const QByteArray result(reinterpret_cast<const char *>(rest), static_cast<int>(taken));
    rest += taken;
    left -= taken;
    return result;
}

} // namespace fuzz
