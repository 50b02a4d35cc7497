#pragma once

#include "scene/Attributes.h"

#include <nlohmann/json.hpp>

#include <cstddef>

namespace files::gltf
{

/// The attributes of an object in the form of `files::glb::attributesText`: an array is one of several values of a
/// name. Objects that are no values are gone into. What is no value is counted into `leftOut`; null says nothing.
/// Within the limits of `scene/AttributeLimits.h`.
osg::AttributeList attributesIn(const nlohmann::json& object, std::size_t& leftOut);

/// The same for extras of any origin: an array of texts, numbers and booleans is a list of texts. Extras that are no
/// object have the name "extras".
osg::AttributeList foreignAttributesIn(const nlohmann::json& extras, std::size_t& leftOut);

} // namespace files::gltf
