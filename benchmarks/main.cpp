#include <benchmark/benchmark.h>
#include <QApplication>
#include <QTemporaryDir>

#include "support/testmain.h"

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    if (!home.isValid())
        return 2;
    testsupport::useHome(home.path());
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
