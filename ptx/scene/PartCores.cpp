#include "ptx/scene/PartCores.h"

#include "scene/EditScope.h"

namespace ptx::scene
{

const std::vector<osg::RefPtr<osg::GeometryPtr>>& PartCores::of(std::size_t body, const Look& look)
{
    const auto [entry, isNew] = m_cores.try_emplace({body, look});
    if (isNew)
        for (const model::Piece& piece : m_model.bodies[body].pieces)
            entry->second.emplace_back(make(piece, look));
    return entry->second;
}

const std::vector<osg::RefPtr<osg::GeometryPtr>>& PartCores::of(const model::Callout& callout)
{
    const auto [entry, isNew] = m_callouts.try_emplace(&callout);
    if (isNew)
        for (const model::Piece& piece : callout.pieces)
            entry->second.emplace_back(make(piece, Look()));
    return entry->second;
}

osg::GeometryPtr PartCores::make(const model::Piece& piece, const Look& look)
{
    const osg::GeometryPtr geometry = osg::Geometry::create();
    const osg::EditScope edit(geometry, osg::Geometry::MeshFieldMask | osg::Geometry::MaterialFieldMask);
    osg::GeometryAccess::setMesh(*geometry, piece.mesh);
    geometry->setMaterial(m_materials.materialFor(look.resolved(piece.appearance)));
    return geometry;
}

} // namespace ptx::scene
