#include "tables.h"

#include <cstdio>

namespace plots {

void writeTable(Html &html, const Row &head, const Listing &listing, const std::string &what)
{
    if (listing.count == 0)
        html.paragraph("None.");
    if (!listing.rows.empty())
        html.table(head, listing.rows);
    writeRest(html, what, listing.count - listing.rows.size());
}

void writeRest(Html &html, const std::string &what, std::uint64_t count)
{
    if (count > 0)
        html.paragraph(std::to_string(count) + " more " + what + " are not shown.");
}

std::string printed(const char *format, double number)
{
    char text[64];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

std::string boardName(const std::optional<std::int32_t> &id)
{
    return id ? std::to_string(*id) : "none";
}

} // namespace plots
