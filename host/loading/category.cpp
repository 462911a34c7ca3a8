#include "category.h"

#include <limits>
#include <tuple>

Category parseCategory(const QString &path)
{
    bool isNumber = false;
    const int number = path.section(QLatin1Char('/'), 0, 0).toInt(&isNumber);
    const QString group = path.section(QLatin1Char('/'), 1, 1);
    return {isNumber ? number : std::numeric_limits<int>::max(),
            group.isEmpty() ? QStringLiteral("other") : group, path.section(QLatin1Char('/'), 2)};
}

bool operator<(const Category &left, const Category &right)
{
    return std::tie(left.number, left.group, left.key) < std::tie(right.number, right.group, right.key);
}
