#include "files/obj/ObjReader.h"

#include "files/FileBytes.h"
#include "files/obj/MtlReader.h"
#include "files/obj/MtlSurfaces.h"
#include "files/obj/ObjParsing.h"
#include "scene/SceneEdits.h"

#include <map>
#include <utility>

namespace files::obj
{

namespace
{

/// Names of an object and of a group in it.
using Home = std::pair<std::string, std::string>;

/// The names of sections, without their elements.
std::vector<ObjSection> namesOf(const std::vector<ObjSection>& sections)
{
    std::vector<ObjSection> names;
    names.reserve(sections.size());
    for (const ObjSection& section : sections)
        names.push_back({section.object, section.group, section.material, {}});
    return names;
}

osg::NodePtr added(const osg::NodePtr& parent, const osg::NodePtr& child)
{
    osg::addChild(parent, child);
    return child;
}

/// Hangs the meshes of sections into a tree.
class ObjTree
{
public:
    ObjTree(const osg::NodePtr& place, const MtlMaterials& library, const std::vector<osg::Mesh>& meshes,
            ReadTask& task)
        : m_place(place), m_library(library), m_surfaces(task), m_meshes(meshes), m_task(task)
    {
    }

    void build(const std::vector<ObjSection>& sections);

private:
    void add(const ObjSection& section, const osg::Mesh& mesh);
    bool isAlone(const ObjSection& section) const;
    template <class Make>
    osg::NodePtr once(const Home& names, Make make);
    osg::NodePtr objectHome(const std::string& object);
    osg::NodePtr groupHome(const std::string& object, const std::string& group);
    osg::MaterialPtr material(const std::string& name);

    osg::NodePtr m_place;
    const MtlMaterials& m_library;
    MtlSurfaces m_surfaces;
    const std::vector<osg::Mesh>& m_meshes;
    ReadTask& m_task;
    std::map<Home, unsigned> m_inGroup;
    std::map<std::string, unsigned> m_inObject;
    std::map<Home, osg::NodePtr> m_homes;
    std::map<std::string, osg::RefPtr<osg::SimpleMaterialPtr>> m_materials;
};

void ObjTree::build(const std::vector<ObjSection>& sections)
{
    for (const ObjSection& section : sections) {
        ++m_inGroup[{section.object, section.group}];
        ++m_inObject[section.object];
    }
    for (std::size_t i = 0; i < sections.size(); ++i)
        add(sections[i], m_meshes[i]);
    m_surfaces.tellWhatIsMissing();
}

/// True when the one geometry of an object or a group can stand for it.
bool ObjTree::isAlone(const ObjSection& section) const
{
    if (section.group.empty())
        return !section.object.empty() && m_inObject.at(section.object) == 1;
    return m_inGroup.at({section.object, section.group}) == 1;
}

void ObjTree::add(const ObjSection& section, const osg::Mesh& mesh)
{
    if (mesh.positions.empty()) {
        m_task.warn(tr("nothing could be made of the faces of '%1'")
                        .arg(QString::fromStdString(section.group.empty() ? section.object : section.group)));
        return;
    }
    const osg::GeometryPtr core = makeGeometry({}, mesh, material(section.material));
    if (!isAlone(section))
        osg::addChild(groupHome(section.object, section.group), makeNode(section.material, core));
    else if (section.group.empty())
        osg::addChild(m_place, makeNode(section.object, core));
    else
        osg::addChild(objectHome(section.object), makeNode(section.group, core));
}

/// The node that `make` makes at the first call with these names.
template <class Make>
osg::NodePtr ObjTree::once(const Home& names, Make make)
{
    const auto [entry, isNew] = m_homes.try_emplace(names);
    if (isNew)
        entry->second = make();
    return entry->second;
}

osg::NodePtr ObjTree::objectHome(const std::string& object)
{
    if (object.empty())
        return m_place;
    return once({object, {}}, [&] { return added(m_place, makeGroup(object)); });
}

osg::NodePtr ObjTree::groupHome(const std::string& object, const std::string& group)
{
    if (group.empty())
        return objectHome(object);
    return once({object, group}, [&] { return added(objectHome(object), makeGroup(group)); });
}

osg::MaterialPtr ObjTree::material(const std::string& name)
{
    if (name.empty())
        return {};
    const auto [entry, isNew] = m_materials.try_emplace(name);
    if (isNew) {
        const auto known = m_library.find(name);
        const bool isKnown = known != m_library.end();
        if (!isKnown)
            m_task.warn(tr("no material library has the material '%1'").arg(QString::fromStdString(name)));
        entry->second = makeMaterial(name, isKnown ? m_surfaces.lookOf(known->second) : MaterialLook());
    }
    return entry->second.get();
}

} // namespace

osg::NodePtr readObj(ReadTask& task)
{
    ObjText obj = checkObj(readFile(task, task.path()).text(), task);
    const MtlMaterials library = readMtl(obj.libraries, task);
    const std::vector<ObjSection> sections = namesOf(obj.sections);
    const std::vector<osg::Mesh> meshes = parseObj(std::move(obj), task);
    FreshTree tree(makeGroup({}));
    ObjTree(placeForContent(tree.root(), task.options()), library, meshes, task).build(sections);
    return tree.take();
}

} // namespace files::obj
