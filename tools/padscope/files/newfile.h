#pragma once

#include <string>
#include <string_view>

namespace padscope {

/// A file that is there whole or not at all, and replaces no other. It is written under a temporary name in
/// its folder; without finish(), and when a signal ends the process, nothing is left of it. One at a time.
class NewFile
{
public:
    enum class Access
    {
        Owner, ///< nobody else
        Umask, ///< as of any new file
    };

    /// \param path where it will be
    NewFile(const std::string &path, Access access);
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    /// Empty, or what went wrong. Nothing is written from then on.
    const std::string &error() const { return trouble; }

    void write(std::string_view bytes);

    /// Gives the file its name. \return false when that failed, or anything before it
    bool finish();

private:
    void flush();
    void fail();
    void removeTemporary();

    const std::string path;
    std::string temporary; ///< empty where there is none
    std::string buffer;
    std::string trouble;
    int file = -1;
};

} // namespace padscope
