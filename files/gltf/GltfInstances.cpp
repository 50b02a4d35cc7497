#include "files/gltf/GltfInstances.h"

#include "scene/MatrixMath.h"

#include <algorithm>
#include <cmath>

namespace files::gltf
{

namespace
{

/// The accessors of the places, -1 for what is not told.
struct Lists {
    int translation = -1;
    int rotation = -1;
    int scale = -1;
};

int accessorOf(const tinygltf::Value& attributes, const char* name)
{
    return attributes.IsObject() && attributes.Has(name) ? attributes.Get(name).GetNumberAsInt() : -1;
}

/// How many places the lists tell. Nothing is read for it.
std::size_t countOf(const Lists& lists, const GltfAccessors& accessors, const ReadTask& task, const QString& place)
{
    std::optional<std::size_t> count;
    for (const int list : {lists.translation, lists.rotation, lists.scale}) {
        if (list < 0)
            continue;
        if (count && *count != accessors.count(list))
            task.fail(ErrorCode::Damaged, tr("the lists of the instances have different lengths"), place);
        count = accessors.count(list);
    }
    if (!count)
        task.fail(ErrorCode::Damaged, tr("the instances have no places"), place);
    return *count;
}

bool isFinite(const osg::Matrix& matrix)
{
    return std::all_of(matrix.values.begin(), matrix.values.end(), [](float value) { return std::isfinite(value); });
}

} // namespace

std::optional<std::vector<osg::Matrix>> instancesOf(const tinygltf::Node& node, GltfAccessors& accessors,
                                                    ReadTask& task, const QString& place)
{
    const auto extension = node.extensions.find("EXT_mesh_gpu_instancing");
    if (extension == node.extensions.end() || node.mesh < 0)
        return std::nullopt;
    const tinygltf::Value attributes =
        extension->second.IsObject() ? extension->second.Get("attributes") : tinygltf::Value();
    const Lists lists = {accessorOf(attributes, "TRANSLATION"), accessorOf(attributes, "ROTATION"),
                         accessorOf(attributes, "SCALE")};
    const std::size_t count = countOf(lists, accessors, task, place);
    task.countNodes(count);
    task.takeMemory(count * (sizeof(osg::Matrix) + 2 * sizeof(osg::Quaternion)), place);
    const auto vectors = [&](int list) { return list < 0 ? osg::Buffer<osg::Vec3f>() : accessors.vectors(list); };
    const osg::Buffer<osg::Vec3f> translations = vectors(lists.translation);
    const osg::Buffer<osg::Vec3f> scales = vectors(lists.scale);
    const std::vector<osg::Quaternion> rotations =
        lists.rotation < 0 ? std::vector<osg::Quaternion>() : accessors.rotations(lists.rotation);
    std::vector<osg::Matrix> result;
    result.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(osg::composed({translations.empty() ? osg::Vec3f() : translations[i],
                                        rotations.empty() ? osg::Quaternion() : rotations[i],
                                        scales.empty() ? osg::Vec3f{1, 1, 1} : scales[i],
                                        {}}));
        if (!isFinite(result.back()))
            task.fail(ErrorCode::Damaged, tr("the transform of an instance has no finite numbers"), place);
    }
    return result;
}

} // namespace files::gltf
