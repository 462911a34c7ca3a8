#include <cstdio>

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include "support/testmain.h"
#include "torture/packetcount.h"
#include "torture/torture.h"

namespace {

constexpr int stepsBetweenAccounts = 200;

QCommandLineParser *newParser()
{
    auto *parser = new QCommandLineParser;
    parser->setApplicationDescription("Random use of the tool, against eight threads of reports.");
    parser->addHelpOption();
    parser->addOption({"seconds", "How long.", "number", "10"});
    parser->addOption({"seed", "Gives the order of things; random when left out.", "number"});
    return parser;
}

unsigned int seedOf(const QCommandLineParser &parser)
{
    return parser.isSet("seed") ? parser.value("seed").toUInt() : std::random_device{}();
}

/// \return whether every account was right
bool run(Torture &torture, qint64 ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms) {
        for (int i = 0; i < stepsBetweenAccounts && timer.elapsed() < ms; ++i)
            torture.step();
        const QString wrong = torture.account();
        if (!wrong.isNull()) {
            std::fprintf(stderr, "after %ld steps: %s\n", torture.steps(), qPrintable(wrong));
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    testsupport::useHome(home.path());
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    const std::unique_ptr<QCommandLineParser> parser(newParser());
    parser->process(*application);
    const unsigned int seed = seedOf(*parser);
    std::fprintf(stderr, "seed %u\n", seed);
    // The steps of the spin box, and the loader's words on a library that is missing, are many.
    if (!std::freopen("/dev/null", "w", stdout))
        return 2;
    Torture torture(seed);
    const bool right = run(torture, parser->value("seconds").toLongLong() * 1000);
    std::fprintf(stderr, "%ld steps, %ld packets made, %ld freed by the tool\n", torture.steps(),
                 packetcount::created(), packetcount::freed());
    return right ? 0 : 1;
}
