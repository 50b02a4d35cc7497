#pragma once

#include "host/OSGSystem/SimpleMaterial.h"
#include "ptx/model/Appearance.h"

#include <string>
#include <unordered_map>

namespace ptx::scene
{

/// Makes one material for each appearance. What has none gets a light grey that is named "default".
class MaterialMaker
{
public:
    explicit MaterialMaker(const model::AppearanceTable& appearances) : m_appearances(appearances) {}

    osg::SimpleMaterialPtr materialFor(int appearance);

private:
    osg::SimpleMaterialPtr make(int appearance) const;

    const model::AppearanceTable& m_appearances;
    std::unordered_map<int, osg::RefPtr<osg::SimpleMaterialPtr>> m_materials;
};

/// "#rrggbb", with the coverage in percent behind it unless it is opaque.
std::string appearanceName(const model::Appearance& appearance);

} // namespace ptx::scene
