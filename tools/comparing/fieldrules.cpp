#include "fieldrules.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "field.h"
#include "fields.h"
#include "layoutnames.h"

namespace comparing {

namespace {

constexpr const reports::Field *headerFields[FieldRules::headerSize] = {
    &reports::reportLength, &reports::reportType, &reports::reportSubType};
constexpr double ignored = std::numeric_limits<double>::infinity();

bool isNumeric(std::size_t field)
{
    if (field >= decoding::allFields().size())
        return true;
    const decoding::FieldType type = decoding::allFields()[field].type;
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
    for (std::size_t byte = 0; byte < FieldRules::headerSize; ++byte) {
        if (name == FieldRules::headerName(byte))
            found.push_back(FieldRules::headerField(byte));
    }
    return found;
}

} // namespace

FieldRules::FieldRules()
    : limits(decoding::allFields().size() + headerSize)
{
}

std::size_t FieldRules::headerField(std::size_t byte)
{
    return decoding::allFields().size() + byte;
}

const char *FieldRules::headerName(std::size_t byte)
{
    return headerFields[byte]->name;
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
        if (!isNumeric(field))
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
