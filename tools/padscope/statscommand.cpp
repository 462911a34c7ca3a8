#include "statscommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "capturefiles.h"
#include "collector.h"
#include "filters.h"
#include "options.h"
#include "progress.h"
#include "table.h"
#include "times.h"

namespace {

using capture::pcapng::Event;
using nlohmann::ordered_json;
using statistics::BoardStatistics;
using statistics::CallStatistics;
using statistics::FieldStatistics;
using statistics::SessionStatistics;
using statistics::Spread;
using statistics::TypeStatistics;

struct StatsOptions
{
    std::string file;
    std::string format = "text";
    padscope::Filters filters;
};

std::string withDecimals(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

bool isWhole(const FieldStatistics &field)
{
    return field.field->type != decoding::FieldType::Decimal;
}

/// In milliseconds; a dash where there is none.
void addSpread(std::vector<std::string> &row, const Spread &spread)
{
    for (const std::int64_t ns : {spread.minNs, spread.medianNs, spread.p99Ns, spread.maxNs})
        row.push_back(spread.count > 0 ? withDecimals(static_cast<double>(ns) / 1e6, 3) : "-");
}

void printBoard(const BoardStatistics &board)
{
    const std::string name = board.board ? "board " + std::to_string(*board.board) : "no board";
    padscope::Table types{{name, "count", "a second", "gap ms: least", "median", "p99", "greatest",
                           "jitter ms: least", "median", "p99", "greatest"}};
    padscope::Table fields{{"fields", "count", "least", "mean", "greatest"}};
    for (const TypeStatistics &type : board.types) {
        auto &row = types.emplace_back();
        row = {type.type, std::to_string(type.count), withDecimals(type.perSecond, 1)};
        addSpread(row, type.gaps);
        addSpread(row, type.jitter);
        for (const FieldStatistics &field : type.fields) {
            const int decimals = isWhole(field) ? 0 : 3;
            fields.push_back({field.field->name, std::to_string(field.count),
                              withDecimals(field.min, decimals), withDecimals(field.mean, 3),
                              withDecimals(field.max, decimals)});
        }
    }
    padscope::print(types, 4);
    if (fields.size() > 1)
        padscope::print(fields, 4);
}

void printCalls(const std::vector<CallStatistics> &calls)
{
    padscope::Table table{{"calls", "count", "returned", "ms: least", "median", "p99", "greatest"}};
    for (const CallStatistics &call : calls) {
        auto &row = table.emplace_back();
        row = {call.name, std::to_string(call.count), std::to_string(call.durations.count)};
        addSpread(row, call.durations);
    }
    if (!calls.empty())
        padscope::print(table, 4);
}

void printText(const std::string &file, const std::vector<SessionStatistics> &sessions)
{
    std::printf("%s:\n", file.c_str());
    for (const SessionStatistics &session : sessions) {
        std::printf("  session %s\n", padscope::sessionName(session.session).c_str());
        for (const BoardStatistics &board : session.boards)
            printBoard(board);
        printCalls(session.calls);
    }
}

ordered_json jsonOf(const Spread &spread)
{
    if (spread.count == 0)
        return nullptr;
    return {{"count", spread.count},
            {"least", spread.minNs},
            {"median", spread.medianNs},
            {"p99", spread.p99Ns},
            {"greatest", spread.maxNs}};
}

ordered_json jsonOf(const FieldStatistics &field)
{
    const auto number = [&field](double value) {
        return isWhole(field) ? ordered_json(static_cast<std::int64_t>(value)) : ordered_json(value);
    };
    return {{"field", field.field->name}, {"count", field.count},          {"least", number(field.min)},
            {"mean", field.mean},         {"greatest", number(field.max)}, {"unit", field.field->unit}};
}

template <typename Item>
ordered_json listOf(const std::vector<Item> &items, ordered_json (*convert)(const Item &))
{
    ordered_json list = ordered_json::array();
    for (const Item &item : items)
        list.push_back(convert(item));
    return list;
}

ordered_json jsonOf(const TypeStatistics &type)
{
    return {{"type", type.type},
            {"count", type.count},
            {"perSecond", type.perSecond},
            {"gapsNs", jsonOf(type.gaps)},
            {"jitterNs", jsonOf(type.jitter)},
            {"fields", listOf(type.fields, jsonOf)}};
}

ordered_json jsonOf(const BoardStatistics &board)
{
    return {{"board", board.board ? ordered_json(*board.board) : ordered_json()},
            {"types", listOf(board.types, jsonOf)}};
}

ordered_json jsonOf(const CallStatistics &call)
{
    return {{"call", call.name},
            {"count", call.count},
            {"returned", call.durations.count},
            {"durationsNs", jsonOf(call.durations)}};
}

ordered_json jsonOf(const SessionStatistics &session)
{
    return {{"session", padscope::sessionName(session.session)},
            {"boards", listOf(session.boards, jsonOf)},
            {"calls", listOf(session.calls, jsonOf)}};
}

void print(const StatsOptions &options, const std::string &file,
           const std::vector<SessionStatistics> &sessions)
{
    if (options.format == "text") {
        printText(file, sessions);
        return;
    }
    const ordered_json json{{"file", file}, {"sessions", listOf(sessions, jsonOf)}};
    std::printf("%s\n", json.dump(2, ' ', true, nlohmann::json::error_handler_t::replace).c_str());
}

int run(const StatsOptions &options)
{
    padscope::ignoreBrokenPipes();
    const padscope::InputFile input(options.file);
    if (!input.isOpen())
        return padscope::Usage;
    capture::RecordReader reader(input.descriptor());
    padscope::Progress progress(input.size());
    padscope::Completeness completeness;
    decoding::Times times(decoding::TimeStyle::Relative);
    statistics::Collector collector;
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next()) {
        const capture::Record &record = reader.record();
        progress.follow(reader.file().block().size);
        completeness.follow(record);
        times.follow(record);
        collector.follow(record, options.filters.take(record, times.secondsOf(record)));
    }
    progress.clear();
    const padscope::Status status = completeness.statusOfWhole(input, reader, last);
    if (status == padscope::Usage || !completeness.hasPackets())
        return status; // why is told already
    print(options, input.name(), collector.take());
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        return padscope::statusOfOutputError();
    return status;
}

} // namespace

void addStatsCommand(CLI::App &program, int &status)
{
    CLI::App *command =
        program.add_subcommand("stats", "Counts reports and calls, and tells rates, gaps, jitter and values");
    const auto options = std::make_shared<StatsOptions>();
    command->add_option("FILE", options->file, "A capture; - is standard input")->type_name("")->required();
    command->add_option("--format", options->format, "text or json")
        ->type_name("NAME")
        ->check(padscope::oneOf({"text", "json"}));
    padscope::addFilters(command, options->filters);
    command->callback([options, &status] { status = run(*options); });
}
