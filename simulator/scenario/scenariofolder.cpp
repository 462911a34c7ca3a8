#include <algorithm>
#include <dlfcn.h>
#include <filesystem>

#include "scenarioreader.h"

namespace fs = std::filesystem;

namespace {

constexpr char extension[] = ".json";

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

} // namespace

std::vector<std::string> scenarioNames()
{
    std::vector<std::string> found;
    std::error_code error;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder(), error)) {
        const fs::path &file = entry.path();
        if (file.extension() == extension && file.stem() != "schema")
            found.push_back(file.stem().string());
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string scenarioFile(const std::string &nameOrPath)
{
    const fs::path ending = fs::path(nameOrPath).extension();
    if (nameOrPath.find('/') != std::string::npos || ending == extension || ending == captureExtension)
        return nameOrPath;
    const auto known = scenarioNames();
    if (std::find(known.begin(), known.end(), nameOrPath) == known.end())
        return {};
    return (folder() / (nameOrPath + extension)).string();
}
