#include "filters.h"

#include <algorithm>
#include <CLI/CLI.hpp>

#include "layoutnames.h"
#include "options.h"

namespace padscope {

namespace {

std::vector<std::string> kindNames()
{
    return {
#define NAME(name, text, number) text,
        CAPTURE_KINDS(NAME)
#undef NAME
    };
}

template <typename Value, typename Wanted>
bool isAmong(const std::vector<Wanted> &wanted, const Value &value)
{
    return std::find(wanted.begin(), wanted.end(), value) != wanted.end();
}

bool isOfKind(const Filters &filters, const capture::Record &record)
{
    const char *name = nameOf(record.header.kindOf());
    return filters.kinds.empty() || (name && isAmong(filters.kinds, name));
}

bool isOfType(const Filters &filters, const capture::Record &record)
{
    const bool isReport = record.header.kindOf() == capture::Kind::Report;
    const auto isItsType = [&record](const std::string &name) { return decoding::isOfType(record, name); };
    return filters.types.empty() ||
           (isReport && std::any_of(filters.types.begin(), filters.types.end(), isItsType));
}

bool isOfBoard(const Filters &filters, const capture::Record &record)
{
    return filters.boards.empty() ||
           (record.header.has(capture::BoardIsValid) && isAmong(filters.boards, record.header.board));
}

/// An option that may be given several times.
template <typename Value>
CLI::Option *addRepeatable(CLI::App *command, const char *name, std::vector<Value> &values,
                           const char *description)
{
    return command->add_option(name, values, description)->allow_extra_args(false);
}

} // namespace

bool Filters::take(const capture::Record &record, double seconds) const
{
    return seconds >= from && seconds < to && isOfBoard(*this, record) && isOfKind(*this, record) &&
           isOfType(*this, record);
}

void addFilters(CLI::App *command, Filters &filters)
{
    addRepeatable(command, "--board", filters.boards, "Only this board (repeatable)")->type_name("ID");
    addRepeatable(command, "--type", filters.types,
                  "Only reports of this type, such as SignalReport, signal1 or unknown (repeatable)")
        ->type_name("NAME")
        ->check(oneOf(decoding::typeNames()));
    command->add_option("--from", filters.from, "From this second on, counted from the first packet")
        ->type_name("S")
        ->check(finiteNumber());
    command->add_option("--to", filters.to, "Before this second")->type_name("S")->check(finiteNumber());
}

void addKindFilter(CLI::App *command, Filters &filters)
{
    addRepeatable(command, "--kind", filters.kinds,
                  "Only packets of this kind, such as report or call (repeatable)")
        ->type_name("NAME")
        ->check(oneOf(kindNames()));
}

} // namespace padscope
