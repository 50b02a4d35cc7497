#include "tests/cad/visualization/StructureText.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/cad/visualization/TableStructure.h"

#include <map>
#include <set>
#include <sstream>

namespace HB::Visualization
{

namespace
{

using namespace XML::CAD;

constexpr const char* stateNames[] = {
    "Idle",        "IdleLoadRequested",        "Realized",   "RealizedUnloadRequested",
    "FilePending", "FilePendingLoadRequested", "FileLoaded", "FileLoadedUnloadRequested"};

/// A generated id differs from run to run from its address on.
std::string steadyId(const std::string& id)
{
    return id.substr(0, id.find("0x"));
}

std::string nameOf(const osg::AttachmentContainerPtr& container)
{
    const char* name = container ? osg::getName(container) : nullptr;
    return name ? steadyId(name) : "-";
}

std::string classOf(const CADBase* element)
{
    if (dynamic_cast<const CADProductDef*>(element))
        return "ProductDef";
    if (dynamic_cast<const CADPart*>(element))
        return "Part";
    if (dynamic_cast<const CADCompoundRef*>(element))
        return "CompoundRep";
    return dynamic_cast<const CADRepresentation*>(element) ? "Representation" : "other";
}

/// Numbers from 1 on for the cores that several nodes share.
std::map<osg::NodeCorePtr, int> sharedCores(const osg::NodePtr& root)
{
    std::map<osg::NodeCorePtr, int> uses, numbers;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (++uses[node->getCore()] == 2)
            numbers.emplace(node->getCore(), static_cast<int>(numbers.size()) + 1);
        return osg::Action::Continue;
    });
    return numbers;
}

void writeMatrix(std::ostream& out, const osg::Matrix& matrix)
{
    osg::Matrix moved;
    for (const unsigned i : {12U, 13U, 14U})
        moved[i] = matrix[i];
    if (moved == matrix) {
        out << " at " << matrix[12] << ' ' << matrix[13] << ' ' << matrix[14];
        return;
    }
    out << " matrix";
    for (const float value : matrix.values)
        out << ' ' << value;
}

std::string shortPath(const osg::FileReferencePtr& file, const std::string& folder)
{
    const std::string& path = file->getPath();
    return path.compare(0, folder.size(), folder) == 0 ? path.substr(folder.size()) : path;
}

void writeCore(std::ostream& out, const osg::NodeCorePtr& core, const std::string& folder)
{
    const auto transform = osg::fcCast<osg::Transform>(core);
    if (transform && !transform->isIdentity())
        writeMatrix(out, transform->getMatrix());
    if (const auto group = osg::fcCast<osg::MaterialGroup>(core))
        out << " material " << nameOf(group->getMaterial());
    if (const auto reference = osg::fcCast<osg::ExtReference>(core)) {
        if (reference->getSourceFile())
            out << " file " << shortPath(reference->getSourceFile(), folder);
        if (reference->getSmartFile())
            out << " smart file " << shortPath(reference->getSmartFile(), folder);
        out << " state " << reference->getState();
    }
}

void writeColor(std::ostream& out, const char* word, const osg::Color3f& color)
{
    out << ' ' << word << ' ' << color.red << ' ' << color.green << ' ' << color.blue;
}

void writeMaterial(std::ostream& out, const osg::SimpleMaterial& material, const std::string& name)
{
    out << name;
    writeColor(out, "ambient", material.getAmbient());
    writeColor(out, "diffuse", material.getDiffuse());
    writeColor(out, "emission", material.getEmission());
    writeColor(out, "specular", material.getSpecular());
    out << " transparency " << material.getTransparency() << " shininess " << material.getShininess() << '\n';
}

} // namespace

std::string treeText(const osg::NodePtr& root, const std::string& folder)
{
    if (!root)
        return "no tree\n";
    const auto shared = sharedCores(root);
    std::map<osg::NodePtr, std::size_t> depths{{root, 0}};
    std::ostringstream out;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const std::size_t depth = node == root ? 0 : depths.at(node->getParent()) + 1;
        depths[node] = depth;
        const osg::NodeCorePtr core = node->getCore();
        out << std::string(2 * depth, ' ') << nameOf(node) << " [" << core->getType().getName();
        if (const auto found = shared.find(core); found != shared.end())
            out << " @" << found->second;
        out << ']';
        writeCore(out, core, folder);
        out << (node->isActive() ? "\n" : " inactive\n");
        return osg::Action::Continue;
    });
    return out.str();
}

std::string recordText(const CADProductStructure& structure)
{
    std::ostringstream out;
    for (std::uint32_t id = 0; id < structure.getNodeCount(); ++id) {
        const CADNodeRecord& record = ProductStructureTestAccess::record(structure, id);
        out << id << ' ' << classOf(record.getElement()) << ' ' << steadyId(record.getElement()->getId()) << ' '
            << stateNames[static_cast<std::size_t>(record.getState())] << " node " << nameOf(record.getNode()) << " in "
            << nameOf(record.getParentNode());
        if (record.getMaterialNode())
            out << " material " << nameOf(record.getMaterialNode());
        for (std::uint32_t i = 0; i < record.getChildCount(); ++i)
            out << (i == 0 ? " children " : " ") << record.getChild(i);
        out << '\n';
    }
    return out.str();
}

std::string materialText(const osg::NodePtr& root)
{
    std::ostringstream out;
    std::set<osg::MaterialPtr> seen;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const auto group = osg::fcCast<osg::MaterialGroup>(node->getCore());
        const auto material = osg::fcCast<osg::SimpleMaterial>(group ? group->getMaterial() : osg::MaterialPtr());
        if (material && seen.insert(material).second)
            writeMaterial(out, *material, nameOf(material));
        return osg::Action::Continue;
    });
    return out.str();
}

} // namespace HB::Visualization
