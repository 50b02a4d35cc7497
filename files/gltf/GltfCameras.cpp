#include "files/gltf/GltfCameras.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"

#include <cmath>
#include <numbers>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

/// The number of this name; 0 when there is none.
double numberIn(const Json& object, const char* name)
{
    const auto found = object.is_object() ? object.find(name) : object.end();
    return found != object.end() && found->is_number() ? found->get<double>() : 0;
}

bool isIn(double value, double least, double most)
{
    return value > least && value < most;
}

std::optional<GltfCamera> cameraOf(const Json& json)
{
    GltfCamera camera;
    camera.isPerspective = json.value("type", std::string()) == "perspective";
    const Json lens = json.value(camera.isPerspective ? "perspective" : "orthographic", Json::object());
    camera.name = json.value("name", std::string());
    camera.angle = numberIn(lens, "yfov");
    camera.height = 2 * std::abs(numberIn(lens, "ymag"));
    camera.near = numberIn(lens, "znear");
    camera.far = numberIn(lens, "zfar");
    const bool isSound = camera.isPerspective ? isIn(camera.angle, 0, std::numbers::pi) && camera.near > 0
                                              : isIn(camera.height, 0, 1e12) && camera.near >= 0;
    const bool hasRange = camera.far > camera.near || (camera.isPerspective && camera.far == 0);
    return isSound && hasRange && isIn(camera.far, -1, 1e12) ? std::optional(camera) : std::nullopt;
}

/// Members of the wrong type make no camera.
std::optional<GltfCamera> tryCameraOf(const Json& json)
{
    try {
        return cameraOf(json);
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

} // namespace

std::vector<std::optional<GltfCamera>> readCameras(const nlohmann::json& document, ReadTask& task)
{
    std::vector<std::optional<GltfCamera>> cameras;
    const auto list = document.find("cameras");
    if (list == document.end() || !list->is_array())
        return cameras;
    for (const Json& json : *list) {
        cameras.push_back(tryCameraOf(json));
        if (!cameras.back())
            task.warn(tr("a camera without a possible lens was left out"),
                      QStringLiteral("/cameras/%1").arg(static_cast<qulonglong>(cameras.size() - 1)));
    }
    return cameras;
}

osg::UberCameraPtr makeCamera(const GltfCamera& camera, double millimetresPerUnit)
{
    const osg::UberCameraPtr core = osg::UberCameraBase::create();
    osg::setName(core, camera.name);
    osg::beginEditCP(core, osg::AllFieldsMask, 1);
    core->setNear(static_cast<float>(camera.near * millimetresPerUnit));
    if (camera.far > 0)
        core->setFar(static_cast<float>(camera.far * millimetresPerUnit));
    if (camera.isPerspective) {
        core->setFieldOfView(static_cast<float>(camera.angle * 180 / std::numbers::pi));
    } else {
        core->setProjection(osg::UberCameraBase::Parallel);
        core->setHeight(static_cast<float>(camera.height * millimetresPerUnit));
    }
    osg::endEditCP(core, osg::AllFieldsMask, 1);
    return core;
}

} // namespace files::gltf
