#include "scenariofolder.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr char extension[] = ".json";
constexpr char schemaName[] = "schema";

fs::path folder()
{
    static const char anchor = 0;
    Dl_info info{};
    if (dladdr(&anchor, &info) == 0 || !info.dli_fname)
        return {};
    std::error_code error;
    const fs::path beside = fs::absolute(info.dli_fname, error).parent_path();
    const fs::path own = beside / "scenarios";
    return fs::is_directory(own, error) ? own : beside.parent_path() / "scenarios";
}

bool isPath(const std::string &nameOrPath)
{
    return nameOrPath.find('/') != std::string::npos || fs::path(nameOrPath).extension() == extension;
}

} // namespace

std::vector<std::string> scenariofolder::names()
{
    std::vector<std::string> found;
    std::error_code error;
    fs::directory_iterator entry(folder(), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path &file = entry->path();
        if (file.extension() == extension && file.stem() != schemaName)
            found.push_back(file.stem().string());
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string scenariofolder::fileOf(const std::string &nameOrPath)
{
    if (isPath(nameOrPath))
        return nameOrPath;
    const auto known = names();
    if (std::find(known.begin(), known.end(), nameOrPath) == known.end())
        return {};
    return (folder() / (nameOrPath + extension)).string();
}
