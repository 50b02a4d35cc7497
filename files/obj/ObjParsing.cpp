#include "files/obj/ObjParsing.h"

#include "files/obj/MeshWelding.h"

#include <assimp/IOSystem.hpp>
#include <assimp/Importer.hpp>
#include <assimp/MemoryIOWrapper.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <charconv>
#include <optional>

namespace files::obj
{

namespace
{

constexpr const char* objName = "scene.obj";
constexpr const char* mtlName = "scene.mtl";

/// Shows the two texts to assimp as the only files there are.
class TextFiles : public Assimp::IOSystem
{
public:
    TextFiles(const std::string& obj, const std::string& mtl) : m_obj(obj), m_mtl(mtl) {}

    bool Exists(const char* file) const override { return textOf(file) != nullptr; }
    char getOsSeparator() const override { return '/'; }
    void Close(Assimp::IOStream* stream) override { delete stream; }
    Assimp::IOStream* Open(const char* file, const char*) override
    {
        const std::string* text = textOf(file);
        if (!text)
            return nullptr;
        return new Assimp::MemoryIOStream(reinterpret_cast<const std::uint8_t*>(text->data()), text->size());
    }

private:
    const std::string* textOf(std::string_view file) const
    {
        if (file.ends_with(objName))
            return &m_obj;
        return file.ends_with(mtlName) ? &m_mtl : nullptr;
    }

    const std::string& m_obj;
    const std::string& m_mtl;
};

/// One text of all parts. Sections become groups whose names are their numbers; the parts are used up.
std::string wholeText(ObjText obj)
{
    std::string text = std::string("mtllib ") + mtlName + '\n';
    text += std::exchange(obj.vertices, {});
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

void appendElements(const aiMesh& from, osg::MeshArrays& to)
{
    for (unsigned i = 0; i < from.mNumFaces; ++i) {
        const aiFace& face = from.mFaces[i];
        if (face.mNumIndices < 1 || face.mNumIndices > 3)
            continue;
        std::vector<std::uint32_t>* targets[] = {&to.points, &to.lines, &to.triangles};
        std::vector<std::uint32_t>& target = *targets[face.mNumIndices - 1];
        target.insert(target.end(), face.mIndices, face.mIndices + face.mNumIndices);
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

osg::Color3f colorOf(const aiMaterial& material, const char* key, unsigned type, unsigned index)
{
    aiColor3D color;
    material.Get(key, type, index, color);
    return {color.r, color.g, color.b};
}

MaterialLook lookOf(const aiMaterial& material)
{
    MaterialLook look;
    look.ambient = colorOf(material, AI_MATKEY_COLOR_AMBIENT);
    look.diffuse = colorOf(material, AI_MATKEY_COLOR_DIFFUSE);
    look.specular = colorOf(material, AI_MATKEY_COLOR_SPECULAR);
    look.emission = colorOf(material, AI_MATKEY_COLOR_EMISSIVE);
    material.Get(AI_MATKEY_SHININESS, look.shininess);
    float opacity = 1;
    material.Get(AI_MATKEY_OPACITY, opacity);
    look.transparency = 1 - opacity;
    return look;
}

std::vector<MaterialLook> materialsOf(const aiScene& scene, std::size_t count)
{
    std::vector<MaterialLook> looks(count);
    for (unsigned i = 0; i < scene.mNumMaterials; ++i)
        if (const auto number = numberIn(scene.mMaterials[i]->GetName(), count))
            looks[*number] = lookOf(*scene.mMaterials[i]);
    return looks;
}

} // namespace

ParsedObj parseObj(ObjText obj, const MtlText& mtl, const ReadTask& task)
{
    const std::size_t sections = obj.sections.size();
    const std::string text = wholeText(std::move(obj));
    Assimp::Importer importer;
    importer.SetIOHandler(new TextFiles(text, mtl.text));
    const aiScene* scene = importer.ReadFile(objName, aiProcess_Triangulate);
    if (!scene || !scene->mRootNode)
        task.fail(ErrorCode::Damaged, QString::fromUtf8(importer.GetErrorString()));
    return {meshesOf(*scene, sections), materialsOf(*scene, mtl.numbers.size())};
}

} // namespace files::obj
