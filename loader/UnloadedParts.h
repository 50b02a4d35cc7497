#pragma once

#include "host/OSGSystem/Pointers.h"

#include <string>
#include <unordered_map>
#include <vector>

/// From the path of a part file to all reference nodes that name it.
using UnloadedParts = std::unordered_map<std::string, std::vector<osg::NodePtr>>;
