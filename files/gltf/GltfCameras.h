#pragma once

#include "files/ReadTask.h"
#include "host/znOpenSGUberCamera/UberCamera.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <vector>

namespace files::gltf
{

/// A lens of a document; lengths in its unit.
struct GltfCamera {
    std::string name;
    bool isPerspective = true;
    double angle = 0;  ///< of a perspective: radians from the lower to the upper edge
    double height = 0; ///< otherwise: from the lower to the upper edge
    double near = 0;
    double far = 0; ///< 0: there is no end
};

/// The cameras of the document, in its order. One whose numbers no camera can have is left out with a warning and
/// leaves its place empty.
std::vector<std::optional<GltfCamera>> readCameras(const nlohmann::json& document, ReadTask& task);

/// A camera core with this lens.
osg::UberCameraPtr makeCamera(const GltfCamera& camera, double millimetresPerUnit);

} // namespace files::gltf
