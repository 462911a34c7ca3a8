#pragma once

#include <string>
#include <string_view>

#include "fieldrules.h"
#include "fields.h"

namespace comparing {

/// The differences that are found between two packets. Without a text to append to, the first one suffices.
class Findings
{
public:
    Findings(const FieldRules &fieldRules, std::string *appendTo)
        : rules(fieldRules)
        , text(appendTo)
    {
    }

    bool isAny() const { return isFound; }
    bool isDone() const { return isFound && !text; }
    /// Whether fields differ, also those whose difference does not count.
    bool hasFields() const { return anyField; }

    /// \param field index in decoding::allFields()
    /// \param isInA, isInB whether the packets have it; one that is cut off is told as "none"
    void compareField(std::size_t field, const decoding::FieldValue &valueA,
                      const decoding::FieldValue &valueB, bool isInA, bool isInB);
    /// As far as both have any.
    void compareBytes(const std::string &name, std::string_view bytesA, std::string_view bytesB);

    /// Adds bytes in hexadecimal.
    void addByte(std::string_view name, std::size_t offset, int from, int to);
    void addBytes(std::string_view name, int from, int to);
    void add(std::string_view name, const std::string &from, const std::string &to);

private:
    const FieldRules &rules;
    std::string *text;
    bool isFound = false;
    bool anyField = false;
};

} // namespace comparing
