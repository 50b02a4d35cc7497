#pragma once

#include "host/OSGSystem/Material.h"

#include <QString>

#include <vector>

namespace zn::nodes
{

/// The materials of the scene's pool; empty while it has none.
std::vector<osg::MaterialPtr> sceneMaterials();

/// Notes the names of the scene's materials, so that the finds that follow are fast.
void noteSceneMaterialNames();

/// The first of the scene's materials that bears this name; null when there is none.
osg::MaterialPtr findSceneMaterial(const QString& name);

} // namespace zn::nodes
