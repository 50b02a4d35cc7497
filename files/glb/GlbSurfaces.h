#pragma once

#include "files/glb/GlbTextures.h"

namespace files::glb
{

/// The members of a glTF material that tell `surface`, whose base colour and emission are display colours: with the
/// extensions that it needs, whose names are added to `extensions`. Textures that follow coordinates which `sets` does
/// not have (bit 0 for the first set, bit 1 for the second) are left out.
Json surfaceJson(const osg::PhysicalSurface& surface, const osg::Color3f& base, const osg::Color3f& emission,
                 unsigned sets, GlbTextures& textures, std::set<std::string>& extensions);

/// The sets of coordinates that the textures of `surface` follow, one bit each.
unsigned setsOf(const osg::PhysicalSurface& surface);

} // namespace files::glb
