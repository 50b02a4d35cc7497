#pragma once

#include "files/SceneBuilding.h"
#include "files/vrml/VrmlFiles.h"
#include "files/vrml/VrmlMaterials.h"

#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

namespace files::vrml
{

/// Hangs the nodes of files into a tree. What is made of one node of a file has one core, however often it is used.
class Tree
{
public:
    Tree(Files& files, ReadTask& task) : m_files(files), m_task(task) {}

    /// Adds what is at the top of `file` to `parent`.
    void build(const File& file, const osg::NodePtr& parent);
    bool hasGeometry() const { return m_hasGeometry; }

private:
    void add(const Node& node, const osg::NodePtr& parent);
    void addAll(std::span<Node* const> nodes, const osg::NodePtr& parent);
    void addChosen(const Node& node, const osg::NodePtr& parent);
    void addInline(const Node& node, const osg::NodePtr& parent);
    void addShape(const Node& node, const osg::NodePtr& parent);
    osg::NodePtr makeGroupFor(const Node& node, const osg::NodePtr& parent);
    template <class Make>
    osg::NodeCorePtr coreOf(const Node& node, Make make);
    osg::NodeCorePtr makeShape(const Node& node);
    const osg::Mesh& meshFor(const Node& geometry, bool isTextured);
    osg::NodeCorePtr makeCamera(const Node& node) const;
    const Source& source() const { return m_open.back()->source; }

    Files& m_files;
    ReadTask& m_task;
    Textures m_textures;
    Materials m_materials;
    std::vector<const File*> m_open; ///< the file whose nodes are added, and those that took it in
    std::unordered_map<const Node*, osg::RefPtr<osg::NodeCorePtr>> m_cores; ///< null for a shape without a mesh
    std::map<std::pair<const Node*, bool>, osg::Mesh> m_meshes; ///< by node, and whether a picture is laid upon it
    std::uint64_t m_depth = 0;
    bool m_hasGeometry = false;
};

} // namespace files::vrml
