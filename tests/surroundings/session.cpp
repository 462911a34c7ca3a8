// Shows four reports on both tabs. Prints the sizes of pictures of the tabs, two after the first two reports
// and two after the third, and the rows in Latin-1. Run in surroundings that a test has prepared.
//   session WIDTH HEIGHT

#include <cstdio>
#include <QApplication>
#include <QLayout>
#include <QTabWidget>

#include "support/testmain.h"
#include "support/toolwindow.h"

namespace {

void send(const ToolWindow &tool, const char *hexadecimal, QTime time)
{
    _DataPacket packet = packetOf(hex(hexadecimal), time);
    tool.monitorTab->Display(&packet);
    tool.barsTab->Display(&packet);
}

void printPictures(ToolWindow &tool)
{
    auto *tabs = tool.window.findChild<QTabWidget *>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        const QPixmap picture = tool.window.grab();
        std::printf("%d x %d, %d %%\n", picture.width(), picture.height(),
                    qRound(picture.devicePixelRatio() * 100));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    const QStringList arguments = QApplication::arguments();
    ToolWindow tool;
    tool.window.layout()->setSizeConstraint(QLayout::SetNoConstraint);
    tool.window.resize(arguments.at(1).toInt(), arguments.at(2).toInt());
    tool.window.show();
    tool.monitorTab->LogToFile(true);
    const QTime start = QTime::currentTime();
    send(tool,
         "28 2f 01 eeeeeeeeeeeeeeeeeeee 0300 d1ff 0001 e803 0c00 fbff 4d00 0f27 d4fe 1027 0400 5800 2efb ee",
         start.addMSecs(100));
    send(tool, "06 32 41 e4 0a", start.addMSecs(200));
    printPictures(tool);
    send(tool, "34 77 0c fa 00", start.addMSecs(300));
    printPictures(tool);
    send(tool, "03 c8 1b", start.addMSecs(400));
    for (const QString &row : tool.rows())
        std::printf("[%s]\n", row.toLatin1().constData());
    return 0;
}
