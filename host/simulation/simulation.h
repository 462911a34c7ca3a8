#pragma once

#include <optional>
#include <QString>
#include <QStringList>
#include <vector>

#include "orvexsim.h"

/// Controls the stand-in driver library through functions that are looked up by name: the host does not link
/// it, and works without it.
class Simulation
{
public:
    /// \return nothing when no library is loaded under the driver's name, or it is not the stand-in
    static std::optional<Simulation> find();

    /// Of the library.
    QString file() const;

    struct Scenario
    {
        QString name;
        QString title;
    };
    std::vector<Scenario> scenarios() const;
    /// Empty when the one that the environment names was rejected.
    QString currentScenario() const;
    /// \return empty, or why the scenario was rejected; then nothing has changed
    QString choose(const QString &scenario) const;

    QStringList faults() const;
    /// What the fault does, in a sentence of the host's language.
    QString faultText(const QString &fault) const;
    /// Nothing for a fault that does not last.
    std::optional<bool> isOn(const QString &fault) const;
    /// \return empty, or why the fault did not happen
    QString trigger(const QString &fault) const;

    /// Ids of the boards that are plugged in.
    std::vector<int> boards() const;
    bool plug(int id) const { return plug_(id) == 0; }
    bool unplug(int id) const { return unplug_(id) == 0; }

    /// Nothing when the scenario in force is no replay.
    std::optional<OrvexsimReplay> replay() const;
    // Without a replay these do nothing.
    void pauseReplay(bool isPaused) const { pauseReplay_(isPaused ? 1 : 0); }
    void stepReplay() const { stepReplay_(1); }
    /// \param position ns
    void seekReplay(qint64 position) const { seekReplay_(position); }
    void setReplayRate(double rate) const { setReplayRate_(rate); }
    void restartReplay() const { restartReplay_(); }

    /// Reports since the library was loaded.
    struct Totals
    {
        unsigned long long sent = 0;
        unsigned long long delivered = 0; ///< callbacks that returned
    };
    Totals totals() const;

private:
    explicit Simulation(void *library);
    bool isComplete() const;
    QString lastError() const;

    decltype(&orvexsim_plug) plug_;
    decltype(&orvexsim_unplug) unplug_;
    decltype(&orvexsim_boards) boards_;
    decltype(&orvexsim_totals) totals_;
    decltype(&orvexsim_scenario_count) scenarioCount_;
    decltype(&orvexsim_scenario) scenario_;
    decltype(&orvexsim_choose) choose_;
    decltype(&orvexsim_current_scenario) currentScenario_;
    decltype(&orvexsim_fault) fault_;
    decltype(&orvexsim_fault_text) faultText_;
    decltype(&orvexsim_fault_is_on) faultIsOn_;
    decltype(&orvexsim_trigger) trigger_;
    decltype(&orvexsim_last_error) lastError_;
    decltype(&orvexsim_replay) replay_;
    decltype(&orvexsim_replay_pause) pauseReplay_;
    decltype(&orvexsim_replay_step) stepReplay_;
    decltype(&orvexsim_replay_seek) seekReplay_;
    decltype(&orvexsim_replay_rate) setReplayRate_;
    decltype(&orvexsim_replay_restart) restartReplay_;
};

/// Loads the stand-in driver library from where the build or the installation put it.
/// \return empty, or why it can't be loaded
QString loadSimulator();
