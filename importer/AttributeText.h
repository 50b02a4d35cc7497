#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <string>
#include <unordered_set>

namespace importer
{

/// Attributes as text for a person.
class AttributeText
{
public:
    /// A line for each attribute of `node`, with `indentation` before it. Those of a product that were told already are
    /// not told again.
    std::string of(const osg::NodePtr& node, const std::string& indentation);

private:
    std::unordered_set<const osg::FieldContainer*> m_told;
};

} // namespace importer
