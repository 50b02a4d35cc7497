#include "importer/SceneText.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/AttributeText.h"
#include "protocol/Printable.h"
#include "scene/CoreMaterial.h"
#include "scene/Mesh.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zn
{

namespace
{

using CoreNumbers = std::unordered_map<const osg::FieldContainer*, unsigned>;

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value == 0 ? 0.0 : value);
    for (char* c = text; *c; ++c)
        if (*c == ',') // a comma where the locale writes decimals so
            *c = '.';
    return text;
}

/// Numbers from 1 on, in tree order, for the cores that more than one node of the tree has.
CoreNumbers numberSharedCores(const osg::NodePtr& root)
{
    CoreNumbers uses;
    std::vector<const osg::FieldContainer*> order;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (const osg::NodeCorePtr core = node->getCore(); core && uses[core.get()]++ == 0)
            order.push_back(core.get());
        return osg::Action::Continue;
    });
    CoreNumbers numbers;
    for (const osg::FieldContainer* core : order)
        if (uses[core] > 1)
            numbers.emplace(core, static_cast<unsigned>(numbers.size()) + 1);
    return numbers;
}

std::string quoted(const char* text)
{
    return text ? " '" + protocol::printableLine(text) + "'" : std::string();
}

std::string describeGeometry(const osg::Geometry& geometry)
{
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(geometry);
    std::string text;
    const auto add = [&text](std::size_t count, const char* one, const char* many) {
        if (count > 0)
            text += ", " + std::to_string(count) + (count == 1 ? one : many);
    };
    add(mesh.triangles.size() / 3, " triangle", " triangles");
    add(mesh.lines.size() / 2, " line", " lines");
    add(mesh.points.size(), " point", " points");
    if (const osg::MaterialPtr material = geometry.getMaterial())
        text += ", material" + quoted(osg::getName(material));
    return text.empty() ? ", empty" : text;
}

std::string describeMatrix(const osg::Matrix& m)
{
    osg::Matrix moved;
    for (const unsigned i : {12u, 13u, 14u})
        moved[i] = m[i];
    std::string text = ", at " + number(m[12]) + " " + number(m[13]) + " " + number(m[14]);
    if (moved == m)
        return text;
    text += ", axes";
    for (const unsigned column : {0u, 4u, 8u})
        for (unsigned row = 0; row < 3; ++row)
            text += (row == 0 && column > 0 ? ", " : " ") + number(m[column + row]);
    return text;
}

std::string describeCore(const osg::NodeCorePtr& core)
{
    std::string text;
    if (const auto geometry = osg::fcCast<osg::Geometry>(core))
        return describeGeometry(*geometry);
    if (const auto transform = osg::fcCast<osg::Transform>(core); transform && !transform->isIdentity())
        text += describeMatrix(transform->getMatrix());
    if (const auto reference = osg::fcCast<osg::ExtReference>(core)) {
        if (const osg::FileReferencePtr file = reference->getSourceFile())
            text += ", file" + quoted(file->getPath().c_str());
        if (const osg::FileReferencePtr file = reference->getSmartFile())
            text += ", smart file" + quoted(file->getPath().c_str());
        text += ", state " + std::to_string(reference->getState());
    }
    return text;
}

std::string describeNode(const osg::NodePtr& node, const CoreNumbers& shared)
{
    const char* name = osg::getName(node);
    std::string line = name ? name : "-";
    if (!node->isActive())
        line += " (inactive)";
    const osg::NodeCorePtr core = node->getCore();
    if (!core)
        return line + " [no core]";
    line += std::string(" [") + core->getType().getName();
    if (const auto found = shared.find(core.get()); found != shared.end())
        line += " @" + std::to_string(found->second);
    return line + "]" + describeCore(core);
}

/// Two blanks a level; the levels beyond 60 are told by a number, so that the text of a chain stays small.
std::string indentation(unsigned depth)
{
    constexpr unsigned most = 60;
    std::string text(std::size_t(2) * std::min(depth, most), ' ');
    return depth > most ? text + "<" + std::to_string(depth) + "> " : text;
}

} // namespace

SceneCounts countScene(const osg::NodePtr& root)
{
    SceneCounts counts;
    std::unordered_set<const osg::FieldContainer*> geometries, materials;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (!node)
            return osg::Action::Skip;
        ++counts.nodes;
        const osg::NodeCorePtr core = node->getCore();
        if (osg::fcCast<osg::ExtReference>(core))
            ++counts.references;
        if (const osg::MaterialPtr material = osg::materialOf(core))
            materials.insert(material.get());
        const auto geometry = osg::fcCast<osg::Geometry>(core);
        if (!geometry)
            return osg::Action::Continue;
        const std::size_t triangles = osg::GeometryAccess::mesh(*geometry).triangles.size() / 3;
        ++counts.placedGeometries;
        counts.placedTriangles += triangles;
        if (geometries.insert(geometry.get()).second)
            counts.triangles += triangles;
        return osg::Action::Continue;
    });
    counts.geometries = geometries.size();
    counts.materials = materials.size();
    return counts;
}

std::string describeScene(const osg::NodePtr& root, bool attributes)
{
    if (!root)
        return std::string();
    const CoreNumbers shared = numberSharedCores(root);
    struct Step {
        osg::NodePtr node;
        unsigned depth;
    };
    std::string text;
    importer::AttributeText attributeText;
    std::vector<Step> pending = {{root, 0}};
    while (!pending.empty()) {
        const Step step = pending.back();
        pending.pop_back();
        text += indentation(step.depth) + describeNode(step.node, shared) + "\n";
        if (attributes)
            text += attributeText.of(step.node, indentation(step.depth + 1));
        for (unsigned i = step.node->getNChildren(); i-- > 0;)
            pending.push_back({step.node->getChild(i), step.depth + 1});
    }
    return text;
}

} // namespace zn
