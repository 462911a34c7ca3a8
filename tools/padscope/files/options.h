#pragma once

#include <CLI/CLI.hpp>
#include <map>
#include <string>
#include <vector>

/// What options take. Each says in one line what is wrong with a value.
namespace padscope {

CLI::Validator oneOf(const std::vector<std::string> &names);

/// One of the names, for an enumerator.
template <typename Enum>
void addNamed(CLI::App *command, const char *option, Enum &value,
              const std::map<std::string, Enum> &enumerators, const char *description)
{
    std::vector<std::string> names;
    for (const auto &[name, enumerator] : enumerators)
        names.push_back(name);
    const auto take = [&value, enumerators](const std::string &name) { value = enumerators.at(name); };
    command->add_option_function<std::string>(option, take, description)
        ->type_name("NAME")
        ->check(oneOf(names));
}

/// From 0 on, in decimal.
CLI::Validator wholeNumber();

/// UTF-8, at most as long as a packet holds.
/// \param what it is: "a note"
CLI::Validator markText(const std::string &what);

/// The name of a file that is not there.
/// \param extensions one of which it ends in; any for none
CLI::Validator newFile(const std::vector<std::string> &extensions = {});

/// With or without a fraction.
CLI::Validator finiteNumber();

} // namespace padscope
