#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "fields.h"

namespace decoding {

/// Where the fields of each table begin in the list of all.
struct Index
{
    std::vector<FieldInfo> fields;
    std::unordered_map<const reports::Layout *, std::size_t> layouts;
    std::unordered_map<std::string, std::size_t> arguments;
    std::size_t characters = 0;
    std::size_t payloads = 0;
    std::size_t mark = 0;
};

const Index &index();

} // namespace decoding
