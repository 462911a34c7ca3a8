#include <algorithm>
#include <QDir>

#include "fuzz/fuzzing.h"
#include "scenarioreader.h"
#include "stream.h"

// An arbitrary scenario file: it is rejected in one line, or read whole, and then played.

namespace {

constexpr int playedReports = 64;

void checkError(const std::string &error, const std::string &path)
{
    fuzz::require(error.compare(0, path.size() + 2, path + ": ") == 0, "the error names the file");
    fuzz::require(error.size() > path.size() + 2, "the error says something");
    fuzz::require(std::none_of(error.begin(), error.end(), [](unsigned char c) { return c < 0x20; }),
                  "the error is one line");
}

template <typename Event>
bool areInOrder(const std::vector<Event> &events)
{
    return std::is_sorted(events.begin(), events.end(),
                          [](const Event &a, const Event &b) { return a.at < b.at; });
}

void checkLimits(const Scenario &scenario)
{
    fuzz::require(scenario.boards.size() <= 32, "no more boards than there may be");
    fuzz::require(areInOrder(scenario.events), "the library's events are in order");
    int total = 0;
    for (const BoardPlan &plan : scenario.boards) {
        total += plan.rate;
        fuzz::require(plan.rate >= 1 && plan.rate <= 10000, "a board's rate is within its range");
        fuzz::require(areInOrder(plan.events), "a board's events are in order");
    }
    fuzz::require(total <= 20000, "the rates together are within their range");
}

/// What a board sends up to its end or so many reports.
std::vector<Report> played(const BoardPlan &plan)
{
    Stream stream(plan);
    std::vector<Report> reports;
    for (int i = 0; i < playedReports; ++i)
        reports.push_back(stream.next(std::chrono::nanoseconds(std::chrono::seconds(1)) / plan.rate));
    for (const BoardEvent &event : plan.events) {
        const auto *burst = std::get_if<Burst>(&event.what);
        if (burst && burst->kind)
            reports.push_back(stream.ofKind(*burst->kind));
        if (const auto *pause = std::get_if<Pause>(&event.what))
            stream.skip(pause->duration);
    }
    return reports;
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    const QString path = QDir::home().filePath("scenario.json");
    write(path, bytes);
    std::string error;
    const std::optional<Scenario> scenario = readScenario(path.toStdString(), error);
    if (!scenario)
        return checkError(error, path.toStdString());
    require(error.empty(), "there is no error in what is read");
    checkLimits(*scenario);
    for (const BoardPlan &plan : scenario->boards)
        require(played(plan) == played(plan), "a plan gives the same reports again");
}
