#include <cstdio>
#include <QApplication>
#include <QCommandLineParser>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "session.h"
#include "support/testmain.h"

namespace {

QJsonObject run(const QCommandLineParser &parser)
{
    const QString kind = parser.positionalArguments().value(0);
    const auto number = [&](const char *name) { return parser.value(QLatin1String(name)).toInt(); };
    if (kind == QLatin1String("stream"))
        return streamRows(number("rate"), number("seconds"));
    if (kind == QLatin1String("wake"))
        return wakeBareWindow(number("rate"), number("seconds"));
    if (kind == QLatin1String("flood"))
        return flood(number("reports"));
    if (kind == QLatin1String("clicks"))
        return clickWhileRowsCome(number("rate"), number("seconds"));
    if (kind == QLatin1String("idle"))
        return idle(parser.value(QLatin1String("show")), number("seconds"));
    if (kind == QLatin1String("rows"))
        return growRows(number("reports"));
    if (kind == QLatin1String("attaches"))
        return growAttaches(number("attaches"), number("reports"));
    return {};
}

} // namespace

/// Runs one session with the tool in a process of its own, so that the kernel accounts for it, and prints
/// what was counted and measured as one JSON object.
int main(int argc, char **argv)
{
    const QTemporaryDir home;
    if (!home.isValid())
        return 2;
    testsupport::useHome(home.path());
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument("kind", "stream, wake, flood, clicks, idle, rows or attaches");
    parser.addOption({"rate", "Reports a second.", "number", "1000"});
    parser.addOption({"seconds", "How long it lasts.", "number", "20"});
    parser.addOption({"reports", "How many are sent.", "number", "10000"});
    parser.addOption({"attaches", "How often the tool attaches.", "number", "1"});
    parser.addOption({"show", "The tab \"bars\" or \"rows\", or a \"bare\" window.", "name", "rows"});
    parser.process(application);
    const QJsonObject result = run(parser);
    if (result.isEmpty()) {
        std::fprintf(stderr, "no such kind of session; see --help\n");
        return 2;
    }
    std::printf("%s\n", QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
