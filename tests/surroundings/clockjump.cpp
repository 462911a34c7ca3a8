// Takes reports in before and after the clock jumps, and prints how many packets were queued after each. The
// clock is that of a file which the clock's library reads at every look.
//   clockjump FILE SECONDS SECONDS        since 1970, before and after

#include <cstdio>

#include <QApplication>
#include <QFile>
#include <QTest>

#include "monitor/monitorview.h"
#include "support/testmain.h"

namespace {

void setClock(const QString &path, const QString &seconds)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("@" + seconds.toLatin1() + "\n") < 0)
        qFatal("the clock cannot be set");
}

void receive(qorvexgraph &window, const QByteArray &hexadecimal)
{
    const QByteArray bytes = hex(hexadecimal);
    qorvexgraph::DataCallback(1001, reinterpret_cast<const unsigned char *>(bytes.constData()),
                              static_cast<unsigned int>(bytes.size()), &window);
    std::printf("%d ", static_cast<int>(window.packetQueue.size()));
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    const QStringList arguments = QApplication::arguments();
    setClock(arguments.at(1), arguments.at(2));
    MonitorView monitorView;
    monitorView.window.paused = false;
    monitorView.view->LogToFile(true);
    receive(monitorView.window, "03 32 41");
    monitorView.view->AddData("before", QString());
    setClock(arguments.at(1), arguments.at(3));
    receive(monitorView.window, "03 a4 01");
    receive(monitorView.window, "03 32 42");
    // Longer than the threshold of 50 ms, which real time makes pass.
    QTest::qSleep(200);
    receive(monitorView.window, "03 a4 02");
    QTest::qSleep(200);
    receive(monitorView.window, "03 a4 03");
    monitorView.view->AddData("after", QString());
    qDeleteAll(monitorView.window.packetQueue);
    monitorView.window.packetQueue.clear();
    return 0;
}
