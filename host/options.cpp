#include "options.h"

#include <QCommandLineParser>

#include "paths.h"

namespace {

constexpr double maxSeconds = 86400;
constexpr int defaultTabMs = 1000;

const char secondsAllowed[] = "expected seconds from 0 to 86400";

QCommandLineOption option(const char *name, const char *description, const char *value = nullptr)
{
    return {QLatin1String(name), QLatin1String(description), value ? QLatin1String(value) : QString()};
}

QString wrongValue(const char *name, const QString &value, const QString &reason)
{
    const QString shown = value.isEmpty() ? QStringLiteral("\"\"") : value;
    return QStringLiteral("--%1 %2: %3").arg(QLatin1String(name), shown, reason);
}

std::optional<int> parseSeconds(const QString &text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !(seconds >= 0 && seconds <= maxSeconds))
        return {};
    return qRound(seconds * 1000);
}

/// CAPTION or CAPTION=SECONDS; the last equals sign counts.
std::optional<TabStop> parseTab(const QString &text)
{
    const int equals = text.lastIndexOf(QLatin1Char('='));
    if (equals < 0)
        return TabStop{text, defaultTabMs};
    const std::optional<int> duration = parseSeconds(text.mid(equals + 1));
    if (!duration)
        return {};
    return TabStop{text.left(equals), *duration};
}

QString readTimes(const QCommandLineParser &parser, Options &options)
{
    const QStringList tabs = parser.values(QStringLiteral("tab"));
    for (const QString &text : tabs) {
        const std::optional<TabStop> stop = parseTab(text);
        if (!stop)
            return wrongValue("tab", text, QLatin1String(secondsAllowed) + QStringLiteral(" after \"=\""));
        options.tabs.push_back(*stop);
    }
    if (!parser.isSet(QStringLiteral("for")))
        return {};
    const QString duration = parser.value(QStringLiteral("for"));
    options.closeAfterMs = parseSeconds(duration);
    return options.closeAfterMs ? QString() : wrongValue("for", duration, QLatin1String(secondsAllowed));
}

/// The value of a file option. An empty one is an error, like a missing file.
QString readFile(const QCommandLineParser &parser, const char *name, QString &file)
{
    if (!parser.isSet(QLatin1String(name)))
        return {};
    file = parser.value(QLatin1String(name));
    const QString reason = reasonAgainstFile(file);
    return reason.isEmpty() ? QString() : wrongValue(name, file, reason);
}

QString readFolders(const QCommandLineParser &parser, Options &options)
{
    options.pluginFolders = parser.values(QStringLiteral("plugins"));
    for (const QString &folder : qAsConst(options.pluginFolders)) {
        const QString reason = reasonAgainstFolder(folder);
        if (!reason.isEmpty())
            return wrongValue("plugins", folder, reason);
    }
    options.snapshotFolder = parser.value(QStringLiteral("snapshot"));
    if (parser.isSet(QStringLiteral("snapshot")) && options.snapshotFolder.isEmpty())
        return wrongValue("snapshot", {}, QStringLiteral("expected a folder"));
    return {};
}

/// The parser has no optional values, so a "--simulate" without one gets an empty one.
QStringList withScenario(QStringList arguments)
{
    for (int i = 1; i < arguments.size(); ++i) {
        if (arguments[i] != QLatin1String("--simulate"))
            continue;
        const bool hasValue = i + 1 < arguments.size() && !arguments[i + 1].startsWith(QLatin1Char('-'));
        arguments[i] += QLatin1Char('=') + (hasValue ? arguments.takeAt(i + 1) : QString());
    }
    return arguments;
}

QString readSimulation(const QCommandLineParser &parser, Options &options)
{
    options.simulate = parser.isSet(QStringLiteral("simulate"));
    options.scenario = parser.value(QStringLiteral("simulate"));
    options.listScenarios = parser.isSet(QStringLiteral("list-scenarios"));
    if (options.simulate && parser.isSet(QStringLiteral("driver")))
        return QStringLiteral("--simulate and --driver: expected one of them at most");
    return {};
}

} // namespace

bool Options::needsTool() const
{
    return !openId.isEmpty() || !typedLines.isEmpty() || !tabs.empty() || !snapshotFolder.isEmpty() || rows;
}

bool Options::isScripted() const
{
    return !tabs.empty() || closeAfterMs || !snapshotFolder.isEmpty() || rows;
}

void declareOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("A stand-in host application: loads diagnostic tools and shows them.\n"
                       "It opens a tool, types, shows tabs, waits, prints rows, takes snapshots and\n"
                       "closes, always in this order. What acts on a tool opens the first one when\n"
                       "no --open is given.\n\n"
                       "Exit status: 0 when all that was asked for is done; 2 when an option, a file\n"
                       "or a scenario cannot be used, or output cannot be written, with a\n"
                       "line on standard error that says which and why."));
    parser.addVersionOption();
    parser.addOptions({
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and exit.")},
        option("plugins", "Scan this folder instead of the default ones (repeatable).", "DIR"),
        option("list", "Print id, category, version and file of each tool, tab-separated, and exit."),
        option("open", "Open the tool with this id.", "ID"),
        option("driver", "Load this driver library first, so that the tool finds it.", "FILE"),
        option("simulate",
               "Load the simulator as the driver library; with a name or a file, choose a scenario.",
               "[SCENARIO]"),
        option("list-scenarios", "Print name and title of each scenario, tab-separated, and exit."),
        option("type", "Type this into the tool's line edit, then Return (repeatable).", "TEXT"),
        option("tab",
               "Show the tab with this caption, shown or untranslated, for this time, 1 second by default "
               "(repeatable).",
               "CAPTION[=SECONDS]"),
        option("for", "Close after this time; without it, close after the last --tab, if any.", "SECONDS"),
        option("rows", "Print the rows of the tool's item views before it closes."),
        option("snapshot", "Save a PNG picture of each tab here before the tool closes.", "DIR"),
        option("translation", "Show the tools in this translation (.qm file), not in the system's language.",
               "FILE"),
    });
}

QString readOptions(QCommandLineParser &parser, const QStringList &arguments, Options &options)
{
    if (!parser.parse(withScenario(arguments)))
        return parser.errorText();
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("Unexpected argument '%1'.").arg(parser.positionalArguments().constFirst());

    options.list = parser.isSet(QStringLiteral("list"));
    options.openId = parser.value(QStringLiteral("open"));
    options.typedLines = parser.values(QStringLiteral("type"));
    options.rows = parser.isSet(QStringLiteral("rows"));

    QString error = readTimes(parser, options);
    if (error.isEmpty())
        error = readFolders(parser, options);
    if (error.isEmpty())
        error = readSimulation(parser, options);
    if (error.isEmpty())
        error = readFile(parser, "driver", options.driver);
    if (error.isEmpty())
        error = readFile(parser, "translation", options.translation);
    return error;
}
