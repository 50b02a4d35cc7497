#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/Transform.h"
#include "scene/MatrixMath.h"

#include <QStringList>

#include <algorithm>

/// What there is in a tree that was read.
struct SeenTree {
    std::size_t triangles = 0;
    osg::Vec3f least = {1e9f, 1e9f, 1e9f}; ///< of the box of what is drawn
    osg::Vec3f most = {-1e9f, -1e9f, -1e9f};
    QStringList names;

    /// Takes in `node`, which stands below something at `above`, and what hangs below it.
    void look(const osg::NodePtr& node, osg::Matrix above = {})
    {
        if (const char* name = osg::getName(node))
            names << QString::fromUtf8(name);
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            above = above * transform->getMatrix();
        if (const auto core = osg::fcCast<osg::Geometry>(node->getCore())) {
            const osg::Mesh& mesh = osg::GeometryAccess::mesh(*core);
            triangles += mesh.triangles.size() / 3;
            for (const std::uint32_t index : mesh.triangles) {
                const osg::Vec3f v = osg::transformPoint(above, mesh.positions[index]);
                least = {std::min(least.x, v.x), std::min(least.y, v.y), std::min(least.z, v.z)};
                most = {std::max(most.x, v.x), std::max(most.y, v.y), std::max(most.z, v.z)};
            }
        }
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            look(node->getChild(i), above);
    }
};
