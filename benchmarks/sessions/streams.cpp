#include <algorithm>
#include <QCheckBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QStandardItemModel>
#include <vector>

#include "inspect.h"
#include "session.h"

namespace {

constexpr QSize windowSize(800, 684);
constexpr int clicksPerSecond = 10;

/// Posted behind everything that waits, as late as an event can come.
void click(QWidget *widget)
{
    const QPointF at(8, widget->height() / 2.0);
    for (auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QCoreApplication::postEvent(widget, new QMouseEvent(type, at, Qt::LeftButton, held, Qt::NoModifier));
    }
}

} // namespace

QJsonObject streamRows(int perSecond, int seconds)
{
    const Session session;
    session.tool.window->resize(windowSize);
    const int count = perSecond * seconds;
    int rows = 0;
    QObject::connect(Inspect::modelOf(session.tool.rows), &QStandardItemModel::rowsInserted,
                     [&rows] { ++rows; });
    const Sender sender([&] { atRate(perSecond, count, [&](int i) { session.send(rawReport(i)); }); });
    runUntil([&] { return rows == count; });
    return {{"rows", rows}};
}

QJsonObject wakeBareWindow(int perSecond, int seconds)
{
    QWidget window;
    window.resize(windowSize);
    window.show();
    const int count = perSecond * seconds;
    int calls = 0;
    const Sender sender([&] {
        atRate(perSecond, count, [&](int) {
            QMetaObject::invokeMethod(
                &window, [&calls] { ++calls; }, Qt::QueuedConnection);
        });
    });
    runUntil([&] { return calls == count; });
    return {{"rows", calls}};
}

QJsonObject clickWhileRowsCome(int perSecond, int seconds)
{
    const Session session;
    const int count = perSecond * seconds;
    const int clicks = clicksPerSecond * seconds;
    int rows = 0;
    std::vector<double> answeredMs;
    std::vector<qint64> clicked(static_cast<std::size_t>(clicks));
    QElapsedTimer clock;
    clock.start();
    QObject::connect(Inspect::modelOf(session.tool.rows), &QStandardItemModel::rowsInserted,
                     [&rows] { ++rows; });
    QObject::connect(Inspect::logBoxOf(session.tool.rows), &QCheckBox::clicked, [&] {
        answeredMs.push_back(static_cast<double>(clock.nsecsElapsed() - clicked[answeredMs.size()]) / 1e6);
    });
    const Sender sender([&] { atRate(perSecond, count, [&](int i) { session.send(rawReport(i)); }); });
    const Sender user([&] {
        atRate(clicksPerSecond, clicks, [&](int i) {
            clicked[static_cast<std::size_t>(i)] = clock.nsecsElapsed();
            click(Inspect::logBoxOf(session.tool.rows));
        });
    });
    runUntil([&] { return rows == count && answeredMs.size() == clicked.size(); });
    std::sort(answeredMs.begin(), answeredMs.end());
    return {{"rows", rows},
            {"clicks", clicks},
            {"median", answeredMs[answeredMs.size() / 2]},
            {"longest", answeredMs.back()}};
}
