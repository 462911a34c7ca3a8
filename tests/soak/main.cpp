// Clicks on the tool while reports stream, and tells how fast it answers and whether its memory grows.

#include <algorithm>
#include <cstdio>
#include <memory>
#include <QApplication>
#include <QCheckBox>
#include <QCommandLineParser>
#include <QDir>
#include <QEventLoop>
#include <QRegularExpression>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "driverlibrary.h"
#include "hostwindow.h"
#include "pluginloading.h"
#include "simulation.h"
#include "soak/clicker.h"
#include "support/waitingpackets.h"
#include "toolparts.h"

namespace {

/// What this process holds, as the system tells it.
struct Resources
{
    long residentKiB = 0;
    int openFiles = 0;
    int threads = 0;
};

/// "VmRSS:     12345 kB"
int statusNumber(const QString &status, const QString &key)
{
    return QRegularExpression(key + ":\\s*(\\d+)").match(status).captured(1).toInt();
}

Resources resourcesNow()
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString status = QString::fromLatin1(file.readAll());
    return {statusNumber(status, "VmRSS"),
            QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size(),
            statusNumber(status, "Threads")};
}

/// The tool in the host's window, attached to the simulated boards, clicked on while reports stream.
class Session : public QObject
{
public:
    /// The driver library must be loaded; the plugins must outlive the session.
    explicit Session(const std::vector<LoadedPlugin> &plugins)
        : plugins_(plugins)
        , window_(plugins)
    {
    }

    /// \return empty, or what the tool lacks
    QString prepare(const QString &tab);
    /// Closes the window at the end.
    void run(int seconds);
    /// Prints the figures and compares them with the bounds that the options set.
    /// \return empty, or what is out of bounds
    QString report(const QCommandLineParser &options) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const std::vector<LoadedPlugin> &plugins_;
    HostWindow window_;
    std::unique_ptr<Clicker> clicker_;
    Resources early_; ///< after a sixth of the time: 10 seconds of 60
    Resources late_;  ///< at the end of the time, while reports still stream
    unsigned long long reports_ = 0;
    int pictures_ = 0;
};

QString Session::prepare(const QString &tab)
{
    QWidget *tool = window_.openTool(plugins_.front());
    QTabWidget *tabs = tool ? tabsOf(*tool) : nullptr;
    const int index = tabs ? tabCaptions(*tabs).indexOf(tab) : -1;
    if (index < 0)
        return "no tab " + tab;
    tabs->setCurrentIndex(index);
    QWidget &view = *tabs->currentWidget();
    auto *slider = view.findChild<QSlider *>();
    auto *box = view.findChild<QCheckBox *>();
    if (!slider || !box)
        return "no slider or no check box in the tab " + tab;
    slider->setValue(slider->minimum());
    view.installEventFilter(this);
    window_.show();
    if (!QTest::qWaitForWindowActive(&window_))
        return "the window does not show";
    typeLine(*lineEditOf(*tool), "?");
    clicker_ = std::make_unique<Clicker>(*box);
    return {};
}

void Session::run(int seconds)
{
    QEventLoop loop;
    connect(clicker_.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(seconds * 1000 / 6, this, [this] { early_ = resourcesNow(); });
    QTimer::singleShot(seconds * 1000, this, [this] {
        late_ = resourcesNow();
        reports_ = Simulation::find()->totals().delivered;
        clicker_->requestInterruption();
    });
    clicker_->start();
    loop.exec();
    window_.close();
}

QString Session::report(const QCommandLineParser &options) const
{
    std::vector<double> answers = clicker_->answersMs();
    if (clicker_->gaveUp() || answers.empty())
        return "a click was not answered";
    if (pictures_ == 0)
        return "the view never painted";
    std::sort(answers.begin(), answers.end());
    const long growth = late_.residentKiB - early_.residentKiB;
    std::printf("%zu clicks answered: half of them within %.1f ms, all within %.1f ms\n", answers.size(),
                answers[answers.size() / 2], answers.back());
    std::printf("%llu reports taken, %d pictures painted\n", reports_, pictures_);
    std::printf("resident memory %ld KiB early, %ld KiB late: %+ld KiB\n", early_.residentKiB,
                late_.residentKiB, growth);
    std::printf("open files %d early, %d late; threads %d early, %d late\n", early_.openFiles,
                late_.openFiles, early_.threads, late_.threads);
    if (options.isSet("max-ms") && answers.back() > options.value("max-ms").toDouble())
        return "a click was answered too late";
    if (options.isSet("max-kib") && std::abs(growth) >= options.value("max-kib").toLong())
        return "resident memory changed too much";
    if (options.isSet("constant") && (late_.openFiles != early_.openFiles || late_.threads != early_.threads))
        return "open files or threads are not constant";
    return {};
}

bool Session::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        ++pictures_;
    return QObject::eventFilter(watched, event);
}

/// \return empty, or what went wrong
QString soak(const QCommandLineParser &options)
{
    const QString error = loadDriver(options.value("driver"));
    if (!error.isEmpty())
        return error;
    const std::optional<Simulation> simulation = Simulation::find();
    const QString rejection =
        simulation ? simulation->choose(options.value("scenario")) : "not the simulator";
    if (!rejection.isEmpty())
        return rejection;
    const PluginScan scan = scanPlugins({options.value("plugins")});
    if (scan.plugins.empty())
        return "no plugin";
    Session session(scan.plugins);
    const QString lack = session.prepare(options.value("tab"));
    if (!lack.isEmpty())
        return lack;
    session.run(options.value("seconds").toInt());
    return session.report(options);
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        {"plugins", "Load the tool from this folder.", "DIR"},
        {"driver", "Load this driver library, ours.", "FILE"},
        {"scenario", "Simulate this.", "SCENARIO", "default"},
        {"tab", "Click in this tab.", "CAPTION", "Bar Graph"},
        {"seconds", "Run for so long.", "SECONDS", "60"},
        {"max-ms", "Fail when a click is answered later.", "MS"},
        {"max-kib", "Fail when memory grows by so much between a sixth of the time and its end.", "KIB"},
        {"constant", "Fail when there are not as many open files and threads then as at its end."},
    });
    parser.process(application);
    const QString error = soak(parser);
    if (error.isEmpty())
        return 0;
    std::fprintf(stderr, "soak: %s\n", qUtf8Printable(error));
    return 2;
}
