#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "packet.h"
#include "pairing.h"

namespace comparing {

/// Takes what an alignment finds, in order.
class AlignmentListener
{
public:
    virtual ~AlignmentListener() = default;
    /// Equal, or of one type and changed.
    virtual void pair(const Packet &a, const Packet &b) = 0;
    virtual void onlyInA(const Packet &packet) = 0;
    virtual void onlyInB(const Packet &packet) = 0;
};

/// Aligns two sequences of packets of one kind. Memory is bounded: of each sequence a window is looked at, in
/// which the shortest edit path is found. Where the path has too many edits, it goes on at the nearest place
/// from which on both are alike again, up to 262,144 packets ahead.
///
/// Among packets that equal their neighbours there are many shortest paths. The one is taken that pairs what
/// was removed and added as changed, if both are of one type, and by which times fit best and most pairs are
/// identical. Therefore steps are held back: a later edit may show that an earlier one is better told at
/// another place.
class Alignment
{
public:
    /// Gives the next packet, and nothing behind the last.
    using Source = std::function<std::optional<Packet>()>;

    Alignment(Source sourceA, Source sourceB, const FieldRules &fieldRules, AlignmentListener &taker);

    void run();

private:
    struct Window
    {
        Source source;
        std::deque<Packet> packets = {};
        std::size_t bytes = 0; ///< of their payloads
        bool hasEnded = false; ///< nothing follows

        void fill(std::size_t count);
        Packet takeFirst();
        void putBack(Packet packet);
    };

    /// A pair, or a packet that the other sequence does not have.
    struct Step
    {
        std::optional<Packet> a = {};
        std::optional<Packet> b = {};

        std::size_t bytes() const { return (a ? a->payload.size() : 0) + (b ? b->payload.size() : 0); }
    };

    bool isEqualAt(std::size_t indexA, std::size_t indexB) const;
    bool isAmbiguous(const Stretch &stretch) const;
    void advance();
    bool followPath(std::size_t size);
    bool goToAnchor(std::size_t size);
    void edit(std::size_t countA, std::size_t countB);
    void align(Stretch stretch, std::size_t kept);
    void takeBack(Stretch &stretch);
    std::vector<PairingStep> bestSteps(const Stretch &stretch) const;
    void take(const PairingStep &taken);
    void releaseFirst();

    const FieldRules &rules;
    AlignmentListener &listener;
    Window a;
    Window b;
    std::deque<Step> held; ///< may be taken back
    std::size_t heldBytes = 0;
    double lastOffsetNs = 0; ///< between the times of a pair that was released
};

} // namespace comparing
