// Clicks on the tool while reports stream, and tells how fast it answers and whether its memory grows.

#include "driverlibrary.h"
#include "simulation.h"
#include "soak/session.h"
#include "support/waitingpackets.h"

#include <algorithm>
#include <cstdio>
#include <QApplication>
#include <QCommandLineParser>

namespace {

int fail(const QString &reason)
{
    std::fprintf(stderr, "soak: %s\n", qUtf8Printable(reason));
    return 2;
}

QCommandLineOption option(const char *name, const char *description, const char *value,
                          const QString &initially = {})
{
    return {QLatin1String(name), QLatin1String(description), QLatin1String(value), initially};
}

void declareOptions(QCommandLineParser &parser)
{
    const Plan plan;
    parser.addHelpOption();
    parser.addOptions({
        option("plugins", "Load the tool from this folder.", "DIR"),
        option("driver", "Load this driver library, ours.", "FILE"),
        option("scenario", "Simulate this.", "SCENARIO", QStringLiteral("default")),
        option("tab", "Click in this tab.", "CAPTION", plan.tab),
        option("seconds", "Run for so long.", "SECONDS", QString::number(plan.seconds)),
        option("reports", "Send so many signal reports a second, beside what the boards send.", "COUNT",
               QString::number(plan.reportsPerSecond)),
        option("most-ms", "Fail when a click is answered later.", "MS"),
        option("most-kib", "Fail when memory grows by so much between a sixth of the time and its end.",
               "KIB"),
        {QStringLiteral("constant"),
         QStringLiteral("Fail when there are not as many open files and threads then as at its end.")},
    });
}

/// \return empty, or what stands against it
QString simulate(const QCommandLineParser &parser)
{
    const QString error = loadDriver(parser.value(QStringLiteral("driver")));
    if (!error.isEmpty())
        return error;
    const std::optional<Simulation> simulation = Simulation::find();
    return simulation ? simulation->choose(parser.value(QStringLiteral("scenario")))
                      : QStringLiteral("not the simulator");
}

Plan readPlan(const QCommandLineParser &parser)
{
    return {parser.value(QStringLiteral("tab")), parser.value(QStringLiteral("seconds")).toInt(),
            parser.value(QStringLiteral("reports")).toInt()};
}

/// The figures of a session that went through.
int report(const QCommandLineParser &parser, const Session &session)
{
    std::vector<double> answers = session.answersMs();
    if (session.gaveUp() || answers.empty())
        return fail(QStringLiteral("a click was not answered"));
    if (session.pictures() == 0)
        return fail(QStringLiteral("the view never painted"));
    std::sort(answers.begin(), answers.end());
    const double slowest = answers.back();
    const Resources early = session.early();
    const Resources late = session.late();
    const long growth = late.residentKiB - early.residentKiB;
    std::printf("%zu clicks answered: half of them within %.1f ms, all within %.1f ms\n", answers.size(),
                answers[answers.size() / 2], slowest);
    std::printf("%llu reports taken, %d pictures painted\n", session.reports(), session.pictures());
    std::printf("resident memory %ld KiB early, %ld KiB late: %+ld KiB\n", early.residentKiB,
                late.residentKiB, growth);
    std::printf("open files %d early, %d late; threads %d early, %d late\n", early.openFiles, late.openFiles,
                early.threads, late.threads);
    if (parser.isSet(QStringLiteral("most-ms")) &&
        slowest > parser.value(QStringLiteral("most-ms")).toDouble())
        return fail(QStringLiteral("a click was answered too late"));
    if (parser.isSet(QStringLiteral("most-kib")) &&
        std::abs(growth) >= parser.value(QStringLiteral("most-kib")).toLong())
        return fail(QStringLiteral("resident memory changed too much"));
    if (parser.isSet(QStringLiteral("constant")) &&
        (late.openFiles != early.openFiles || late.threads != early.threads))
        return fail(QStringLiteral("open files or threads are not constant"));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    declareOptions(parser);
    parser.process(application);
    const QString error = simulate(parser);
    if (!error.isEmpty())
        return fail(error);
    const PluginScan scan = scanPlugins({parser.value(QStringLiteral("plugins"))});
    if (scan.plugins.empty())
        return fail(QStringLiteral("no plugin"));
    Session session(scan.plugins, readPlan(parser));
    const QString lack = session.prepare();
    if (!lack.isEmpty())
        return fail(lack);
    session.run();
    return report(parser, session);
}
