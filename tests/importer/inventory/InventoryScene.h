#pragma once

#include "files/SceneBuilding.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Attributes.h"
#include "scene/Mesh.h"
#include "scene/SceneEdits.h"
#include "tests/scene/SceneGraphTest.h"

#include <string>

/// A scene whose parts a test puts together.
class InventoryTest : public SceneGraphTest
{
protected:
    void TearDown() override
    {
        root = osg::NodePtr();
        SceneGraphTest::TearDown();
    }

    static osg::Attribute text(const char* name, const char* value) { return {name, std::string(value)}; }

    static osg::NodePtr add(const osg::NodePtr& parent, const char* name, const osg::NodeCorePtr& core = {})
    {
        const osg::NodePtr node = core ? osg::makeNodeFor(core) : osg::Node::create();
        osg::addChild(parent, node);
        osg::setName(node, name);
        return node;
    }

    /// A node of a product; `more` are further attributes.
    static osg::NodePtr addProduct(const osg::NodePtr& parent, const char* name, const char* product,
                                   const osg::AttributeList& more = {})
    {
        const osg::NodePtr node = add(parent, name, osg::Transform3D::create());
        osg::addAttributes(node, osg::AttributeOwner::Product, {text("Product", product)});
        osg::addAttributes(node, osg::AttributeOwner::Product, more);
        return node;
    }

    /// A box with a corner at `corner` and this size, each face with corners of its own.
    static osg::Mesh box(osg::Vec3f size, osg::Vec3f corner = {0, 0, 0})
    {
        static constexpr unsigned faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                                 {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
        std::vector<osg::Vec3f> positions;
        std::vector<std::uint32_t> triangles;
        for (const auto& face : faces) {
            const auto first = static_cast<std::uint32_t>(positions.size());
            for (const unsigned i : face)
                positions.push_back({corner.x + (i & 1 ? size.x : 0), corner.y + (i & 2 ? size.y : 0),
                                     corner.z + (i & 4 ? size.z : 0)});
            for (const unsigned k : {0u, 1u, 2u, 0u, 2u, 3u})
                triangles.push_back(first + k);
        }
        osg::Mesh mesh;
        mesh.positions = std::move(positions);
        mesh.triangles = std::move(triangles);
        return mesh;
    }

    static osg::GeometryPtr boxCore(osg::Vec3f size) { return files::makeGeometry("", box(size), {}); }

    osg::RefPtr<osg::NodePtr> root{osg::Node::create()};
};
