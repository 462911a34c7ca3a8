#include "alignment.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "anchor.h"
#include "differences.h"
#include "editpath.h"

namespace comparing {

namespace {

constexpr std::size_t smallWindowPackets = 256; ///< suffices for most edits, and takes least time
constexpr std::size_t windowPackets = 4096;
constexpr std::size_t maxWindowPackets = 262'144;
constexpr std::size_t windowGrowth = 8;
constexpr std::size_t maxWindowBytes = 64 * 1024 * 1024;
constexpr std::size_t maxEditsSearched = 512;
/// With less in common, reports that repeat may hide that a long gap lies between the two.
constexpr std::size_t minMatchesPerEdit = 3;
/// Removed and added packets that are paired at a time; the time for it grows with the square.
constexpr std::size_t maxPaired = 32;
/// Steps that are held back, and the bytes of their payloads.
constexpr std::size_t maxHeld = 16'384;
constexpr std::size_t maxHeldBytes = 16 * 1024 * 1024;
/// Steps are taken back until as many pairs of packets are looked at.
constexpr std::size_t maxLookedAt = 16'384;
/// Bytes that tell which of two packets resembles a third more.
constexpr std::size_t maxResemblingBytes = 64;
// What a pair costs, each below 2: that it is not identical, that bytes differ, that times differ.
constexpr double onlyWithinTolerance = 0.5;
constexpr double perByte = 1.0 / maxResemblingBytes;
constexpr double halfMisfitNs =
    1e6; ///< times that differ by so much cost half of those that don't fit at all

int differingBytes(const Packet &a, const Packet &b)
{
    const std::size_t length = std::min({a.payload.size(), b.payload.size(), maxResemblingBytes});
    int count = a.payload.size() != b.payload.size() ? 1 : 0;
    for (std::size_t i = 0; i < length; ++i)
        count += a.payload[i] != b.payload[i] ? 1 : 0;
    return count;
}

std::vector<std::string> typesOf(const std::deque<Packet> &packets, std::size_t count)
{
    std::vector<std::string> types;
    for (std::size_t i = 0; i < count; ++i)
        types.push_back(typeOf(packets[i]));
    return types;
}

double nanosecondsBetween(const Packet &a, const Packet &b)
{
    return static_cast<double>(b.timeNs) - static_cast<double>(a.timeNs);
}

/// Of the first packets.
std::vector<std::uint64_t> hashesOf(const std::deque<Packet> &packets, std::size_t count)
{
    std::vector<std::uint64_t> hashes;
    for (std::size_t i = 0; i < std::min(count, packets.size()); ++i)
        hashes.push_back(packets[i].hash);
    return hashes;
}

} // namespace

Alignment::Alignment(Source sourceA, Source sourceB, const FieldRules &fieldRules, AlignmentListener &taker)
    : rules(fieldRules)
    , listener(taker)
    , a{std::move(sourceA)}
    , b{std::move(sourceB)}
{
}

void Alignment::Window::fill(std::size_t count)
{
    while (!hasEnded && packets.size() < count && bytes < maxWindowBytes) {
        if (std::optional<Packet> packet = source()) {
            bytes += packet->payload.size();
            packets.push_back(std::move(*packet));
        } else {
            hasEnded = true;
        }
    }
}

Packet Alignment::Window::takeFirst()
{
    Packet packet = std::move(packets.front());
    packets.pop_front();
    bytes -= packet.payload.size();
    return packet;
}

void Alignment::Window::putBack(Packet packet)
{
    bytes += packet.payload.size();
    packets.push_front(std::move(packet));
}

void Alignment::run()
{
    for (;;) {
        a.fill(1);
        b.fill(1);
        if (a.packets.empty() && b.packets.empty())
            break;
        if (!a.packets.empty() && !b.packets.empty() && isEqualAt(0, 0))
            take({true, true});
        else
            advance();
    }
    while (!held.empty())
        releaseFirst();
}

bool Alignment::isEqualAt(std::size_t indexA, std::size_t indexB) const
{
    return areEqual(a.packets[indexA], b.packets[indexB], rules);
}

/// Takes the first packets as a step.
void Alignment::take(const PairingStep &taken)
{
    Step step;
    if (taken.takesA)
        step.a = a.takeFirst();
    if (taken.takesB)
        step.b = b.takeFirst();
    heldBytes += step.bytes();
    held.push_back(std::move(step));
    while (held.size() > maxHeld || heldBytes > maxHeldBytes)
        releaseFirst();
}

void Alignment::releaseFirst()
{
    const Step step = std::move(held.front());
    held.pop_front();
    heldBytes -= step.bytes();
    if (step.a && step.b) {
        lastOffsetNs = nanosecondsBetween(*step.a, *step.b);
        listener.pair(*step.a, *step.b);
    } else if (step.a) {
        listener.onlyInA(*step.a);
    } else {
        listener.onlyInB(*step.b);
    }
}

/// Goes on behind the first difference. \pre the first packets differ
void Alignment::advance()
{
    if (followPath(smallWindowPackets) || goToAnchor(smallWindowPackets) || followPath(windowPackets))
        return;
    for (std::size_t size = windowPackets; size <= maxWindowPackets; size *= windowGrowth) {
        if (goToAnchor(size))
            return;
    }
    // What is left of one that has ended may be found later in the other.
    const bool haveBothEnded = a.hasEnded && b.hasEnded;
    const auto part = [haveBothEnded](const Window &window) {
        if (haveBothEnded)
            return window.packets.size();
        return window.hasEnded ? 0 : (window.packets.size() + 1) / 2;
    };
    edit(part(a), part(b));
}

/// \return false when too much differs for the path to be the right one
bool Alignment::followPath(std::size_t size)
{
    a.fill(size);
    b.fill(size);
    const std::size_t lengthA = std::min(a.packets.size(), size);
    const std::size_t lengthB = std::min(b.packets.size(), size);
    const bool areWhole =
        a.hasEnded && b.hasEnded && a.packets.size() == lengthA && b.packets.size() == lengthB;
    const auto equal = [this](std::size_t indexA, std::size_t indexB) { return isEqualAt(indexA, indexB); };
    const EditPath path =
        shortestPath(lengthA, lengthB, equal,
                     areWhole ? maxEditsSearched : std::min(maxEditsSearched, size / minMatchesPerEdit));
    const bool isAll = areWhole && path.reachesGoal;
    if (!isAll && path.matches() < minMatchesPerEdit * path.edits)
        return false;
    // What follows the window may change the path near the window's end.
    const std::size_t end = path.a + path.b;
    align({path.a, path.b, path.a - path.matches(), path.b - path.matches()}, isAll ? 0 : end / 2);
    return true;
}

/// \return false when there is none
bool Alignment::goToAnchor(std::size_t size)
{
    a.fill(size);
    b.fill(size);
    const auto equal = [this](std::size_t indexA, std::size_t indexB) { return isEqualAt(indexA, indexB); };
    const std::optional<Anchor> anchor =
        nearestAnchor(hashesOf(a.packets, size), hashesOf(b.packets, size), equal);
    if (anchor)
        edit(anchor->a, anchor->b);
    return anchor.has_value();
}

/// The first packets of both have no place in the other.
void Alignment::edit(std::size_t countA, std::size_t countB)
{
    while (countA > 0 && countB > 0) {
        const std::size_t partA = std::min(countA, maxPaired);
        const std::size_t partB = std::min(countB, maxPaired);
        align({partA, partB, partA, partB}, 0);
        countA -= partA;
        countB -= partB;
    }
    const std::size_t left = countA + countB;
    if (left > 0 && left <= maxEditsSearched)
        align({countA, countB, countA, countB}, 0);
    for (std::size_t i = 0; left > maxEditsSearched && i < left; ++i)
        take({countA > 0, countB > 0});
}

/// Takes the best steps through the first packets, and those before that these may change.
/// \param kept packets at the end, of both together, that wait for what follows
void Alignment::align(Stretch stretch, std::size_t kept)
{
    takeBack(stretch);
    std::size_t left = stretch.lengthA + stretch.lengthB;
    for (const PairingStep &step : bestSteps(stretch)) {
        if (left <= kept)
            break;
        left -= (step.takesA ? 1 : 0) + (step.takesB ? 1 : 0);
        take(step);
    }
}

/// Steps before the stretch join it while the edits in it may as well lie there.
void Alignment::takeBack(Stretch &stretch)
{
    while (!held.empty() && (stretch.lengthA + 1) * (stretch.editsInA + stretch.editsInB + 1) < maxLookedAt) {
        Step step = std::move(held.back());
        held.pop_back();
        heldBytes -= step.bytes();
        const bool isEqual = step.a && step.b && areEqual(*step.a, *step.b, rules);
        if (step.a) {
            a.putBack(std::move(*step.a));
            ++stretch.lengthA;
            stretch.editsInA += isEqual ? 0 : 1;
        }
        if (step.b) {
            b.putBack(std::move(*step.b));
            ++stretch.lengthB;
            stretch.editsInB += isEqual ? 0 : 1;
        }
        if (isEqual && !isAmbiguous(stretch))
            break;
    }
}

/// Whether one of the first packets equals another one than that.
bool Alignment::isAmbiguous(const Stretch &stretch) const
{
    for (std::size_t i = 1; i <= stretch.editsInA && i < stretch.lengthA; ++i) {
        if (isEqualAt(i, 0))
            return true;
    }
    for (std::size_t i = 1; i <= stretch.editsInB && i < stretch.lengthB; ++i) {
        if (isEqualAt(0, i))
            return true;
    }
    return false;
}

std::vector<PairingStep> Alignment::bestSteps(const Stretch &stretch) const
{
    const std::vector<std::string> typesA = typesOf(a.packets, stretch.lengthA);
    const std::vector<std::string> typesB = typesOf(b.packets, stretch.lengthB);
    const auto lastPair =
        std::find_if(held.rbegin(), held.rend(), [](const Step &step) { return step.a && step.b; });
    const double offsetNs =
        lastPair == held.rend() ? lastOffsetNs : nanosecondsBetween(*lastPair->a, *lastPair->b);
    return pairInOrder(stretch, [&](std::size_t indexA, std::size_t indexB) {
        const Packet &inA = a.packets[indexA];
        const Packet &inB = b.packets[indexB];
        const double misfitNs = std::abs(nanosecondsBetween(inA, inB) - offsetNs);
        const double misfit = misfitNs / (misfitNs + halfMisfitNs);
        if (isEqualAt(indexA, indexB))
            return misfit + (areIdentical(inA, inB) ? 0 : onlyWithinTolerance);
        if (typesA[indexA] != typesB[indexB])
            return noPair;
        return changedPair + misfit + perByte * differingBytes(inA, inB);
    });
}

} // namespace comparing
