#include "files/ply/PlyReader.h"

#include "files/FileBytes.h"
#include "files/ImageFiles.h"
#include "files/SceneBuilding.h"
#include "files/ply/PlyElements.h"
#include "host/OSGSystem/Names.h"
#include "scene/SceneEdits.h"

#include <set>

namespace files::ply
{

namespace
{

/// Hangs the parts of a file into a tree, with the pictures that they bear.
class PlyTree
{
public:
    PlyTree(const PlyHeader& header, ReadTask& task) : m_header(header), m_task(task), m_images(task, task.path()) {}

    void build(std::vector<TexturePart> parts, const osg::NodePtr& place);

private:
    osg::MaterialPtr material(std::int32_t texture, const osg::Mesh& mesh);

    const PlyHeader& m_header;
    ReadTask& m_task;
    ImageFiles m_images;
};

/// White but for the picture, and named after it.
osg::MaterialPtr PlyTree::material(std::int32_t texture, const osg::Mesh& mesh)
{
    if (texture < 0 || mesh.triangles.empty())
        return {};
    if (mesh.texCoords.empty()) {
        m_task.warn(tr("a picture was left out: neither vertices nor faces have texture coordinates"));
        return {};
    }
    MaterialLook look;
    osg::Texture picture;
    picture.image = m_images.at(m_header.textures[static_cast<std::size_t>(texture)], tr("TextureFile"));
    if (!picture.image)
        return {};
    look.diffuse = {1, 1, 1};
    look.surface.emplace().textures[osg::TextureSlot::BaseColor] = picture;
    return makeMaterial(picture.image->name().substr(0, picture.image->name().rfind('.')), look);
}

void PlyTree::build(std::vector<TexturePart> parts, const osg::NodePtr& place)
{
    std::set<std::int32_t> borne;
    bool hasUnused = false;
    for (TexturePart& part : parts) {
        osg::Mesh mesh = osg::meshOf(std::move(part.arrays));
        const osg::RefPtr<osg::MaterialPtr> made(material(part.texture, mesh));
        borne.insert(part.texture);
        if (made && !mesh.colors.empty()) {
            mesh.colors = {};
            hasUnused = true;
        }
        const std::string name = made && parts.size() > 1 ? osg::getName(made.get()) : "";
        osg::addChild(place, makeNode(name, makeGeometry({}, std::move(mesh), made.get())));
    }
    borne.erase(-1);
    if (hasUnused)
        m_task.warn(tr("the colours of vertices were left out: a picture stands instead of them"));
    if (borne.size() < m_header.textures.size())
        m_task.warn(tr("%1 pictures were left out: no face bears them")
                        .arg(static_cast<qulonglong>(m_header.textures.size() - borne.size())));
}

} // namespace

osg::NodePtr readPly(ReadTask& task)
{
    const FileBytes file = readFile(task, task.path());
    const PlyHeader header = readPlyHeader(file.text(), task);
    std::vector<TexturePart> parts = readPlyElements(header, file.text(), task);
    FreshTree tree(makeGroup({}));
    PlyTree(header, task).build(std::move(parts), placeForContent(tree.root(), task.options()));
    return tree.take();
}

} // namespace files::ply
