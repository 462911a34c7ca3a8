#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace recorder {

/// Where the blocks of a recording go.
class Output
{
public:
    Output() = default;
    virtual ~Output() = default;
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    /// Takes blocks that follow each other.
    /// \return how many of them are kept: all, or the first ones
    virtual std::size_t write(const std::string &blocks, const std::vector<std::size_t> &sizes) = 0;
    bool write(const std::string &block) { return write(block, {block.size()}) == 1; }
    /// All that is still to come is later.
    virtual void passTime(std::uint64_t /*stampNs*/) {}

    /// What was written last may fail only now, on a file system of another machine.
    virtual void close() = 0;
    /// Removes what is of no use, before it is closed.
    virtual void remove() = 0;

    /// Empty, or why a file could not be made, or not be written last.
    virtual const std::string &error() const = 0;
    /// Of the file that the error is of.
    virtual const std::string &path() const = 0;
    /// What is to be said behind the recording.
    virtual std::vector<std::string> remarks() const { return {}; }
};

} // namespace recorder
