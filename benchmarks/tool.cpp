#include "tool.h"

#include <QCoreApplication>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimerEvent>
#include <QTreeView>

#include "inspect.h"
#include "layouts.h"

Tool::Tool()
    : window(new qorvexgraph)
    , rows(Inspect::rowsOf(window))
    , bars(Inspect::barsOf(window))
{
}

Tool::~Tool()
{
    Inspect::forgetPacket(rows);
    delete window;
}

void Tool::show(QWidget *tab)
{
    Inspect::tabsOf(window)->setCurrentWidget(tab);
    window->resize(window->sizeHint());
    window->show();
    settle();
}

void Tool::rest()
{
    Inspect::forgetFrame(rows);
}

void Tool::endFrame()
{
    Inspect::endFrame(rows);
    settle();
}

QByteArray positionReport(int number)
{
    QByteArray report(31, 0);
    auto *bytes = reinterpret_cast<unsigned char *>(report.data());
    write(reports::reportLength, 31, bytes);
    write(reports::reportType, reports::PositionReport, bytes);
    write(reports::position["quality"], 900 + number % 90, bytes);
    write(reports::position["x"], 12000 + 7 * number, bytes);
    write(reports::position["y"], -8000 + 5 * number, bytes);
    write(reports::position["fineX"], number % 4096, bytes);
    write(reports::position["fineY"], number % 2048, bytes);
    return report;
}

QByteArray rawReport(int number)
{
    QByteArray report = QByteArray(2, 0) + QByteArray::number(number).rightJustified(14, '.', true);
    report[0] = static_cast<char>(report.size());
    report[1] = 33;
    return report;
}

_DataPacket packetOf(const QByteArray &report)
{
    return {report, static_cast<quint32>(report.size()),
            qChecksum(report.constData(), static_cast<uint>(report.size())), 1001, QTime(12, 0)};
}

QStringList rowTexts(QByteArray (*report)(int), int count)
{
    Tool tool;
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        _DataPacket packet = packetOf(report(i));
        tool.rows->Display(&packet);
        const QStandardItemModel *model = Inspect::modelOf(tool.rows);
        texts.append(model->item(model->rowCount() - 1)->text());
    }
    return texts;
}

void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}
