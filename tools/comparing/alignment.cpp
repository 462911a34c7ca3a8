#include "alignment.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "anchor.h"
#include "differences.h"
#include "pairing.h"

namespace comparing {

namespace {

constexpr std::size_t smallWindowPackets = 256; ///< suffices for most edits, and takes least time
constexpr std::size_t windowPackets = 4096;
constexpr std::size_t maxWindowPackets = 262'144;
constexpr std::size_t windowGrowth = 8;
constexpr std::size_t maxWindowBytes = 64 * 1024 * 1024;
constexpr std::size_t maxEdits = 512;
/// With less in common, reports that repeat may hide that a long gap lies between the two.
constexpr std::size_t minMatchesPerEdit = 3;
/// Removed and added packets that are paired at a time; the time for it grows with the square.
constexpr std::size_t maxPaired = 32;
/// Equal packets that are looked back at.
constexpr std::size_t maxHeld = 1024;
/// Bytes that tell which of two packets resembles a third more.
constexpr std::size_t maxResemblingBytes = 1024;

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

void Alignment::run()
{
    for (;;) {
        a.fill(1);
        b.fill(1);
        if (a.packets.empty() && b.packets.empty())
            break;
        if (!a.packets.empty() && !b.packets.empty() && isEqualAt(0, 0))
            passEqual(1);
        else
            advance();
    }
    release();
}

bool Alignment::isEqualAt(std::size_t indexA, std::size_t indexB) const
{
    return areEqual(a.packets[indexA], b.packets[indexB], rules);
}

void Alignment::passEqual(std::size_t count)
{
    for (; count > 0; --count) {
        held.emplace_back(a.takeFirst(), b.takeFirst());
        if (held.size() > maxHeld)
            releaseFirst();
    }
}

void Alignment::releaseFirst()
{
    listener.pair(held.front().first, held.front().second);
    held.pop_front();
}

void Alignment::release()
{
    while (!held.empty())
        releaseFirst();
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
    const Extent extent{std::min(a.packets.size(), size), std::min(b.packets.size(), size),
                        a.hasEnded && a.packets.size() <= size, b.hasEnded && b.packets.size() <= size};
    const auto equal = [this](std::size_t indexA, std::size_t indexB) { return isEqualAt(indexA, indexB); };
    const bool areWhole = extent.isEndOfA && extent.isEndOfB;
    EditPath path =
        shortestPath(extent, equal, areWhole ? maxEdits : std::min(maxEdits, size / minMatchesPerEdit));
    if (path.reachesGoal && areWhole) {
        follow(path);
        edit(a.packets.size(), b.packets.size());
        return true;
    }
    if (path.matches() < minMatchesPerEdit * path.edits)
        return false;
    // What follows the window may change the path near the window's end.
    const auto isBehindHalf = [&path](const Run &run) { return run.a + run.b > (path.a + path.b) / 2; };
    path.runs.erase(std::find_if(path.runs.begin() + 1, path.runs.end(), isBehindHalf), path.runs.end());
    follow(path);
    return true;
}

/// To the end of the last run.
void Alignment::follow(const EditPath &path)
{
    std::size_t atA = 0;
    std::size_t atB = 0;
    for (const Run &run : path.runs) {
        edit(run.a - atA, run.b - atB);
        passEqual(run.length);
        atA = run.a + run.length;
        atB = run.b + run.length;
    }
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
    if (countA > 0 && countB > 0)
        release();
    while (countA > 0 && countB > 0) {
        const std::size_t partA = std::min(countA, maxPaired);
        const std::size_t partB = std::min(countB, maxPaired);
        editPart(partA, partB);
        countA -= partA;
        countB -= partB;
    }
    if (countA > 0)
        takeOut<true>(countA);
    if (countB > 0)
        takeOut<false>(countB);
}

/// The first packets of one sequence, or as many behind others that equal those, have no place in the other
/// one.
template <bool isInA>
void Alignment::takeOut(std::size_t count)
{
    const std::size_t steps = stepsBack<isInA>(count);
    while (held.size() > steps)
        releaseFirst();
    std::deque<Packet> longer;
    std::deque<Packet> shorter;
    for (auto &[packetA, packetB] : held) {
        longer.push_back(std::move(isInA ? packetA : packetB));
        shorter.push_back(std::move(isInA ? packetB : packetA));
    }
    held.clear();
    Window &window = isInA ? a : b;
    for (std::size_t i = 0; i < count; ++i) {
        longer.push_back(window.takeFirst());
        if constexpr (isInA)
            listener.onlyInA(longer.front());
        else
            listener.onlyInB(longer.front());
        longer.pop_front();
    }
    for (std::size_t i = 0; i < steps; ++i) {
        if constexpr (isInA)
            held.emplace_back(std::move(longer[i]), std::move(shorter[i]));
        else
            held.emplace_back(std::move(shorter[i]), std::move(longer[i]));
    }
}

/// How many equal ones are better paired anew, before which the edit then comes.
template <bool isInA>
std::size_t Alignment::stepsBack(std::size_t count) const
{
    const std::deque<Packet> &following = isInA ? a.packets : b.packets;
    const auto longer = [&](std::size_t i) -> const Packet & {
        if (i >= held.size())
            return following[i - held.size()];
        return isInA ? held[i].first : held[i].second;
    };
    const auto shorter = [&](std::size_t i) -> const Packet & {
        return isInA ? held[i].second : held[i].first;
    };
    const auto isEqual = [&](const Packet &inLonger, const Packet &inShorter) {
        return isInA ? areEqual(inLonger, inShorter, rules) : areEqual(inShorter, inLonger, rules);
    };
    const auto timeBetween = [](const Packet &one, const Packet &other) {
        return static_cast<double>(one.timeNs) - static_cast<double>(other.timeNs);
    };
    const double offsetNs = held.empty() ? 0 : timeBetween(longer(0), shorter(0));
    using Fit = std::pair<int, double>; // identical pairs, then times that are alike
    const auto fitOf = [&](const Packet &inLonger, const Packet &inShorter) {
        return Fit(areIdentical(inLonger, inShorter) ? 1 : 0,
                   -std::abs(timeBetween(inLonger, inShorter) - offsetNs));
    };
    Fit gain;
    Fit bestGain;
    std::size_t best = 0;
    for (std::size_t i = held.size(); i-- > 0 && isEqual(longer(i + count), shorter(i));) {
        const Fit before = fitOf(longer(i), shorter(i));
        const Fit after = fitOf(longer(i + count), shorter(i));
        gain = {gain.first + after.first - before.first, gain.second + after.second - before.second};
        if (gain > bestGain) {
            bestGain = gain;
            best = held.size() - i;
        }
    }
    return best;
}

void Alignment::editPart(std::size_t countA, std::size_t countB)
{
    const std::vector<std::string> typesA = typesOf(a.packets, countA);
    const std::vector<std::string> typesB = typesOf(b.packets, countB);
    const auto cost = [&](std::size_t indexA, std::size_t indexB) {
        if (typesA[indexA] != typesB[indexB])
            return noPair;
        return isEqualAt(indexA, indexB) ? 0 : 1 + differingBytes(a.packets[indexA], b.packets[indexB]);
    };
    for (const PairingStep &step : pairInOrder(countA, countB, cost)) {
        if (step.takesA && step.takesB)
            listener.pair(a.takeFirst(), b.takeFirst());
        else if (step.takesA)
            listener.onlyInA(a.takeFirst());
        else
            listener.onlyInB(b.takeFirst());
    }
}

} // namespace comparing
