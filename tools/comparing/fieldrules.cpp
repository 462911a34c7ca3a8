#include "fieldrules.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "fields.h"
#include "layoutnames.h"

namespace comparing {

namespace {

constexpr double ignored = std::numeric_limits<double>::infinity();

bool isNumeric(decoding::FieldType type)
{
    return type == decoding::FieldType::Signed || type == decoding::FieldType::Unsigned ||
           type == decoding::FieldType::Decimal;
}

/// The fields that a name stands for.
std::vector<std::size_t> fieldsNamed(const std::string &name)
{
    const std::vector<std::string> names = decoding::typeNames();
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < decoding::allFields().size(); ++i) {
        const std::string &full = decoding::allFields()[i].name;
        const std::size_t dot = full.find('.');
        const std::string prefix = dot == std::string::npos ? std::string() : full.substr(0, dot);
        const bool isCompared = full == "result" || prefix == "call" ||
                                std::find(names.begin(), names.end(), prefix) != names.end();
        if (isCompared && (full == name || (!prefix.empty() && full.substr(dot + 1) == name)))
            found.push_back(i);
    }
    return found;
}

} // namespace

FieldRules::FieldRules()
    : limits(decoding::allFields().size())
{
}

FieldRules::Outcome FieldRules::ignore(const std::string &name)
{
    const std::vector<std::size_t> fields = fieldsNamed(name);
    for (const std::size_t field : fields)
        limits[field] = ignored;
    hasRules = hasRules || !fields.empty();
    return fields.empty() ? Outcome::UnknownField : Outcome::Taken;
}

FieldRules::Outcome FieldRules::tolerate(const std::string &name, double limit)
{
    const std::vector<std::size_t> fields = fieldsNamed(name);
    if (fields.empty())
        return Outcome::UnknownField;
    for (const std::size_t field : fields) {
        if (!isNumeric(decoding::allFields()[field].type))
            return Outcome::NotNumeric;
        limits[field] = std::max(limits[field], limit);
        hasRules = hasRules || limit > 0;
    }
    return Outcome::Taken;
}

bool FieldRules::isIgnored(std::size_t field) const
{
    return std::isinf(limits[field]);
}

bool FieldRules::areEqual(std::size_t field, double a, double b) const
{
    return std::abs(a - b) <= limits[field];
}

} // namespace comparing
