#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform.h"
#include "scene/Mesh.h"
#include "tests/standalone/session/SessionTest.h"

#include <initializer_list>

/// Small trees with one right-angled triangle as their content.
class TreeTest : public SessionTest
{
protected:
    static osg::NodePtr add(const osg::NodePtr& parent, const osg::NodeCorePtr& core, const char* name = nullptr)
    {
        const osg::NodePtr node = osg::makeNodeFor(core);
        if (name)
            osg::setName(node, name);
        parent->addChild(node);
        return node;
    }

    /// The corners (1, 2, 3), (5, 2, 3) and (1, 8, 3), facing up.
    static osg::Mesh triangle()
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}};
        mesh.normals = std::vector<osg::Vec3f>(3, {0, 0, 1});
        mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
        mesh.faces = std::vector<osg::FaceRange>{{0, 1}};
        mesh.brep = std::vector<std::byte>(7);
        return mesh;
    }

    static osg::GeometryPtr geometry(osg::Mesh mesh = triangle())
    {
        const osg::GeometryPtr core = osg::GeometryBase::create();
        osg::GeometryAccess::setMesh(*core, std::make_shared<const osg::Mesh>(std::move(mesh)));
        return core;
    }

    static osg::TransformPtr transform(const osg::Matrix& matrix)
    {
        const osg::TransformPtr core = osg::TransformBase::create();
        core->setMatrix(matrix);
        return core;
    }

    /// Scale, then a move.
    static osg::Matrix placed(osg::Vec3f scale, osg::Vec3f shift)
    {
        osg::Matrix matrix;
        matrix.values = {scale.x, 0, 0, 0, 0, scale.y, 0, 0, 0, 0, scale.z, 0, shift.x, shift.y, shift.z, 1};
        return matrix;
    }
    /// A quarter turn about Z, then a move.
    static osg::Matrix turned(osg::Vec3f shift)
    {
        osg::Matrix matrix;
        matrix.values = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, shift.x, shift.y, shift.z, 1};
        return matrix;
    }

    static const osg::Mesh& meshOf(const osg::NodePtr& node)
    {
        return osg::GeometryAccess::mesh(*osg::fcCast<osg::Geometry>(node->getCore()));
    }
    static osg::Matrix matrixOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Transform>(node->getCore())->getMatrix();
    }
    static std::vector<std::vector<float>> listed(const osg::Buffer<osg::Vec3f>& values)
    {
        std::vector<std::vector<float>> result;
        for (const osg::Vec3f& v : values)
            result.push_back({v.x, v.y, v.z});
        return result;
    }

    using Rows = std::vector<std::vector<float>>;
    osg::NodePtr root = addGroup(m_session.sceneRoot(), "Root");
};
