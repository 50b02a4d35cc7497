#pragma once

#include "standalone/OSGSystem/Mesh.h"

#include <QStringList>

namespace geometry
{

/// A mesh that keeps the promises of `osg::Mesh`.
struct Repaired {
    osg::Mesh mesh;
    QStringList changes; ///< a sentence for each; empty when nothing was wrong
};

Repaired repaired(const osg::Mesh& mesh);

} // namespace geometry
