#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "alignment.h"
#include "captures.h"

namespace comparing {

struct Counts
{
    std::uint64_t equal = 0;
    std::uint64_t changed = 0;
    std::uint64_t onlyInA = 0;
    std::uint64_t onlyInB = 0;

    bool areSame() const { return changed == 0 && onlyInA == 0 && onlyInB == 0; }
};

/// Compares what two captures have, stream by stream, and describes the differences, a line each:
/// \code
/// +0.412 s board 1001 SignalReport 1 yFine60 118 -> 121
/// +0.500 s board 1001 PositionReport only in A
/// +0.612 s no board hotplug only in B
/// \endcode
class Comparison
{
public:
    /// \param captureA, captureB have been scanned
    Comparison(Capture &captureA, Capture &captureB, const Selection &compared);

    /// Times of packets that belong together may differ by this much. Without it they don't count.
    std::optional<double> maxTimeDifferenceMs;
    /// Called with each difference, without a line feed, when it is set.
    /// \return false when the rest is not wanted
    std::function<bool(const std::string &line)> onDifference;
    /// Called now and then with the share that is done, up to 1, when it is set.
    std::function<void(double share)> onProgress;

    /// \return false when a file could not be read again as it was the first time
    bool run();

    const std::map<StreamKey, Counts> &counts() const { return countsByStream; }
    bool areSame() const;

private:
    class Describing;

    bool compare(const StreamKey &stream);
    std::set<StreamKey> nextBatch(std::map<StreamKey, Counts>::const_iterator &next) const;

    Capture &a;
    Capture &b;
    const Selection &selection;
    std::map<StreamKey, Counts> countsByStream;
    std::uint64_t total = 0; ///< packets of both that are compared
    std::uint64_t done = 0;
    bool isStopped = false;
};

/// "board 1001", "board 1001 of B", "no board"
std::string boardText(const StreamKey &stream);

} // namespace comparing
