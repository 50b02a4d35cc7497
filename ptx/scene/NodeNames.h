#pragma once

#include "ptx/model/Model.h"

#include <string>

namespace ptx::scene
{

/// The name of the node of `occurrence`: its own, or that of its product when its own is empty, a mere number such as
/// "NAUO12", which CAD systems count up, or an address such as "=>[0:1:1:2]".
std::string nodeName(const model::Occurrence& occurrence, const model::Product& product);

} // namespace ptx::scene
