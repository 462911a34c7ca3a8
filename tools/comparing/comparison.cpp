#include "comparison.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "differences.h"

namespace comparing {

namespace {

/// Streams that are read along with another one wait in memory.
constexpr std::uint64_t maxWaitingBytes = 64 * 1024 * 1024;
constexpr std::uint64_t bytesPerPacket = 2 * sizeof(Packet); ///< beside its payload
constexpr std::uint64_t progressSteps = 65'536;

std::string secondsText(double seconds)
{
    char text[48];
    std::snprintf(text, sizeof text, "%+.3f s", seconds);
    return text;
}

std::string preciseSecondsText(double ns)
{
    char text[48];
    std::snprintf(text, sizeof text, "%.6f s", ns / 1e9);
    return text;
}

/// Since the first packet that is compared.
double nanosecondsBehind(const Capture &capture, const Packet &packet)
{
    return static_cast<double>(packet.timeNs) - static_cast<double>(capture.firstComparedNs());
}

std::uint64_t memoryIn(const Capture &capture, const StreamKey &stream)
{
    const auto size = capture.streams().find(stream);
    return size == capture.streams().end() ? 0 : size->second.bytes + size->second.packets * bytesPerPacket;
}

} // namespace

/// Counts the differences of one stream, and describes each.
class Comparison::Describing : public AlignmentListener
{
public:
    Describing(Comparison &comparison, const StreamKey &compared)
        : owner(comparison)
        , stream(compared)
    {
    }

    void pair(const Packet &packetA, const Packet &packetB) override
    {
        const bool isOnTime = areTimesAlike(packetA, packetB);
        if (isOnTime && areEqual(packetA, packetB, owner.selection.rules)) {
            ++counts.equal;
        } else {
            ++counts.changed;
            if (owner.onDifference)
                describe(packetA, changesOf(packetA, packetB, isOnTime));
        }
        countPackets(2);
    }

    void onlyInA(const Packet &packet) override
    {
        ++counts.onlyInA;
        describe(packet, "only in A");
        countPackets(1);
    }

    void onlyInB(const Packet &packet) override
    {
        ++counts.onlyInB;
        describe(packet, "only in B");
        countPackets(1);
    }

    Counts counts;

private:
    void countPackets(std::uint64_t count)
    {
        const std::uint64_t before = owner.done / progressSteps;
        owner.done += count;
        if (owner.onProgress && owner.done / progressSteps != before)
            owner.onProgress(static_cast<double>(owner.done) / static_cast<double>(owner.total));
    }

    bool areTimesAlike(const Packet &packetA, const Packet &packetB) const
    {
        return !owner.maxTimeDifferenceMs ||
               std::abs(nanosecondsBehind(owner.b, packetB) - nanosecondsBehind(owner.a, packetA)) <=
                   *owner.maxTimeDifferenceMs * 1e6;
    }

    std::string changesOf(const Packet &packetA, const Packet &packetB, bool isOnTime) const
    {
        std::string text = differencesOf(packetA, packetB, owner.selection.rules);
        if (isOnTime)
            return text;
        if (!text.empty())
            text += ", ";
        return text + "time " + preciseSecondsText(nanosecondsBehind(owner.a, packetA)) + " -> " +
               preciseSecondsText(nanosecondsBehind(owner.b, packetB));
    }

    void describe(const Packet &packet, const std::string &what) const
    {
        if (owner.onDifference && !owner.isStopped)
            owner.isStopped =
                !owner.onDifference(secondsText(static_cast<double>(packet.timeNs) / 1e9) + ' ' +
                                    boardText(stream) + ' ' + typeOf(packet) + ' ' + what);
    }

    Comparison &owner;
    const StreamKey &stream;
};

Comparison::Comparison(Capture &captureA, Capture &captureB, const Selection &compared)
    : a(captureA)
    , b(captureB)
    , selection(compared)
{
    for (const Capture *capture : {&a, &b}) {
        for (const auto &[stream, size] : capture->streams()) {
            countsByStream[stream];
            total += size.packets;
        }
    }
}

bool Comparison::run()
{
    for (auto next = countsByStream.cbegin(); next != countsByStream.cend() && !isStopped;) {
        const std::set<StreamKey> batch = nextBatch(next);
        a.rewind(batch);
        b.rewind(batch);
        for (const StreamKey &stream : batch) {
            if (!compare(stream))
                return false;
        }
    }
    return true;
}

bool Comparison::compare(const StreamKey &stream)
{
    const auto nextOf = [this, &stream](Capture &capture) {
        return isStopped ? std::nullopt : capture.next(stream);
    };
    Describing describing(*this, stream);
    Alignment([&] { return nextOf(a); }, [&] { return nextOf(b); }, selection.rules, describing).run();
    countsByStream[stream] = describing.counts;
    return a.isIntact() && b.isIntact();
}

bool Comparison::areSame() const
{
    return std::all_of(countsByStream.begin(), countsByStream.end(),
                       [](const auto &entry) { return entry.second.areSame(); });
}

/// The next stream, and those behind it that fit into memory meanwhile.
std::set<StreamKey> Comparison::nextBatch(std::map<StreamKey, Counts>::const_iterator &next) const
{
    std::set<StreamKey> batch{next->first};
    std::uint64_t waitingBytes = 0;
    for (++next; next != countsByStream.cend(); ++next) {
        waitingBytes += memoryIn(a, next->first) + memoryIn(b, next->first);
        if (waitingBytes > maxWaitingBytes)
            break;
        batch.insert(next->first);
    }
    return batch;
}

std::string boardText(const StreamKey &stream)
{
    if (!stream.board)
        return "no board";
    return "board " + std::to_string(*stream.board) + (stream.isOnlyInB ? " of B" : "");
}

} // namespace comparing
