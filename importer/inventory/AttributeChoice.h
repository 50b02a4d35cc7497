#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What a scene says of its parts: choices of attributes and nodes, lists of parts.
namespace importer::inventory
{

/// How much of the attributes of a scene is to be kept.
enum class AttributeDetail {
    None,
    Names, ///< the names, with empty texts as values
    All
};

/// Which attributes of a scene are to be kept. A file may hold what is not meant for whoever gets the output.
struct AttributeChoice {
    AttributeDetail detail = AttributeDetail::All;
    /// Patterns of names (`osg::matchesPattern`). An attribute is taken when its name is of one of those without "!"
    /// before it, or there are none of these, and of none of those with it.
    std::vector<std::string> patterns = {};

    bool takesAll() const { return detail == AttributeDetail::All && patterns.empty(); }
    bool takes(std::string_view name) const;
};

/// What is chosen of `attributes`.
osg::AttributeList chosenOf(const osg::AttributeList& attributes, const AttributeChoice& choice);

/// Takes away what is not chosen from the nodes at and below `root` and their materials. What nodes share stays shared.
void applyAttributeChoice(const osg::NodePtr& root, const AttributeChoice& choice);

/// How often each name occurs at and below `root`; what nodes share counts once.
std::map<std::string, std::size_t> countAttributes(const osg::NodePtr& root);

} // namespace importer::inventory
