#include "layoutnames.h"

#include <unordered_map>

#include "decoding.h"
#include "fields.h"
#include "recordtext.h"

namespace decoding {

namespace {

constexpr char textName[] = "text";

std::unordered_map<const reports::Layout *, std::string> newNames()
{
    std::unordered_map<const reports::Layout *, std::string> names;
    for (const reports::Layout *layout : reports::layouts)
        names[layout] = prefixOf(*layout);
    return names;
}

} // namespace

std::string_view layoutNameOf(const capture::Record &report)
{
    static const std::unordered_map<const reports::Layout *, std::string> names = newNames();
    const reports::Bytes bytes{report.payload.data, report.payload.size};
    if (reports::formOf(bytes) == reports::Form::Text)
        return textName;
    const reports::Layout *layout = reports::layoutOf(bytes);
    return layout ? std::string_view(names.at(layout)) : std::string_view();
}

std::vector<std::string> typeNames()
{
    std::vector<std::string> names = reportTypes();
    for (const reports::Layout *layout : reports::layouts)
        names.push_back(prefixOf(*layout));
    names.emplace_back(textName);
    return names;
}

bool isOfType(const capture::Record &report, std::string_view name)
{
    return name == reportTypeOf(report) || name == layoutNameOf(report);
}

} // namespace decoding
