#include "options.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "payloads.h"
#include "utf8.h"

namespace padscope {

CLI::Validator oneOf(const std::vector<std::string> &names)
{
    const auto check = [names](const std::string &text) {
        const bool isFound = std::find(names.begin(), names.end(), text) != names.end();
        return isFound ? std::string() : text + " is none of " + CLI::detail::join(names, ", ");
    };
    return {check, ""};
}

CLI::Validator wholeNumber()
{
    const auto check = [](std::string &text) -> std::string {
        if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
            return text + " is no whole number";
        // With a zero in front it would be octal.
        text.erase(0, std::min(text.find_first_not_of('0'), text.size() - 1));
        return {};
    };
    return {check, ""};
}

CLI::Validator markText(const std::string &what)
{
    const auto check = [what](const std::string &text) {
        if (text.size() > capture::maxReportLength)
            return what + " has at most " + std::to_string(capture::maxReportLength) + " bytes";
        return marking::isUtf8(text) ? std::string() : what + " is UTF-8";
    };
    return {check, ""};
}

CLI::Validator newFile(const std::vector<std::string> &extensions)
{
    const auto check = [extensions](const std::string &name) {
        const std::filesystem::path path = name;
        const bool isKnown = extensions.empty() || std::find(extensions.begin(), extensions.end(),
                                                             path.extension().string()) != extensions.end();
        std::error_code error;
        if (!isKnown)
            return name + " ends in none of " + CLI::detail::join(extensions, ", ");
        if (std::filesystem::exists(std::filesystem::symlink_status(path, error)))
            return name + " exists, and is not overwritten";
        return std::string();
    };
    return {check, ""};
}

CLI::Validator finiteNumber()
{
    const auto check = [](const std::string &text) {
        double number = 0;
        const bool isFinite = CLI::detail::lexical_cast(text, number) && std::isfinite(number);
        return isFinite ? std::string() : text + " is no number";
    };
    return {check, ""};
}

} // namespace padscope
