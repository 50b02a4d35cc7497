#include "ptx/scene/PlacementCores.h"

#include "scene/EditScope.h"

namespace ptx::scene
{

namespace
{

osg::Transform3DPtr makeCore(const osg::Matrix& placement)
{
    const osg::Transform3DPtr core = osg::Transform3D::create();
    const osg::EditScope edit(core, osg::Transform3D::MatrixFieldMask);
    core->setMatrix(placement);
    return core;
}

} // namespace

osg::Transform3DPtr PlacementCores::enter(const model::Occurrence& occurrence)
{
    m_path.push_back({m_tree, m_isRepeating});
    if (occurrence.copied != model::NotCopied && !m_isRepeating) {
        const auto [begin, isNew] = m_begins.try_emplace({m_tree, occurrence.copied}, m_log.size());
        m_tree = begin->second + 1;
        m_isRepeating = !isNew;
        m_repeated = begin->second;
    }
    const osg::Transform3DPtr core = next(occurrence);
    if (m_tree != 0)
        m_log.emplace_back(core);
    return core;
}

osg::Transform3DPtr PlacementCores::next(const model::Occurrence& occurrence)
{
    return m_isRepeating ? m_log[m_repeated++].get() : makeCore(occurrence.placement);
}

void PlacementCores::leave()
{
    m_tree = m_path.back().tree;
    m_isRepeating = m_path.back().isRepeating;
    m_path.pop_back();
}

} // namespace ptx::scene
