#include "capturefiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace padscope {

InputFile::InputFile(const std::string &path)
    : shown(path == "-" ? "standard input" : path)
    , file(path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (file < 0)
        printError(shown + ": " + std::strerror(errno));
}

InputFile::~InputFile()
{
    if (file >= 0)
        close(file);
}

void Completeness::follow(const capture::Record &record)
{
    hasEnd = record.header.kindOf() == capture::Kind::End;
    hasLost = hasLost || record.header.lost > 0;
}

Status Completeness::status(const InputFile &input, const capture::RecordReader &reader,
                            capture::pcapng::Event last) const
{
    if (last == capture::pcapng::Event::Damage) {
        const capture::pcapng::Damage &damage = reader.damage();
        printError(input.name() + ": byte " + std::to_string(damage.offset) + ": " + damage.reason);
        return Failed;
    }
    return hasEnd && !hasLost && !reader.file().endsWithinBlock() ? Good : Incomplete;
}

void printError(const std::string &line)
{
    std::fprintf(stderr, "padscope: %s\n", line.c_str());
}

} // namespace padscope
