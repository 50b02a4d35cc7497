#include "files/obj/ObjParsing.h"

#include "files/obj/MeshWelding.h"
#include "scene/Polygons.h"

#include <assimp/IOSystem.hpp>
#include <assimp/Importer.hpp>
#include <assimp/MemoryIOWrapper.h>
#include <assimp/scene.h>

#include <charconv>
#include <optional>
#include <span>

namespace files::obj
{

namespace
{

constexpr const char* fileName = "scene.obj";

/// Shows the text to assimp as the only file there is.
class TextFile : public Assimp::IOSystem
{
public:
    explicit TextFile(const std::string& text) : m_text(text) {}

    bool Exists(const char* file) const override { return std::string_view(file).ends_with(fileName); }
    char getOsSeparator() const override { return '/'; }
    void Close(Assimp::IOStream* stream) override { delete stream; }
    Assimp::IOStream* Open(const char* file, const char*) override
    {
        if (!Exists(file))
            return nullptr;
        return new Assimp::MemoryIOStream(reinterpret_cast<const std::uint8_t*>(m_text.data()), m_text.size());
    }

private:
    const std::string& m_text;
};

/// One text of all parts. Sections become groups whose names are their numbers; the parts are used up.
std::string wholeText(ObjText obj)
{
    std::string text = std::exchange(obj.vertices, {});
    for (std::size_t i = 0; i < obj.sections.size(); ++i) {
        text.append("g ").append(std::to_string(i)).append(1, '\n');
        text += std::exchange(obj.sections[i].elements, {});
    }
    return text;
}

/// The number that `name` is, if it is one below `count`.
std::optional<std::size_t> numberIn(const aiString& name, std::size_t count)
{
    std::size_t number = 0;
    const char* end = name.data + name.length;
    const auto [rest, error] = std::from_chars(name.data, end, number);
    const bool isNumber = error == std::errc() && rest == end && number < count;
    return isNumber ? std::optional(number) : std::nullopt;
}

void appendVertices(const aiMesh& from, osg::MeshArrays& to)
{
    for (unsigned i = 0; i < from.mNumVertices; ++i) {
        const aiVector3D& position = from.mVertices[i];
        to.positions.push_back({position.x, position.y, position.z});
        if (from.HasNormals())
            to.normals.push_back({from.mNormals[i].x, from.mNormals[i].y, from.mNormals[i].z});
        if (from.HasTextureCoords(0))
            to.texCoords.push_back({from.mTextureCoords[0][i].x, from.mTextureCoords[0][i].y});
        if (const aiColor4D* colors = from.mColors[0])
            to.colors.push_back({colors[i].r, colors[i].g, colors[i].b, colors[i].a});
    }
}

void append(std::span<const std::uint32_t> corners, std::vector<std::uint32_t>& elements)
{
    elements.insert(elements.end(), corners.begin(), corners.end());
}

/// The library's own triangulation takes the square of a face's corners.
void appendElements(const aiMesh& from, osg::MeshArrays& to)
{
    for (const aiFace& face : std::span(from.mFaces, from.mNumFaces)) {
        const std::span<const std::uint32_t> corners(face.mIndices, face.mNumIndices);
        if (corners.size() > 2)
            osg::appendPolygon(to.positions, corners, to.triangles);
        else if (!corners.empty())
            append(corners, corners.size() == 1 ? to.points : to.lines);
    }
}

std::vector<osg::Mesh> meshesOf(const aiScene& scene, std::size_t count)
{
    std::vector<osg::Mesh> meshes(count);
    for (unsigned i = 0; i < scene.mRootNode->mNumChildren; ++i) {
        const aiNode& node = *scene.mRootNode->mChildren[i];
        const std::optional<std::size_t> section = numberIn(node.mName, count);
        if (!section || node.mNumMeshes != 1)
            continue;
        osg::MeshArrays arrays;
        appendVertices(*scene.mMeshes[node.mMeshes[0]], arrays);
        appendElements(*scene.mMeshes[node.mMeshes[0]], arrays);
        meshes[*section] = weldedMesh(std::move(arrays));
    }
    return meshes;
}

} // namespace

std::vector<osg::Mesh> parseObj(ObjText obj, const ReadTask& task)
{
    const std::size_t sections = obj.sections.size();
    const std::string text = wholeText(std::move(obj));
    Assimp::Importer importer;
    importer.SetIOHandler(new TextFile(text));
    const aiScene* scene = importer.ReadFile(fileName, 0);
    if (!scene || !scene->mRootNode)
        task.fail(ErrorCode::Damaged, QString::fromUtf8(importer.GetErrorString()));
    return meshesOf(*scene, sections);
}

} // namespace files::obj
