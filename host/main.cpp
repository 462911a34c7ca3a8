#include "host/boardmenu.h"
#include "host/complaint.h"
#include "host/driverlibrary.h"
#include "host/hostwindow.h"
#include "host/options.h"
#include "host/pluginloading.h"
#include "host/quitsignals.h"
#include "host/reportrates.h"
#include "host/script.h"
#include "host/simulation.h"
#include "host/translation.h"
#include "host/windowmemory.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QStatusBar>
#include <QTranslator>
#include <string_view>

namespace {

bool hasArgument(int argc, char **argv, std::initializer_list<std::string_view> names)
{
    return std::any_of(argv + 1, argv + argc, [&](const char *argument) {
        return std::find(names.begin(), names.end(), argument) != names.end();
    });
}

/// Whether there is a display, or a platform was asked for by name.
bool hasDisplay(int argc, char **argv)
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || hasArgument(argc, argv, {"-platform"});
}

/// Without a display the widgets' application object would abort, even for a wrong option.
std::unique_ptr<QCoreApplication> createApplication(int &argc, char **argv)
{
    const bool onlyPrints =
        hasArgument(argc, argv, {"--list", "--list-scenarios", "--help", "-h", "--version", "-v"});
    if (onlyPrints || !hasDisplay(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    return std::make_unique<QApplication>(argc, argv);
}

int printList(const std::vector<LoadedPlugin> &plugins)
{
    for (const LoadedPlugin &plugin : plugins)
        std::fputs(qUtf8Printable(listLine(plugin)), stdout);
    return 0;
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
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return complain(QStringLiteral("no display; QT_QPA_PLATFORM=offscreen runs without one"));
    HostWindow window(plugins);
    if (simulation) {
        new BoardMenu(window, *simulation);
        window.statusBar()->addPermanentWidget(new ReportRates(*simulation));
    }
    const QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::quitRequested, &window, [&window] { quit(window); });
    Script script(window, plugins, options);
    const QString error = script.prepare();
    if (!error.isEmpty())
        return complain(error);
    // What runs by itself looks the same every time.
    if (options.isScripted())
        return show(window, script);
    QSettings settings(QStringLiteral("tendro-host"), QStringLiteral("tendro-host"));
    WindowMemory memory(window, plugins, settings);
    memory.restore(!options.needsTool());
    return show(window, script);
}

int printScenarios(const Simulation &simulation)
{
    for (const Simulation::Scenario &scenario : simulation.scenarios())
        std::printf("%s\t%s\n", qUtf8Printable(scenario.name), qUtf8Printable(scenario.title));
    return 0;
}

/// Loads the driver library that is asked for.
QString loadLibrary(const Options &options)
{
    if (!options.simulate && !options.listScenarios)
        return options.driver.isEmpty() ? QString() : loadDriver(options.driver);
    QString error = loadSimulator();
    if (error.isEmpty() && !Simulation::find())
        return QStringLiteral("the simulator is of another version than the host");
    return error;
}

QString install(QTranslator &translator, const Options &options)
{
    if (!options.translation.isEmpty())
        return installTranslation(translator, options.translation);
    installSystemTranslation(translator);
    return {};
}

int runTools(const Options &options, const std::optional<Simulation> &simulation)
{
    const QStringList folders =
        options.pluginFolders.isEmpty() ? defaultPluginFolders() : options.pluginFolders;
    const PluginScan scan = scanPlugins(folders);
    for (const QString &refusal : scan.refusals)
        complain(refusal);
    if (scan.plugins.empty())
        return complain(QStringLiteral("no plugin in ") + folders.join(QLatin1String(", ")));
    return options.list ? printList(scan.plugins) : runWindow(scan.plugins, simulation, options);
}

int run(const Options &options)
{
    QTranslator translator;
    QString error = install(translator, options);
    if (error.isEmpty())
        error = loadLibrary(options);
    const std::optional<Simulation> simulation = Simulation::find();
    if (error.isEmpty() && simulation && !options.scenario.isEmpty())
        error = simulation->choose(options.scenario);
    if (!error.isEmpty())
        return complain(error);
    if (options.listScenarios)
        return printScenarios(*simulation);
    // The simulator itself has told why it refused the one that the environment names.
    if (options.simulate && simulation->currentScenario().isEmpty())
        return badInput;
    return runTools(options, simulation);
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QCoreApplication> application = createApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tendro-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TENDRO_HOST_VERSION));

    QCommandLineParser parser;
    declareOptions(parser);
    Options options;
    const QString error = readOptions(parser, QCoreApplication::arguments(), options);
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (!error.isEmpty())
        return complain(error);
    return run(options);
}
