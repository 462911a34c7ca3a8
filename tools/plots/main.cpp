#include <algorithm>
#include <iterator>
#include <QApplication>
#include <QFile>
#include <QLocale>

#include "escaping.h"
#include "newfile.h"
#include "output.h"
#include "page.h"

namespace {

using plots::What;

struct WhatName
{
    const char *name;
    What what;
};

constexpr WhatName whatNames[] = {{"path", What::Path},
                                  {"signals", What::Signals},
                                  {"quality", What::Quality},
                                  {"voltage", What::Voltage},
                                  {"rates", What::Rates}};

int fail(const QString &line, padscope::Status status)
{
    padscope::printError(line.toStdString());
    return status;
}

int save(const QString &path, const QByteArray &bytes, padscope::Status status)
{
    padscope::NewFile file(QFile::encodeName(path).toStdString(), padscope::NewFile::Access::Owner);
    file.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (file.finish())
        return status;
    return fail(path + QStringLiteral(": ") + QString::fromStdString(file.error()), padscope::Failed);
}

/// What is wrong with others has been told.
bool canBeShown(padscope::Status status, const plots::Contents &contents)
{
    return status != padscope::Usage && !contents.survey.overview().sessions().empty();
}

int report(const std::string &file, const QString &output)
{
    plots::CaptureReading reading(file);
    plots::Contents contents;
    const padscope::Status status = reading.survey(contents, true);
    if (!canBeShown(status, contents))
        return status;
    plots::Pictures pictures(contents.survey, plots::columnsOf(plots::Format::Svg));
    reading.draw(pictures);
    return save(output, pageOf(contents, pictures), status);
}

/// Without folders and control characters.
QString titleOf(const WhatName &wanted, const std::string &name)
{
    std::string title = std::string(wanted.name) + " of ";
    decoding::appendEscaped(title, name.substr(name.rfind('/') + 1));
    return QString::fromStdString(title);
}

plots::Format formatOf(const QString &output)
{
    if (output.endsWith(QStringLiteral(".png")))
        return plots::Format::Png;
    return output.endsWith(QStringLiteral(".pdf")) ? plots::Format::Pdf : plots::Format::Svg;
}

int plot(const std::string &file, const WhatName &wanted, const QString &output)
{
    plots::CaptureReading reading(file);
    plots::Contents contents;
    const padscope::Status status = reading.survey(contents, false);
    if (!canBeShown(status, contents))
        return status;
    const plots::Format format = formatOf(output);
    plots::Pictures pictures(contents.survey, plots::columnsOf(format));
    reading.draw(pictures);
    const std::vector<plots::Chart> charts = pictures.allCharts(wanted.what);
    const QString name = QString::fromStdString(contents.name);
    const QString what = QString::fromUtf8(wanted.name);
    if (charts.empty())
        return fail(QStringLiteral("%1: no %2 in it").arg(name, what), padscope::Failed);
    const QByteArray bytes = pictureOf(charts, format, titleOf(wanted, contents.name));
    if (bytes.isEmpty())
        return fail(QStringLiteral("%1: %2 pictures are too high for a PNG; .svg and .pdf have room")
                        .arg(output)
                        .arg(charts.size()),
                    padscope::Failed);
    return save(output, bytes, status);
}

} // namespace

/// Started by padscope, which has checked the arguments: "report FILE OUT" or "plot FILE WHAT OUT".
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What Qt remarks on the machine is no concern of the user's.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QLocale::setDefault(QLocale::c());
    const QApplication application(argc, argv);
    QApplication::setFont(plots::textFont());
    const QStringList arguments = QCoreApplication::arguments();
    const QString verb = arguments.value(1);
    const std::string file = QFile::encodeName(arguments.value(2)).toStdString();
    if (verb == QStringLiteral("report") && arguments.size() == 4)
        return report(file, arguments[3]);
    const auto wanted = std::find_if(std::begin(whatNames), std::end(whatNames), [&](const WhatName &entry) {
        return arguments.value(3) == QString::fromUtf8(entry.name);
    });
    if (verb == QStringLiteral("plot") && arguments.size() == 5 && wanted != std::end(whatNames))
        return plot(file, *wanted, arguments[4]);
    return fail(QStringLiteral("padscope report and padscope plot start this program"), padscope::Usage);
}
