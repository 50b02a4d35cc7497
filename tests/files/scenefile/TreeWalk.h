#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Mesh.h"

/// Follows every index of a mesh, as a renderer would.
inline double sumOf(const osg::Mesh& mesh)
{
    double sum = 0;
    for (const auto* indices : {&mesh.triangles, &mesh.lines, &mesh.points})
        for (const std::uint32_t index : *indices)
            sum += double(mesh.positions[index].x);
    for (const osg::FaceRange& face : mesh.faces)
        for (std::size_t i = face.first; i < std::size_t(face.first) + face.count; ++i)
            sum += double(mesh.triangles[3 * i + 2]);
    for (std::size_t i = 0; i < mesh.normals.size(); ++i)
        sum += double(mesh.normals[i].z + mesh.positions[i].z);
    for (std::size_t i = 0; i < mesh.texCoords.size(); ++i)
        sum += double(mesh.texCoords[i].y + mesh.positions[i].y);
    for (std::size_t i = 0; i < mesh.colors.size(); ++i)
        sum += double(mesh.colors[i].alpha + mesh.positions[i].x);
    for (const std::byte value : mesh.brep)
        sum += double(std::to_integer<int>(value));
    return sum;
}

/// Reads everything that the tree can lead to, so that a sanitizer sees each place outside the file.
inline void touchEverything(const osg::NodePtr& root)
{
    volatile double sum = 0;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
            sum = sum + sumOf(osg::GeometryAccess::mesh(*geometry));
        return osg::Action::Continue;
    });
}
