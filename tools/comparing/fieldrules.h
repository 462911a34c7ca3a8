#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace comparing {

/// Which differences of fields don't count. Fields go by the names of decoding::allFields(), of which those
/// of reports and calls, and a call's result, are compared; "yFine60" is each "signal1.yFine60" and the like.
/// The first three bytes of a report, which are in no layout, have fields of their own.
class FieldRules
{
public:
    enum class Outcome
    {
        Taken,
        UnknownField,
        NotNumeric,
    };

    FieldRules();

    /// Bytes of a report that begins with length, type and sub-type.
    static constexpr std::size_t headerSize = 3;
    /// Index of the field of such a byte, behind those of decoding::allFields(). \pre byte < headerSize
    static std::size_t headerField(std::size_t byte);
    /// "reportLength", "reportType" or "reportSubType"
    static const char *headerName(std::size_t byte);

    Outcome ignore(const std::string &name);
    /// Values that differ by at most `limit`, in the field's unit, are equal. \pre limit >= 0
    Outcome tolerate(const std::string &name, double limit);

    bool isEmpty() const { return !hasRules; }
    /// \param field index in decoding::allFields(), or headerField()
    bool hasRule(std::size_t field) const { return limits[field] > 0; }
    bool isIgnored(std::size_t field) const;
    bool areEqual(std::size_t field, double a, double b) const;

private:
    std::vector<double> limits; ///< by field; 0 without a rule, infinite for one that is ignored
    bool hasRules = false;
};

} // namespace comparing
