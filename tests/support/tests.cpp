#include "support/tests.h"

#include <cstdio>
#include <map>
#include <QFileInfo>

#include "support/testmain.h"

namespace {

std::map<QString, testsupport::RunTests> &allTests()
{
    static std::map<QString, testsupport::RunTests> tests;
    return tests;
}

int printTests()
{
    for (const auto &[name, run] : allTests())
        std::fprintf(stderr, "%s\n", qPrintable(name));
    return 2;
}

} // namespace

bool testsupport::addTests(const char *file, RunTests run)
{
    return allTests().emplace(QFileInfo(QString::fromUtf8(file)).baseName(), run).second;
}

/// Runs one class's tests in a home folder that is new, before Qt has looked for any setting in it. What
/// follows the class's name goes to Qt Test. Without a name that is known, the names are listed, and the exit
/// status is 2.
int main(int argc, char **argv)
{
    const auto tests = allTests().find(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    if (tests == allTests().end())
        return printTests();
    argv[1] = argv[0];
    --argc;
    ++argv;

    const QTemporaryDir home;
    if (!home.isValid()) {
        std::fprintf(stderr, "no home folder for the tests: %s\n", qPrintable(home.errorString()));
        return 2;
    }
    testsupport::useHome(home.path());
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    return tests->second(argc, argv);
}
