#pragma once

#include <memory>
#include <QApplication>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTranslator>
#include <vector>

#include "boardmenu.h"
#include "hostwindow.h"
#include "pluginloading.h"
#include "replaymenu.h"
#include "reportrates.h"
#include "toolparts.h"

/// Translators, installed while this lives.
class Translators
{
public:
    ~Translators()
    {
        for (const auto &translator : installed_)
            QCoreApplication::removeTranslator(translator.get());
    }

    void install(std::unique_ptr<QTranslator> translator)
    {
        QCoreApplication::installTranslator(translator.get());
        installed_.push_back(std::move(translator));
    }

    void load(const QString &file)
    {
        auto translator = std::make_unique<QTranslator>();
        if (!translator->load(file))
            qFatal("no translation %s", qPrintable(file));
        install(std::move(translator));
    }

    /// \param language "en" for none
    void loadLanguage(const QString &language)
    {
        if (language == QLatin1String("en"))
            return;
        load(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_") + language);
        load(QStringLiteral(PADSCOPE_TRANSLATIONS "/tendro-host_") + language);
        load(QStringLiteral(PADSCOPE_TRANSLATIONS "/padscope_") + language);
    }

private:
    std::vector<std::unique_ptr<QTranslator>> installed_;
};

/// The host's window at its default size, with the tool and the simulator.
struct SpeakingHost
{
    /// \param scenario a name or a file
    explicit SpeakingHost(const QString &scenario)
    {
        const QString error = simulation.choose(scenario);
        if (!error.isEmpty())
            qFatal("%s", qPrintable(error));
        new BoardMenu(window, simulation);
        new ReplayMenu(window, simulation);
        window.statusBar()->addPermanentWidget(new ReportRates(simulation));
        open();
        // Offscreen there is less room, which the host takes into account.
        window.setFixedSize(900, 700);
        window.show();
    }

    void open()
    {
        tool = window.openTool(scan.plugins.at(0));
        tabs = tabsOf(*tool);
    }

    void type(const QString &command) const { typeLine(*lineEditOf(*tool), command); }

    const Simulation simulation = *Simulation::find();
    const PluginScan scan = scanPlugins({QStringLiteral(PADSCOPE_PLUGIN_FOLDER)});
    HostWindow window{scan.plugins};
    QWidget *tool = nullptr;
    QTabWidget *tabs = nullptr;
};
