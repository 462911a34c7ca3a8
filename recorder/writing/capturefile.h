#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "output.h"

namespace recorder {

/// A new file that only its owner may read. It holds whole blocks whatever happens.
class CaptureFile : public Output
{
public:
    /// Overwrites nothing and follows no link in the file's place.
    explicit CaptureFile(const std::string &path);
    ~CaptureFile() override;

    const std::string &error() const override { return trouble; }
    const std::string &path() const override { return filePath; }
    bool isOpen() const { return file >= 0; }

    using Output::write;
    /// Writes blocks that follow each other in one piece, each whole or not at all: without room for one the
    /// file ends with the block before. Where even that fails, nothing is written any more, and readers tell
    /// that the file ends within a block. \return how many of them are in the file: all, or the first ones
    std::size_t write(const std::string &blocks, const std::vector<std::size_t> &sizes) override;

    void close() override;
    void remove() override;

private:
    bool cutBack();

    std::string filePath;
    int file;
    std::uint64_t size = 0;
    bool isWhole = true;
    std::string trouble;
};

} // namespace recorder
