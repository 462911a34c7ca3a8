#include "host/display.h"

#include "host/complaint.h"

#include <cstdio>
#include <cstdlib>
#include <QApplication>

namespace {

/// What Qt has said: it leads to the abort, or is said when all went well.
QStringList &heldBack()
{
    static QStringList messages;
    return messages;
}

QString askedFor()
{
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    return platform.isEmpty() ? QStringLiteral("display ") + qEnvironmentVariable("DISPLAY")
                              : QStringLiteral("platform ") + platform;
}

void holdBack(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg)
        std::_Exit(complain(askedFor() + QStringLiteral(": cannot be opened; QT_QPA_PLATFORM=offscreen runs "
                                                        "without one")));
    heldBack() += message;
}

} // namespace

std::unique_ptr<QCoreApplication> createWidgetsApplication(int &argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QtMessageHandler before = qInstallMessageHandler(holdBack);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(before);
    for (const QString &message : qAsConst(heldBack()))
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    heldBack().clear();
    return application;
}
