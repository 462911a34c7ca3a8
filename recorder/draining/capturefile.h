#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace recorder {

/// A new file that only its owner may read. It holds whole blocks whatever happens.
class CaptureFile
{
public:
    /// Overwrites nothing and follows no link in the file's place.
    explicit CaptureFile(const std::string &path);
    ~CaptureFile();

    CaptureFile(const CaptureFile &) = delete;
    CaptureFile &operator=(const CaptureFile &) = delete;

    /// Empty, or why the file could not be made, or not be written last.
    const std::string &error() const { return trouble; }
    bool isOpen() const { return file >= 0; }

    /// Writes a block whole or not at all: without room for it the file ends with the block before. Where
    /// even that fails, nothing is written any more, and readers tell that the file ends within a block.
    bool write(const std::string &block) { return write(block, {block.size()}) == 1; }
    /// Writes blocks that follow each other in one piece.
    /// \return how many of them are in the file: all, or the first ones
    std::size_t write(const std::string &blocks, const std::vector<std::size_t> &sizes);

    /// What was written last may fail only now, on a file system of another machine.
    void close();

    /// Removes the file, when it is of no use.
    void remove();

private:
    bool cutBack();

    std::string path;
    int file;
    std::uint64_t size = 0;
    bool isWhole = true;
    std::string trouble;
};

} // namespace recorder
