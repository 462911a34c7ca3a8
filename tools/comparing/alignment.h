#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <utility>

#include "editpath.h"
#include "packet.h"

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
/// Of packets that were removed or added among equal ones, those are told whose neighbours are identical, and
/// whose times fit best. Of what was removed and added in one place, packets of one type are paired as
/// changed, as many as possible, and those that differ least.
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
    };

    bool isEqualAt(std::size_t indexA, std::size_t indexB) const;
    void passEqual(std::size_t count);
    void advance();
    bool followPath(std::size_t size);
    void follow(const EditPath &path);
    bool goToAnchor(std::size_t size);
    void releaseFirst();
    void release();
    void edit(std::size_t countA, std::size_t countB);
    template <bool isInA>
    void takeOut(std::size_t count);
    template <bool isInA>
    std::size_t stepsBack(std::size_t count) const;
    void editPart(std::size_t countA, std::size_t countB);

    const FieldRules &rules;
    AlignmentListener &listener;
    Window a;
    Window b;
    std::deque<std::pair<Packet, Packet>> held; ///< equal ones that the next edit may pair anew
};

} // namespace comparing
