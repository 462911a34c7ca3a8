#include "fuzz/fuzzing.h"

#include <cstdio>
#include <cstdlib>
#include <QDir>

#include "support/testmain.h"

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QTemporaryDir home;
    testsupport::useHome(home.path());
    // Never destroyed: the fuzzer leaves by exit().
    new QApplication(*argc, *argv);
    // Warnings about what was read are no findings, and would slow the fuzzer down.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        fuzz::require(type != QtFatalMsg, qPrintable(text));
    });
    // Each step of the spin box writes a line.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    fuzz::run({reinterpret_cast<const char *>(data), static_cast<int>(size)});
    return 0;
}

void fuzz::require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

void fuzz::write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate), "the file can be written");
    file.write(bytes);
}

QByteArray fuzz::Input::bytes(int length)
{
    // A buffer of just this size, so that the sanitizer sees each read past it.
    const QByteArray taken(rest.constData(), qMin(length, rest.size()));
    rest.remove(0, taken.size());
    return taken;
}
