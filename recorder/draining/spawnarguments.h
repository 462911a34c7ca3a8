#pragma once

#include <string>
#include <vector>

namespace recorder {

/// What posix_spawn() and execve() take, of texts that outlive it: their pointers, and null behind the last.
inline std::vector<char *> pointersTo(const std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    for (const std::string &text : texts)
        pointers.push_back(const_cast<char *>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace recorder
