#pragma once

#include "host/OSGSystem/Geometry.h"
#include "ptx/model/Model.h"
#include "ptx/scene/MaterialMaker.h"

#include <compare>
#include <map>
#include <unordered_map>
#include <vector>

namespace ptx::scene
{

/// What the surroundings of a body say about its appearance.
struct Look {
    int override = model::NoAppearance; ///< stronger than anything of the part
    int fallback = model::NoAppearance; ///< for what has no appearance of its own

    /// This look below an occurrence that overrides with `appearance`; an override from further out stays.
    Look overriddenBy(int appearance) const
    {
        return {override != model::NoAppearance ? override : appearance, fallback};
    }
    /// This look within a product of `appearance`.
    Look below(int appearance) const { return {override, appearance != model::NoAppearance ? appearance : fallback}; }
    /// What a piece of `appearance` looks like in the end.
    int resolved(int appearance) const
    {
        if (override != model::NoAppearance)
            return override;
        return appearance != model::NoAppearance ? appearance : fallback;
    }
    auto operator<=>(const Look&) const = default;
};

/// The geometries of bodies. Occurrences of one body that look the same get the same geometries; others share the
/// mesh alone.
class PartCores
{
public:
    explicit PartCores(const model::Model& model) : m_model(model), m_materials(model.appearances) {}

    /// Valid as long as this object.
    const std::vector<osg::RefPtr<osg::GeometryPtr>>& of(std::size_t body, const Look& look);

    /// The same for a callout of the model, which looks the same everywhere.
    const std::vector<osg::RefPtr<osg::GeometryPtr>>& of(const model::Callout& callout);

private:
    osg::GeometryPtr make(const model::Piece& piece, const Look& look);

    const model::Model& m_model;
    MaterialMaker m_materials;
    std::map<std::pair<std::size_t, Look>, std::vector<osg::RefPtr<osg::GeometryPtr>>> m_cores;
    std::unordered_map<const model::Callout*, std::vector<osg::RefPtr<osg::GeometryPtr>>> m_callouts;
};

} // namespace ptx::scene
