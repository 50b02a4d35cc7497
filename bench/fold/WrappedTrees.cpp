#include "bench/fold/WrappedTrees.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Mesh.h"

#include <string>
#include <vector>

namespace
{

osg::GeometryPtr triangle()
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh->triangles = std::vector<std::uint32_t>{0, 1, 2};
    const osg::GeometryPtr core = osg::Geometry::create();
    osg::GeometryAccess::setMesh(*core, std::move(mesh));
    return core;
}

osg::NodePtr addNode(const osg::NodePtr& parent, const osg::NodeCorePtr& core, const std::string& name)
{
    const osg::NodePtr node = osg::makeNodeFor(core);
    if (!name.empty())
        osg::setName(node, name.c_str());
    parent->addChild(node);
    return node;
}

void addParts(const osg::NodePtr& parent, const osg::GeometryPtr& core)
{
    addNode(parent, core, "left");
    addNode(parent, core, "right");
}

} // namespace

osg::RefPtr<osg::NodePtr> wrappedTree(Wrapping wrapping, unsigned wrappers)
{
    const osg::RefPtr<osg::GeometryPtr> core(triangle());
    osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
    osg::setName(root, "root");
    osg::NodePtr parent = root;
    for (unsigned i = 0; i < wrappers; ++i) {
        const std::string name = wrapping == Wrapping::Paired ? "part " + std::to_string(i) : std::string();
        if (wrapping == Wrapping::Paired)
            parent = addNode(root, osg::Group::create(), name);
        const osg::NodePtr wrapper = addNode(parent, osg::Group::create(), name);
        if (wrapping == Wrapping::Nested)
            parent = wrapper;
        else
            addParts(wrapper, core);
    }
    if (wrapping == Wrapping::Nested)
        addParts(parent, core);
    return root;
}
