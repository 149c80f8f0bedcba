#include "host/languagecore/ContainmentGraph.h"

#include <algorithm>

namespace ac {

void ContainmentGraph::add(const Declaration* container, const Declaration* content)
{
    m_types.insert(container);
    m_types.insert(content);
    m_contents[container].push_back(content);
    m_containers[content].push_back(container);
}

std::unordered_set<const Declaration*> ContainmentGraph::onCircles() const
{
    std::unordered_set<const Declaration*> left = m_types;
    prune(m_contents, m_containers, left);
    prune(m_containers, m_contents, left);
    return left;
}

void ContainmentGraph::prune(const Edges& outgoing, const Edges& incoming, std::unordered_set<const Declaration*>& left)
{
    std::unordered_map<const Declaration*, std::ptrdiff_t> open;
    std::vector<const Declaration*> free;
    for (const Declaration* type : left) {
        const auto edges = outgoing.find(type);
        const std::ptrdiff_t count = edges == outgoing.end()
            ? 0
            : std::count_if(edges->second.begin(), edges->second.end(),
                [&left](const Declaration* other) { return left.count(other) > 0; });
        open[type] = count;
        if (count == 0)
            free.push_back(type);
    }
    while (!free.empty()) {
        const Declaration* type = free.back();
        free.pop_back();
        left.erase(type);
        const auto edges = incoming.find(type);
        if (edges == incoming.end())
            continue;
        for (const Declaration* other : edges->second) {
            if (left.count(other) > 0 && --open[other] == 0)
                free.push_back(other);
        }
    }
}

} // namespace ac
