#include "simulation.h"

#include <algorithm>
#include <array>
#include <dlfcn.h>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "driverlibrary.h"
#include "entrypoints.h"

namespace {

template <typename Function>
void lookUp(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
}

/// The text of a function that truncates it to the buffer and returns its full length.
QString text(int (*function)(char *, unsigned int))
{
    const int length = function(nullptr, 0);
    QByteArray bytes(length + 1, '\0');
    function(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return QString::fromUtf8(bytes.constData());
}

} // namespace

Simulation::Simulation(void *library)
{
    lookUp(library, "orvexsim_plug", plug_);
    lookUp(library, "orvexsim_unplug", unplug_);
    lookUp(library, "orvexsim_boards", boards_);
    lookUp(library, "orvexsim_totals", totals_);
    lookUp(library, "orvexsim_scenario_count", scenarioCount_);
    lookUp(library, "orvexsim_scenario", scenario_);
    lookUp(library, "orvexsim_choose", choose_);
    lookUp(library, "orvexsim_current_scenario", currentScenario_);
    lookUp(library, "orvexsim_fault", fault_);
    lookUp(library, "orvexsim_fault_text", faultText_);
    lookUp(library, "orvexsim_fault_is_on", faultIsOn_);
    lookUp(library, "orvexsim_trigger", trigger_);
    lookUp(library, "orvexsim_last_error", lastError_);
    lookUp(library, "orvexsim_replay", replay_);
    lookUp(library, "orvexsim_replay_pause", pauseReplay_);
    lookUp(library, "orvexsim_replay_step", stepReplay_);
    lookUp(library, "orvexsim_replay_seek", seekReplay_);
    lookUp(library, "orvexsim_replay_rate", setReplayRate_);
    lookUp(library, "orvexsim_replay_restart", restartReplay_);
}

bool Simulation::isComplete() const
{
    return plug_ && unplug_ && boards_ && totals_ && scenarioCount_ && scenario_ && choose_ &&
           currentScenario_ && fault_ && faultText_ && faultIsOn_ && trigger_ && lastError_ && replay_ &&
           pauseReplay_ && stepReplay_ && seekReplay_ && setReplayRate_ && restartReplay_;
}

std::optional<Simulation> Simulation::find()
{
    void *library = dlopen(orvexLibraryName, RTLD_NOW | RTLD_NOLOAD);
    if (!library)
        return {};
    // The host's own handle keeps it loaded.
    dlclose(library);
    const Simulation simulation(library);
    return simulation.isComplete() ? std::optional(simulation) : std::nullopt;
}

QString Simulation::file() const
{
    Dl_info info = {};
    dladdr(reinterpret_cast<void *>(plug_), &info);
    return QFile::decodeName(info.dli_fname);
}

std::vector<Simulation::Scenario> Simulation::scenarios() const
{
    std::vector<Scenario> all;
    for (int index = 0; index < scenarioCount_(); ++index) {
        std::array<char, 128> name{};
        std::array<char, 512> title{};
        if (scenario_(index, name.data(), name.size(), title.data(), title.size()) == 0)
            all.push_back({QString::fromUtf8(name.data()), QString::fromUtf8(title.data())});
    }
    return all;
}

QString Simulation::currentScenario() const
{
    return text(currentScenario_);
}

QString Simulation::choose(const QString &scenario) const
{
    return choose_(QFile::encodeName(scenario).constData()) == 0 ? QString() : lastError();
}

QStringList Simulation::faults() const
{
    QStringList all;
    for (int index = 0; const char *fault = fault_(index); ++index)
        all += QString::fromUtf8(fault);
    return all;
}

QString Simulation::faultText(const QString &fault) const
{
    return QCoreApplication::translate("Fault", faultText_(fault.toUtf8().constData()));
}

std::optional<bool> Simulation::isOn(const QString &fault) const
{
    const int on = faultIsOn_(fault.toUtf8().constData());
    return on < 0 ? std::nullopt : std::optional(on == 1);
}

QString Simulation::trigger(const QString &fault) const
{
    return trigger_(fault.toUtf8().constData()) == 0 ? QString() : lastError();
}

std::vector<int> Simulation::boards() const
{
    std::vector<int> ids(static_cast<std::size_t>(boards_(nullptr, 0)));
    const int count = boards_(ids.data(), static_cast<int>(ids.size()));
    // One may have been unplugged meanwhile.
    ids.resize(std::min(ids.size(), static_cast<std::size_t>(count)));
    return ids;
}

std::optional<OrvexsimReplay> Simulation::replay() const
{
    OrvexsimReplay replay{};
    return replay_(&replay) == 0 ? std::optional(replay) : std::nullopt;
}

Simulation::Totals Simulation::totals() const
{
    Totals totals;
    totals_(&totals.sent, &totals.delivered);
    return totals;
}

QString Simulation::lastError() const
{
    return text(lastError_);
}

QString loadSimulator()
{
    const QDir program(QCoreApplication::applicationDirPath());
    QStringList files;
    for (const char *folder : {"../simulator", TENDRO_INSTALLED_SIMULATOR_DIR}) {
        files += QDir::cleanPath(
            program.filePath(QLatin1String(folder) + QLatin1Char('/') + QLatin1String(orvexLibraryName)));
        if (QFileInfo::exists(files.constLast()))
            return loadDriver(files.constLast());
    }
    return QStringLiteral("no simulator; looked for ") + files.join(QStringLiteral(" and "));
}
