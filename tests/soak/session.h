#pragma once

#include "hostwindow.h"
#include "pluginloading.h"
#include "soak/clicker.h"
#include "soak/resources.h"
#include "soak/sender.h"

#include <memory>
#include <optional>

/// What a session does and how long.
struct Plan
{
    QString tab = QStringLiteral("Bar Graph");
    int seconds = 60;
    int reportsPerSecond = 1000; ///< that are sent on top of the board's own
};

/// The tool in the host's window, attached to the simulated boards, clicked on while reports stream.
class Session : public QObject
{
    Q_OBJECT

public:
    /// The driver library must be loaded; the plugins must outlive the session.
    Session(const std::vector<LoadedPlugin> &plugins, const Plan &plan);

    /// \return empty, or what the tool lacks
    QString prepare();
    /// Runs for the planned time, then closes the window.
    void run();

    std::vector<double> answersMs() const { return clicker_->answers(); }
    bool gaveUp() const { return clicker_->gaveUp(); }
    /// After a sixth of the time: 10 seconds of 60.
    const Resources &early() const { return early_; }
    /// At the end of the time, while reports still stream.
    const Resources &late() const { return late_; }
    /// That the tool's callbacks took.
    unsigned long long reports() const { return reports_; }
    int pictures() const { return pictures_; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void finish();

    const std::vector<LoadedPlugin> &plugins_;
    const Plan plan_;
    HostWindow window_;
    std::unique_ptr<Clicker> clicker_;
    std::optional<Sender> sender_;
    Resources early_;
    Resources late_;
    unsigned long long reports_ = 0;
    int pictures_ = 0;
};
