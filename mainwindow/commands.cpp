#include "mainwindow/qorvexgraph.h"

#include <QTabWidget>

#include "bargraph/bargraph.h"
#include "driver/orvexwrapper.h"
#include "mainwindow/qlineupdownedit.h"

namespace {

constexpr unsigned char typedCommandDebugMode = 4;

// 31 lines are written and 30 read back; reading puts each line in front, which reverses them. As designed.
constexpr int mostLinesRead = 30;
constexpr int lastLineWritten = 30;

} // namespace

void qorvexgraph::TypedCommand()
{
    const QString command = commandLine->displayText() + QLatin1Char('\r');
    // Typed while the library is being opened, it is sent after the attach that follows, and so are those
    // behind it.
    const bool isOpening = isAttaching && !hardware;
    const bool waits = isOpening || !waitingCommands.isEmpty();
    if (waits)
        waitingCommands += command;
    if (isOpening)
        attachLater();
    else if (!hardware && !waits)
        attachForCommand();
    commandLine->selectAll();
    if (!waits)
        sendTypedCommand(command);
}

void qorvexgraph::attachForCommand()
{
    attach();
    if (hardware && !deviceIds.isEmpty())
        hardware->SetDriverDebugMode(deviceIds.first(), typedCommandDebugMode, everyDebugBit);
}

void qorvexgraph::sendTypedCommand(const QString &command)
{
    if (deviceIds.isEmpty() || !hardware)
        return;
    if (command == QLatin1String(":RMM\r")) {
        if (auto *view = qobject_cast<bargraph *>(tabs->currentWidget()))
            view->resetMinMaxVoltage();
    }
    hardware->SendCommand(deviceIds.first(), command.toLatin1().constData());
}

void qorvexgraph::SendCommand(const char *command)
{
    // The ids survive a detach, which leaves no binding to send through.
    if (deviceIds.isEmpty() || !hardware)
        return;
    hardware->SendCommand(deviceIds.first(), command);
}

void qorvexgraph::loadHistory()
{
    for (int index = 0; index < mostLinesRead; ++index) {
        const QString line = settings.value(tr("history/%1").arg(index)).toString();
        if (line.isNull())
            break;
        commandLine->addToHistory(line);
    }
}

void qorvexgraph::saveHistory()
{
    const QList<QString> &lines = commandLine->historyLines();
    for (int index = 0; index < lines.size() && index <= lastLineWritten; ++index)
        settings.setValue(tr("history/%1").arg(index), lines.at(index));
}
