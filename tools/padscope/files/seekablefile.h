#pragma once

namespace padscope {

/// The bytes of a file or a pipe, which can be read again from where they began. What comes through a pipe is
/// kept in a temporary file without a name, in TMPDIR or /tmp.
class SeekableFile
{
public:
    /// \param file stays the caller's. What a pipe has is read here, to its end.
    explicit SeekableFile(int file);
    ~SeekableFile();
    SeekableFile(const SeekableFile &) = delete;
    SeekableFile &operator=(const SeekableFile &) = delete;

    /// Number of the error; 0 when there is none.
    int error() const { return lastError; }
    int descriptor() const { return copy >= 0 ? copy : original; }

private:
    int copyToTemporary();

    const int original;
    int copy = -1;
    int lastError = 0;
};

} // namespace padscope
