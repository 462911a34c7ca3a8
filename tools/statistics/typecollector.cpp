#include "typecollector.h"

#include <algorithm>

#include "decoding.h"
#include "fieldindex.h"
#include "layouts.h"
#include "spread.h"

namespace statistics {

void TypeCollector::Range::add(std::int64_t value)
{
    min = count == 0 ? value : std::min(min, value);
    max = count == 0 ? value : std::max(max, value);
    sum += value;
    ++count;
}

void TypeCollector::follow(const capture::Record &report)
{
    if (count++ == 0)
        firstNs = report.timeNs;
    else
        gapsNs.push_back(static_cast<std::int64_t>(report.timeNs - lastNs));
    lastNs = report.timeNs;
    followFields(report);
}

void TypeCollector::followFields(const capture::Record &report)
{
    const reports::Bytes bytes{report.payload.data, report.payload.size};
    const reports::Layout *layout = reports::layoutOf(bytes);
    if (!layout)
        return;
    std::vector<Range> &values = ranges[layout];
    values.resize(layout->fieldCount);
    for (std::size_t i = 0; i < layout->fieldCount; ++i) {
        const reports::Field &field = layout->fields[i];
        // What is cut off is not there.
        if (field.offset + reports::widthInBytes(field) <= bytes.length)
            values[i].add(reports::read(field, bytes));
    }
}

TypeStatistics TypeCollector::take(const std::string &name)
{
    TypeStatistics type;
    type.type = name;
    type.count = count;
    if (lastNs > firstNs)
        type.perSecond = static_cast<double>(count - 1) / (static_cast<double>(lastNs - firstNs) / 1e9);
    type.gaps = spreadOf(gapsNs);
    subtract(gapsNs, type.gaps.medianNs);
    type.jitter = spreadOf(gapsNs);
    gapsNs = {};
    addFields(type.fields);
    return type;
}

void TypeCollector::addFields(std::vector<FieldStatistics> &list) const
{
    for (const reports::Layout *layout : reports::layouts) {
        const auto found = ranges.find(layout);
        if (found == ranges.end())
            continue;
        const std::size_t first = decoding::index().layouts.at(layout);
        for (std::size_t i = 0; i < layout->fieldCount; ++i) {
            const Range &range = found->second[i];
            if (range.count == 0)
                continue;
            FieldStatistics field{&decoding::allFields()[first + i], range.count,
                                  static_cast<double>(range.min),
                                  static_cast<double>(range.sum) / static_cast<double>(range.count),
                                  static_cast<double>(range.max)};
            if (const reports::Scale *scale = layout->fields[i].scale)
                for (double *value : {&field.min, &field.mean, &field.max})
                    *value = *value * scale->factor / scale->divisor;
            list.push_back(field);
        }
    }
}

} // namespace statistics
