// The tool in the host's window on a real display, with the simulator as its driver library. What an eye
// would see, where a mouse would click, and the calls that the simulator got, a line each, are in a file that
// is replaced whenever one of these changes:
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

QString place(const char *name, const QWidget &widget, QPoint position)
{
    const QPoint global = widget.mapToGlobal(position);
    return QString("at %1 %2 %3").arg(name).arg(global.x()).arg(global.y());
}

QString stateOf(const HostWindow &window, QWidget &tool, const SimulatedLibrary &simulator)
{
    const QTabWidget &tabs = *tabsOf(tool);
    const QLineEdit &line = *lineEditOf(tool);
    const auto &slider = *tabs.currentWidget()->findChild<QSlider *>();
    const auto &box = *tabs.currentWidget()->findChild<QCheckBox *>();
    QStringList lines{
        "status " + tool.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly)->text(),
        "tab " + tabs.tabText(tabs.currentIndex()),
        "line " + line.text(),
        QString("slider %1").arg(slider.value()),
        QString("minimised %1").arg(int(window.isMinimized())),
        place("line", line, line.rect().center()),
        place("slider", slider, slider.rect().center()),
        place("box", box, QPoint(8, box.height() / 2)),
        place("monitor", *tabs.tabBar(), tabs.tabBar()->tabRect(1).center()),
    };
    for (const std::string &call : simulator.callsFrom(0))
        lines += "call " + QString::fromStdString(call);
    return lines.join('\n') + '\n';
}

} // namespace

int main(int argc, char **argv)
{
    const SimulatedLibrary simulator;
    const QApplication application(argc, argv);
    const PluginScan scan = scanPlugins({QApplication::arguments().at(1)});
    HostWindow window(scan.plugins);
    QWidget &tool = *window.openTool(scan.plugins.front());
    window.resize(1000, 600);
    window.show();
    QString written;
    const auto write = [&] {
        const QString now = stateOf(window, tool, simulator);
        QSaveFile file(QApplication::arguments().at(2));
        if (now != written && file.open(QIODevice::WriteOnly) && file.write(now.toUtf8()) > 0 &&
            file.commit())
            written = now;
    };
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, write);
    timer.start(lookMs);
    const int result = QApplication::exec();
    // The last calls are those of the detach.
    write();
    return result;
}
