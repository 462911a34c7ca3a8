#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "html.h"
#include "listing.h"

namespace plots {

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

/// Rows of a table. Those that are not shown are counted, and not made.
struct Listing
{
    Rows rows;
    std::uint64_t count = 0;

    template <typename MakeRow>
    void add(MakeRow makeRow)
    {
        if (count++ < maxListed)
            rows.push_back(makeRow());
    }
};

/// \param what the rows are, in the plural, for the line that counts those that are not shown
void writeTable(Html &html, const Row &head, const Listing &listing, const std::string &what);
/// Tells how many are not shown, if any.
void writeRest(Html &html, const std::string &what, std::uint64_t count);

/// \param format of printf, for one number
std::string printed(const char *format, double number);
std::string boardName(const std::optional<std::int32_t> &id);

} // namespace plots
