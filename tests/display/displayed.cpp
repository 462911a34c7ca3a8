// The tool in the host's window on a real display, with the simulator as its driver library. It writes what
// an eye would see, where a mouse would click, and the calls that the simulator got, to a file that is
// replaced whenever one of these changes:
//   displayed PLUGINS STATE

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSaveFile>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include "hostwindow.h"
#include "pluginloading.h"
#include "simulator/simulatedlibrary.h"
#include "toolparts.h"

namespace {

constexpr int lookMs = 50;

QString place(const QWidget *widget, QPoint position)
{
    const QPoint global = widget->mapToGlobal(position);
    return QStringLiteral("%1 %2").arg(global.x()).arg(global.y());
}

class State
{
public:
    State(const HostWindow &window_, QWidget &tool, const SimulatedLibrary &simulator_, QString path_)
        : window(window_)
        , tabs(*tabsOf(tool))
        , line(*lineEditOf(tool))
        , status(*tool.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly))
        , simulator(simulator_)
        , path(std::move(path_))
    {
    }

    void write()
    {
        look();
        const QByteArray now = text();
        if (now == last)
            return;
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(now) == now.size() && file.commit())
            last = now;
    }

private:
    void look()
    {
        const auto *slider = tabs.currentWidget()->findChild<QSlider *>();
        const auto *box = tabs.currentWidget()->findChild<QCheckBox *>();
        seen = QStringList{
            "status " + status.text(),
            "tab " + tabs.tabText(tabs.currentIndex()),
            "line " + line.text(),
            QStringLiteral("slider %1").arg(slider->value()),
            QStringLiteral("minimised %1").arg(int(window.isMinimized())),
            "at line " + place(&line, line.rect().center()),
            "at slider " + place(slider, slider->rect().center()),
            "at box " + place(box, QPoint(8, box->height() / 2)),
        };
        for (int i = 0; i < tabs.count(); ++i)
            seen += "at " + tabs.tabText(i) + " " + place(tabs.tabBar(), tabs.tabBar()->tabRect(i).center());
    }

    QByteArray text() const
    {
        QString all = seen.join('\n') + '\n';
        for (const std::string &call : simulator.callsFrom(0))
            all += "call " + QString::fromStdString(call) + '\n';
        return all.toUtf8();
    }

    const HostWindow &window;
    const QTabWidget &tabs;
    const QLineEdit &line;
    const QLabel &status;
    const SimulatedLibrary &simulator;
    const QString path;
    QStringList seen;
    QByteArray last;
};

} // namespace

int main(int argc, char **argv)
{
    const SimulatedLibrary simulator;
    const QApplication application(argc, argv);
    const PluginScan scan = scanPlugins({QApplication::arguments().at(1)});
    HostWindow window(scan.plugins);
    State state(window, *window.openTool(scan.plugins.front()), simulator, QApplication::arguments().at(2));
    window.resize(1000, 600);
    window.show();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&state] { state.write(); });
    timer.start(lookMs);
    const int result = QApplication::exec();
    state.write();
    return result;
}
