#pragma once

#include "host/OSGSystem/Transform3D.h"
#include "ptx/model/Model.h"

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace ptx::scene
{

/// The transforms of occurrences. What a part file brought in shares its transforms wherever it stands, as the copies
/// of a part that was converted on its own do: how many processes took part cannot be told from the scene.
class PlacementCores
{
public:
    /// The walk through the occurrences goes down into `occurrence`.
    /// @return a transform for its node, with its placement
    osg::Transform3DPtr enter(const model::Occurrence& occurrence);
    /// The walk goes up again.
    void leave();

private:
    /// The place in `m_log` where the transforms of a copied tree begin, within the tree that it was met in.
    using Begins = std::map<std::pair<std::size_t, std::size_t>, std::size_t>;

    /// What holds above an occurrence, to be restored when the walk leaves it.
    struct Around {
        std::size_t tree;
        bool isRepeating;
    };

    osg::Transform3DPtr next(const model::Occurrence& occurrence);

    std::vector<osg::RefPtr<osg::Transform3DPtr>> m_log; ///< of what lies in copied trees, in the order of the walk
    Begins m_begins;                                     ///< by surrounding tree and number of the copied one
    std::vector<Around> m_path;
    std::size_t m_tree = 0;     ///< where the copied tree around the walk begins, plus 1; 0 for none
    bool m_isRepeating = false; ///< whether a tree is walked that was met before
    std::size_t m_repeated = 0; ///< the place in `m_log` of the next transform of that tree
};

} // namespace ptx::scene
