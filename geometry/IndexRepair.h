#pragma once

#include "scene/Mesh.h"

#include <QStringList>

namespace geometry
{

/// Whether a mesh keeps the promises of `osg::Mesh`.
bool isSound(const osg::Mesh& mesh);

/// A mesh that keeps the promises of `osg::Mesh`.
struct Repaired {
    osg::Mesh mesh;
    QStringList changes; ///< a sentence for each; empty when nothing was wrong
};

/// To be asked for a mesh that is not sound; another one is copied for nothing.
Repaired repaired(const osg::Mesh& mesh);

} // namespace geometry
