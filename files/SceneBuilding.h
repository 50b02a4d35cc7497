#pragma once

#include "files/SceneReader.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/PhysicalSurface.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/Mesh.h"

#include <optional>
#include <string>

namespace files
{

/// Keeps a tree that nobody holds yet, and destroys it unless it is taken out.
class FreshTree
{
public:
    explicit FreshTree(const osg::NodePtr& root) : m_root(root) {}
    FreshTree(const FreshTree&) = delete;
    FreshTree& operator=(const FreshTree&) = delete;
    ~FreshTree();

    const osg::NodePtr& root() const { return m_root; }
    osg::NodePtr take();

private:
    osg::NodePtr m_root;
};

/// A node of this name with this core.
osg::NodePtr makeNode(const std::string& name, const osg::NodeCorePtr& core);
/// A node of this name with a plain group.
osg::NodePtr makeGroup(const std::string& name);
/// A node of this name with a transform of the kind that a finished import has.
osg::NodePtr makeTransform(const std::string& name, const osg::Matrix& matrix);

/// A geometry core of this name; `material` may be null.
osg::GeometryPtr makeGeometry(const std::string& name, osg::Mesh mesh, const osg::MaterialPtr& material);

/// The values of a material to be made.
struct MaterialLook {
    osg::Color3f ambient;
    osg::Color3f diffuse = {0.8f, 0.8f, 0.8f};
    osg::Color3f emission;
    osg::Color3f specular;
    float shininess = 1;
    float transparency = 0;
    std::optional<osg::PhysicalSurface> surface = std::nullopt; ///< where more is known than the rest can say
};

osg::SimpleMaterialPtr makeMaterial(const std::string& name, const MaterialLook& look);

/// The way from coordinates of this unit and axis to millimetres and Z up.
osg::Matrix toMillimetresZUp(double millimetresPerUnit, UpAxis upAxis);

/// Where the content of a file without unit and axis goes: `root` itself, or a transform below it if the options ask
/// for one.
osg::NodePtr placeForContent(const osg::NodePtr& root, const ReadOptions& options);

} // namespace files
