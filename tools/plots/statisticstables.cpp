#include "statisticstables.h"

#include "tables.h"

namespace plots {

namespace {

/// In milliseconds; a dash where nothing was measured.
void addSpread(Row &row, const statistics::Spread &spread)
{
    for (const std::int64_t ns : {spread.minNs, spread.medianNs, spread.p99Ns, spread.maxNs})
        row.push_back(spread.count > 0 ? printed("%.3f", static_cast<double>(ns) / 1e6) : "–");
}

void writeDurations(Html &html, const statistics::SessionStatistics &session)
{
    Rows rows;
    for (const statistics::CallStatistics &call : session.calls) {
        rows.push_back({call.name, std::to_string(call.count), std::to_string(call.durations.count)});
        addSpread(rows.back(), call.durations);
    }
    html.heading(4, "Durations of calls (ms)");
    writeTable(html, {"Call", "Count", "Returned", "Min", "Median", "99 %", "Max"}, {rows, rows.size()},
               "calls");
}

} // namespace

void writeStatistics(Html &html, const statistics::SessionStatistics &session)
{
    Listing gaps;
    Listing fields;
    for (const statistics::BoardStatistics &board : session.boards) {
        for (const statistics::TypeStatistics &type : board.types) {
            gaps.add([&] {
                Row row{boardName(board.board), type.type, std::to_string(type.count),
                        printed("%.1f", type.perSecond)};
                addSpread(row, type.gaps);
                addSpread(row, type.jitter);
                return row;
            });
            for (const statistics::FieldStatistics &field : type.fields)
                fields.add([&] {
                    return Row{boardName(board.board),     field.field->name,
                               field.field->unit,          std::to_string(field.count),
                               printed("%.6g", field.min), printed("%.6g", field.mean),
                               printed("%.6g", field.max)};
                });
        }
    }
    html.heading(4, "Time between reports of a type, and jitter: its difference from the median (ms)");
    writeTable(html,
               {"Board", "Type", "Count", "A second", "Min", "Median", "99 %", "Max", "Jitter min",
                "Jitter median", "Jitter 99 %", "Jitter max"},
               gaps, "types");
    html.heading(4, "Fields");
    writeTable(html, {"Board", "Field", "Unit", "Count", "Min", "Mean", "Max"}, fields, "fields");
    writeDurations(html, session);
}

} // namespace plots
