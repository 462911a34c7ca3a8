#include <QTabWidget>

#include "orvexwrapper.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "qorvexwidget.h"

namespace {

constexpr unsigned char typedCommandDebugMode = 4;

} // namespace

void qorvexgraph::TypedCommand()
{
    const QString command = commandLine->displayText() + QLatin1Char('\r');
    // A command typed while the library is being opened waits for the attach that follows, and so do the
    // commands after it.
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
    if (auto *view = qobject_cast<qorvexwidget *>(tabs->currentWidget()))
        view->CommandTyped(command);
    hardware->SendCommand(deviceIds.first(), command.toLatin1().constData());
}

void qorvexgraph::SendCommand(const char *command)
{
    // The ids survive a detach, which leaves no binding to send through.
    if (deviceIds.isEmpty() || !hardware)
        return;
    hardware->SendCommand(deviceIds.first(), command);
}
