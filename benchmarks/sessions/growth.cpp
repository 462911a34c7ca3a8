#include "inspect.h"
#include "session.h"

namespace {

constexpr int batch = 100;

/// Processor time of a report, from the callback until the event loop is idle.
double costOfReport(const Session &session, int first, int count)
{
    const QList<int> &boards = Inspect::deviceIdsOf(session.tool.window);
    const double before = processorTime();
    for (int i = 0; i < count; i += batch) {
        {
            const Sender sender([&] {
                for (int k = i; k < i + batch; ++k)
                    session.send(rawReport(first + k), boards.at(k % boards.size()));
            });
        }
        settle();
    }
    return (processorTime() - before) / count;
}

} // namespace

QJsonObject growRows(int reports)
{
    const Session session;
    QJsonObject costs;
    int sent = 0;
    for (int upTo = 1000; upTo <= reports; upTo *= 10) {
        costs[QString::number(upTo)] = costOfReport(session, sent, upTo - sent);
        sent = upTo;
    }
    return costs;
}

QJsonObject growAttaches(int attaches, int reports)
{
    const Session session(attaches);
    return {{"boards", Inspect::deviceIdsOf(session.tool.window).size()},
            {"seconds", costOfReport(session, 0, reports)}};
}
