#include "display.h"

#include "complaint.h"

#include <cstdio>
#include <cstdlib>
#include <QApplication>
#include <QFile>

namespace {

/// What Qt has said: it leads to the abort, or is said when all went well.
QStringList &heldBack()
{
    static QStringList messages;
    return messages;
}

/// The value of the option "-platform", which goes before the environment.
QString platformOption(int argc, char **argv)
{
    QString platform;
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "-platform") == 0 || qstrcmp(argv[i], "--platform") == 0)
            platform = QFile::decodeName(argv[i + 1]);
    }
    return platform;
}

QString &asked()
{
    static QString platform;
    return platform;
}

QString askedFor()
{
    const QString platform = asked().isEmpty() ? qEnvironmentVariable("QT_QPA_PLATFORM") : asked();
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
    asked() = platformOption(argc, argv);
    const QtMessageHandler before = qInstallMessageHandler(holdBack);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(before);
    for (const QString &message : qAsConst(heldBack()))
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    heldBack().clear();
    return application;
}
