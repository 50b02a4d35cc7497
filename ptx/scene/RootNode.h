#pragma once

#include "host/OSGSystem/Node.h"

#include <string>

namespace ptx::model
{
struct Model;
} // namespace ptx::model

namespace ptx::scene
{

/// The root of a converted tree: it refers to `input` as a loaded file, is named after it, and is tagged.
osg::NodePtr makeRootNode(const std::string& input, const model::Model& model);

} // namespace ptx::scene
