// Shows four reports in both views and prints what came of it: the rows, then the sizes of the pictures. Run
// in surroundings that a test has prepared.
//   session [width height]

#include <cstdio>

#include <QApplication>
#include <QLayout>
#include <QTabWidget>

#include "bargraph.h"
#include "monitor/monitorview.h"
#include "support/testmain.h"

namespace {

void send(MonitorView &monitorView, const char *hexadecimal, QTime time)
{
    _DataPacket packet = packetOf(hex(hexadecimal), time);
    monitorView.view->Display(&packet);
    monitorView.window.barGraphView->Display(&packet);
}

void printPictures(qorvexgraph &window)
{
    for (int tab = 0; tab < window.tabs->count(); ++tab) {
        window.tabs->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        const QPixmap picture = window.grab();
        std::printf("picture %d x %d, %d%%\n", picture.width(), picture.height(),
                    qRound(picture.devicePixelRatio() * 100));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    const QStringList arguments = QApplication::arguments();
    MonitorView monitorView;
    if (arguments.size() == 3) {
        monitorView.window.layout()->setSizeConstraint(QLayout::SetNoConstraint);
        monitorView.window.resize(arguments.at(1).toInt(), arguments.at(2).toInt());
    }
    monitorView.window.show();
    monitorView.view->LogToFile(true);
    const QTime start = QTime::currentTime();
    send(monitorView,
         "28 2f 01 eeeeeeeeeeeeeeeeeeee 0300 d1ff 0001 e803 0c00 fbff 4d00 0f27 d4fe 1027 0400 5800 2efb ee",
         start.addMSecs(100));
    send(monitorView, "06 32 41 e4 0a", start.addMSecs(200));
    printPictures(monitorView.window);
    send(monitorView, "34 77 0c fa 00", start.addMSecs(300));
    printPictures(monitorView.window);
    send(monitorView, "03 c8 1b", start.addMSecs(400));
    // The bytes of the rows are Latin-1, as in the log.
    for (const QString &row : monitorView.rows())
        std::printf("%s\n", row.toLatin1().constData());
    return 0;
}
