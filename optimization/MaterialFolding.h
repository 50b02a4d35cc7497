#pragma once

#include "host/OSGSystem/Node.h"

#include <cstdint>
#include <map>
#include <unordered_map>

namespace optimization
{

/// Makes one material of the equal materials in a tree: of those with equal fields and the same name, to the letter,
/// the one with the lowest container id. No material is made, and none is changed.
///
/// Materials are bucketed by class, name and hash, and each is compared with one of every kind in its bucket only: the
/// time is linear in the materials, however many have one name.
class MaterialFolding
{
public:
    /// Gives each material group and each geometry at and below `root` the material that stands for its own.
    void optimizeMaterials(const osg::NodePtr& root);

private:
    friend struct MaterialFoldingTestAccess;

    /// One walk: counts the uses, or folds.
    void doOptimizeMaterials(const osg::NodePtr& root);
    void visit(const osg::NodePtr& node);
    void fold(const osg::NodePtr& node, const osg::MaterialPtr& material);
    /// The material to use in place of `material`; null when none is known that is equal to it.
    osg::MaterialPtr replacementOf(const osg::MaterialPtr& material);
    void forgetOneUse(std::uint32_t id);
    void findRepresentatives();

    /// The number of nodes that use a material, by its id; the order of the ids decides which of equal ones stays.
    std::map<std::uint32_t, std::uint32_t> m_materialUseCounts;
    /// The id of the material to use, by that of one that was judged. One that stays maps to itself.
    std::map<std::uint32_t, std::uint32_t> m_materialReplacements;
    bool m_collectingMaterials = false;
    std::uint32_t m_materialVisitCount = 0;
    std::uint32_t m_materialVisitTotal = 0;

    /// The lowest id of the materials that are equal to one, by its id.
    std::unordered_map<std::uint32_t, std::uint32_t> m_representatives;
};

} // namespace optimization
