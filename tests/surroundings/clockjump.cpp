// Takes reports in before and after the clock jumps, and prints how many have been kept after each. The clock
// is that of a file which the clock's library reads at every look.
//   clockjump FILE SECONDS SECONDS        since 1970, before and after

#include <cstdio>
#include <QApplication>
#include <QFile>
#include <QSignalSpy>

#include "support/driverlibrary.h"
#include "support/testmain.h"
#include "support/toolwindow.h"

namespace {

void setClock(const QString &path, const QString &seconds)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("@" + seconds.toLatin1() + "\n") < 0)
        qFatal("the clock cannot be set");
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QApplication> application = testsupport::newApplication(argc, argv);
    const QStringList arguments = QApplication::arguments();
    setClock(arguments.at(1), arguments.at(2));
    const DriverLibrary library("complete", {1001});
    ToolWindow tool;
    tool.window.AttachHardware();
    tool.monitorTab->LogToFile(true);
    std::printf("kept");
    QSignalSpy kept(&tool.window, &qorvexgraph::DataReceived);
    const auto receive = [&](const char *hexadecimal) {
        library.deliver(1001, hex(hexadecimal));
        std::printf(" %d", kept.count());
    };
    receive("03 32 41");
    tool.monitorTab->AddData("before", QString());
    setClock(arguments.at(1), arguments.at(3));
    receive("03 a4 01");
    receive("03 32 42");
    // Longer than the rate limit of 50 ms, which real time makes pass.
    QTest::qSleep(200);
    receive("03 a4 02");
    QTest::qSleep(200);
    receive("03 a4 03");
    tool.monitorTab->AddData("after", QString());
    std::puts("");
    tool.window.close();
    return 0;
}
