#include "bench/optimize/GeneratedTree.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Mesh.h"
#include "scene/Tags.h"

#include <string>
#include <vector>

namespace
{

constexpr unsigned nodesOfSubAssembly = 20;
constexpr unsigned subAssembliesOfAssembly = 100;
constexpr unsigned partCount = 32;
constexpr unsigned bookmarkCount = 10;

osg::NodePtr addNode(const osg::NodePtr& parent, const osg::NodeCorePtr& core, const std::string& name)
{
    const osg::NodePtr node = osg::makeNodeFor(core);
    osg::setName(node, name.c_str());
    parent->addChild(node);
    return node;
}

osg::ExtReferencePtr reference(const std::string& file)
{
    const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
    const osg::FileReferencePtr source = osg::FileReferenceBase::create();
    source->setPath(file);
    core->setSourceFile(source);
    core->setState(2);
    return core;
}

osg::GeometryPtr geometry(unsigned kind)
{
    auto mesh = std::make_shared<osg::Mesh>();
    const auto size = float(kind + 1);
    mesh->positions = std::vector<osg::Vec3f>{{0, 0, 0}, {size, 0, 0}, {size, 5, 0}, {0, 5, 0}};
    mesh->normals = std::vector<osg::Vec3f>(4, {0, 0, 1});
    mesh->triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
    const osg::GeometryPtr core = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*core, std::move(mesh));
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    osg::setName(material, ("paint " + std::to_string(kind)).c_str());
    material->setDiffuse({0.1f, 0.2f, float(kind) / partCount});
    core->setMaterial(material);
    return core;
}

osg::Transform3DPtr placement(unsigned index)
{
    const float scale = index % 4 == 0 ? 2 : 1;
    const float height = index % 8 == 0 ? -scale : scale;
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    core->setMatrix(
        {{0, scale, 0, 0, -scale, 0, 0, 0, 0, 0, height, 0, float(index % 1000), float(index / 1000), 7, 1}});
    return core;
}

void addSubAssembly(const osg::NodePtr& parent, unsigned index, const std::vector<osg::GeometryPtr>& parts)
{
    const osg::NodePtr sub = addNode(parent, reference("sub.stp"), "sub " + std::to_string(index));
    for (unsigned i = 0; i < 6; ++i) {
        const unsigned number = 6 * index + i;
        addNode(addNode(sub, placement(number), "place"), parts[number % partCount], "part");
    }
    for (unsigned i = 0; i < 3; ++i)
        addNode(addNode(sub, osg::Group::create(), "group"), geometry((index + i) % partCount), "own");
    const osg::NodePtr varying = addNode(sub, osg::Group::create(), "varying");
    osg::setTags(varying, {"stylar::bookmark_visibilities",
                           "bookmark[Bookmark " + std::to_string(index % bookmarkCount) + "]:hidden"});
}

void addBookmarks(const osg::NodePtr& root)
{
    for (unsigned i = 0; i < bookmarkCount; ++i) {
        const osg::NodePtr node = addNode(root, osg::Group::create(), "Bookmark " + std::to_string(i));
        osg::setTags(node, {"stylar::bookmark", "bookmark_group[All]"});
    }
}

} // namespace

osg::RefPtr<osg::NodePtr> generateTree(unsigned nodes)
{
    const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(reference("generated.stp")));
    std::vector<osg::GeometryPtr> parts;
    for (unsigned i = 0; i < partCount; ++i)
        parts.push_back(geometry(i));
    osg::NodePtr assembly;
    for (unsigned i = 0; i < nodes / nodesOfSubAssembly; ++i) {
        if (i % subAssembliesOfAssembly == 0)
            assembly = addNode(root, osg::Group::create(), "assembly");
        addSubAssembly(assembly, i, parts);
    }
    addBookmarks(root);
    return root;
}
