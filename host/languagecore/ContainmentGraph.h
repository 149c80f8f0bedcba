#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ac {

struct Declaration;

/// Which types contain which others.
class ContainmentGraph {
public:
    void add(const Declaration* container, const Declaration* content);
    /// The types that contain themselves, directly or through others, and those that only lead from one such circle to
    /// another.
    std::unordered_set<const Declaration*> onCircles() const;

private:
    using Edges = std::unordered_map<const Declaration*, std::vector<const Declaration*>>;

    /// Removes types without outgoing edges until none is left.
    static void prune(const Edges& outgoing, const Edges& incoming, std::unordered_set<const Declaration*>& left);

    std::unordered_set<const Declaration*> m_types;
    Edges m_contents;
    Edges m_containers;
};

} // namespace ac
