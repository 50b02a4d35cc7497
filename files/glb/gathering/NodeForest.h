#pragma once

#include "files/glb/packing/Affine.h"

#include <cstddef>
#include <string>
#include <vector>

namespace files::glb::gathering
{

using packing::Affine;
using packing::Json;

/// How the nodes of a document hang together. A node that some variant set shows or hides, or that holds annotations,
/// is the head of a region: what hangs below it is drawn or not with it.
class NodeForest
{
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1); ///< for the scene itself

    /// `nodes` must outlive this object; what is above what must not change. Nodes that are in no list of children
    /// and not among the roots of `scene` are not part of the forest.
    NodeForest(const Json& scene, const Json& nodes);

    /// The nodes from the roots on, each before what hangs below it, siblings in their order.
    const std::vector<std::size_t>& order() const { return m_order; }
    /// The place of `node` in that order.
    std::size_t rank(std::size_t node) const { return m_ranks[node]; }
    std::size_t parent(std::size_t node) const { return m_parents[node]; }
    /// The head of the region that `node` is in, which may be itself.
    std::size_t region(std::size_t node) const { return m_regions[node]; }
    /// The lowest node that is `a` and `b`, or above them.
    std::size_t commonAncestor(std::size_t a, std::size_t b) const;
    /// From the space of `node` into that of `above`, which is above it or the scene.
    Affine place(std::size_t node, std::size_t above) const;
    /// The names of the nodes between `node` and `above`, from above on; those without one are passed over.
    std::vector<std::string> path(std::size_t node, std::size_t above) const;

    /// Whether some node from `node` up to the one below `above` has the name of a sibling, so that `path` may mean
    /// others too.
    bool isAmbiguous(std::size_t node, std::size_t above) const;

private:
    std::size_t depth(std::size_t node) const { return node == none ? 0 : m_depths[node]; }

    void findTwins(const Json& siblings);

    const Json& m_nodes;
    std::vector<std::size_t> m_order;
    std::vector<std::size_t> m_ranks;
    std::vector<std::size_t> m_parents;
    std::vector<std::size_t> m_regions;
    std::vector<std::size_t> m_depths; ///< 1 for roots
    std::vector<bool> m_hasTwin;       ///< a sibling of the same name
};

} // namespace files::glb::gathering
