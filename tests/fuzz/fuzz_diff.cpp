#include <sys/mman.h>
#include <unistd.h>

#include "comparison.h"
#include "fuzz/fuzzing.h"

// Two captures of any bytes, which lie behind the length of the first: each packet is told once, and a
// capture does not differ from itself.

namespace {

using comparing::Capture;

constexpr capture::Kind comparedKinds[] = {capture::Kind::Report, capture::Kind::Call, capture::Kind::Return,
                                           capture::Kind::Hotplug};

class MemoryCapture
{
public:
    explicit MemoryCapture(const QByteArray &bytes)
        : file(memfd_create("capture", MFD_CLOEXEC))
    {
        fuzz::require(::write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) ==
                          bytes.size(),
                      "the input can be written");
    }
    ~MemoryCapture() { close(file); }
    MemoryCapture(const MemoryCapture &) = delete;
    MemoryCapture &operator=(const MemoryCapture &) = delete;

    int descriptor() const
    {
        lseek(file, 0, SEEK_SET);
        return file;
    }

private:
    int file;
};

std::uint64_t comparedPackets(const Capture &capture)
{
    std::uint64_t count = 0;
    for (const auto &[stream, size] : capture.streams())
        count += size.packets;
    return count;
}

bool areSame(const MemoryCapture &fileA, const MemoryCapture &fileB, const comparing::Selection &selection)
{
    Capture a(fileA.descriptor(), Capture::Side::A, selection);
    Capture b(fileB.descriptor(), Capture::Side::B, selection);
    a.scan([](std::uint64_t) {});
    b.scan([](std::uint64_t) {});
    comparing::Comparison comparison(a, b, selection);
    std::uint64_t lines = 0;
    comparison.onDifference = [&lines](const std::string &line) {
        for (const char character : line)
            fuzz::require(static_cast<unsigned char>(character) >= 0x20, "a line has no control character");
        ++lines;
        return true;
    };
    fuzz::require(comparison.run(), "what was read once can be read again");
    std::uint64_t told = 0;
    std::uint64_t different = 0;
    for (const auto &[stream, counts] : comparison.counts()) {
        told += 2 * (counts.equal + counts.changed) + counts.onlyInA + counts.onlyInB;
        different += counts.changed + counts.onlyInA + counts.onlyInB;
    }
    fuzz::require(told == comparedPackets(a) + comparedPackets(b), "each packet is told once");
    fuzz::require(lines == different, "each difference has a line");
    return comparison.areSame();
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    Input input{bytes};
    const int options = input.byte();
    const int lengthOfA = input.byte() * 256 + input.byte();
    const QByteArray bytesOfA = input.bytes(lengthOfA);
    const MemoryCapture a(bytesOfA);
    const MemoryCapture copyOfA(bytesOfA);
    const MemoryCapture b(input.rest);
    comparing::Selection selection;
    selection.kinds = {std::begin(comparedKinds), std::end(comparedKinds)};
    if (options & 1)
        selection.rules.tolerate("yFine60", 3);
    if (options & 2)
        selection.rules.ignore("characters");
    if (options & 4)
        selection.rules.ignore("command");
    if (options & 8)
        selection.boardsInB = {{1001, 1002}, {1002, 1001}};
    const bool areAlike = areSame(a, b, selection);
    require(areAlike == areSame(b, a, selection), "it does not matter which is the first");
    selection.boardsInB.clear();
    require(areSame(a, copyOfA, selection), "a capture does not differ from itself");
}
