#pragma once

#include <QString>

/// A tool's place in the menus, taken apart: "9/advanced/padscope" is 9, "advanced" and "padscope".
struct Category
{
    /// Leading number; the largest int when the path does not begin with a number.
    int number;
    /// Name of the menu; "other" when the path has none.
    QString group;
    /// Rest of the path.
    QString key;
};

Category parseCategory(const QString &path);

/// Smaller numbers first (2 before 10), then groups and keys by the alphabet.
bool operator<(const Category &left, const Category &right);
