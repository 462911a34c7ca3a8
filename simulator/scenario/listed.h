#pragma once

#include <string>

/// "a, b, c".
template <typename Words>
std::string listed(const Words &words)
{
    std::string list;
    for (const auto &word : words)
        list += (list.empty() ? "" : ", ") + std::string(word);
    return list;
}
