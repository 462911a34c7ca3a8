#include <cstdio>
#include <memory>
#include <QApplication>
#include <QCommandLineParser>
#include <QRegularExpression>
#include <QSettings>
#include <QStatusBar>

#include "boardmenu.h"
#include "driverlibrary.h"
#include "hostwindow.h"
#include "options.h"
#include "pluginloading.h"
#include "printerror.h"
#include "quitsignals.h"
#include "replaymenu.h"
#include "reportrates.h"
#include "script.h"
#include "simulation.h"
#include "translation.h"
#include "windowmemory.h"

namespace {

/// Removes the arguments that QApplication handles.
/// \return empty, or which of them lacks its value, which QApplication does not report
QString takeToolkitOptions(QStringList &arguments)
{
    static const QRegularExpression alone(QStringLiteral("^--?(reverse|widgetcount|style(sheet)?=.*)$"));
    static const QRegularExpression withValue(
        QStringLiteral("^--?(platform|platformpluginpath|platformtheme|plugin|display|geometry|session|style|"
                       "stylesheet|qwindowgeometry|qwindowicon|qwindowtitle)$"));
    QStringList own;
    for (int i = 0; i < arguments.size(); ++i) {
        if (withValue.match(arguments[i]).hasMatch()) {
            if (++i == arguments.size())
                return QStringLiteral("Missing value after '%1'.").arg(arguments[i - 1]);
        } else if (!alone.match(arguments[i]).hasMatch()) {
            own += arguments[i];
        }
    }
    arguments = own;
    return {};
}

int print(const QString &text)
{
    std::fputs(qUtf8Printable(text), stdout);
    return 0;
}

/// \return the status to end with, or nothing if there is more to do than "--help" and "--version"
std::optional<int> readCommandLine(QStringList arguments, Options &options)
{
    QCommandLineParser parser;
    declareOptions(parser);
    QString error = takeToolkitOptions(arguments);
    const QString ownError = readOptions(parser, arguments, options);
    if (error.isEmpty())
        error = ownError;
    if (parser.isSet(QStringLiteral("help")))
        return print(parser.helpText());
    if (parser.isSet(QStringLiteral("version")))
        return print(QStringLiteral("tendro-host " TENDRO_HOST_VERSION "\n"));
    return error.isEmpty() ? std::nullopt : std::optional(printError(error));
}

int printList(const std::vector<LoadedPlugin> &plugins)
{
    for (const LoadedPlugin &plugin : plugins)
        print(listLine(plugin));
    return 0;
}

/// Turns status 0 into an error unless all output has been written.
int afterOutput(int status)
{
    const bool arrived = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (arrived || status != 0)
        return status;
    return printError(
        QStringLiteral("standard output: not all of it can be written; expected a place with room"));
}

int show(HostWindow &window, Script &script)
{
    window.show();
    script.start();
    const int status = QCoreApplication::exec();
    return script.failed() ? badInput : status;
}

void quit(HostWindow &window)
{
    if (window.isVisible())
        window.close();
    QCoreApplication::quit();
}

int runWindow(const std::vector<LoadedPlugin> &plugins, const std::optional<Simulation> &simulation,
              const Options &options)
{
    HostWindow window(plugins);
    if (simulation) {
        const auto *boards = new BoardMenu(window, *simulation);
        const auto *replay = new ReplayMenu(window, *simulation);
        QObject::connect(boards, &BoardMenu::scenarioChanged, replay, &ReplayMenu::update);
        window.statusBar()->addPermanentWidget(new ReportRates(*simulation));
    }
    const QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::quitRequested, &window, [&window] { quit(window); });
    Script script(window, plugins, options);
    const QString error = script.prepare();
    if (!error.isEmpty())
        return printError(error);
    // A scripted run does not depend on earlier runs.
    if (options.isScripted())
        return show(window, script);
    QSettings settings(QStringLiteral("tendro-host"), QStringLiteral("tendro-host"));
    WindowMemory memory(window, plugins, settings);
    memory.restore(!options.needsTool());
    return show(window, script);
}

int printScenarios(const Simulation &simulation)
{
    const std::vector<Simulation::Scenario> scenarios = simulation.scenarios();
    if (scenarios.empty()) {
        return printError(QStringLiteral("--list-scenarios: no scenario in a folder \"scenarios\" beside %1")
                              .arg(simulation.file()));
    }
    for (const Simulation::Scenario &scenario : scenarios)
        std::printf("%s\t%s\n", qUtf8Printable(scenario.name), qUtf8Printable(scenario.title));
    return 0;
}

/// Loads the driver library that the options name.
QString loadLibrary(const Options &options)
{
    if (!options.simulate && !options.listScenarios)
        return options.driver.isEmpty() ? QString() : loadDriver(options.driver);
    // The library would read this one first, and its errors would be irrelevant.
    if (!options.scenario.isEmpty())
        qunsetenv("ORVEXSIM_SCENARIO");
    QString error = loadSimulator();
    if (error.isEmpty() && !Simulation::find())
        return QStringLiteral("the simulator is of another version than the host");
    return error;
}

/// The tools' translation is the system's or the given one, never both.
QString translate(const Options &options)
{
    QStringList catalogues{QStringLiteral("tendro-host")};
    if (options.translation.isEmpty())
        catalogues += QStringLiteral("padscope");
    installSystemLanguage(catalogues);
    return options.translation.isEmpty() ? QString() : installTranslation(options.translation);
}

int runTools(const Options &options, const std::optional<Simulation> &simulation)
{
    const QStringList folders =
        options.pluginFolders.isEmpty() ? defaultPluginFolders() : options.pluginFolders;
    const PluginScan scan = scanPlugins(folders);
    for (const QString &error : scan.errors)
        printError(error);
    if (scan.plugins.empty())
        return printError(QStringLiteral("no plugin in ") + folders.join(QLatin1String(", ")));
    return options.list ? printList(scan.plugins) : runWindow(scan.plugins, simulation, options);
}

int run(const Options &options)
{
    QString error = translate(options);
    if (error.isEmpty())
        error = loadLibrary(options);
    const std::optional<Simulation> simulation = Simulation::find();
    if (error.isEmpty() && simulation && !options.scenario.isEmpty())
        error = simulation->choose(options.scenario);
    if (!error.isEmpty())
        return printError(error);
    if (options.listScenarios)
        return printScenarios(*simulation);
    // The simulator has printed why it rejected the one that the environment names.
    if (options.simulate && simulation->currentScenario().isEmpty())
        return badInput;
    return runTools(options, simulation);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("tendro-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TENDRO_HOST_VERSION));
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);

    // Without a display QApplication would abort, even for a wrong option.
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    Options options;
    if (const auto status = readCommandLine(QCoreApplication::arguments(), options))
        return afterOutput(*status);
    if (!options.list && !options.listScenarios) {
        application.reset();
        application = std::make_unique<QApplication>(argc, argv);
    }
    return afterOutput(run(options));
}
