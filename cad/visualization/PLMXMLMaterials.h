#pragma once

#include "host/OSGSystem/Node.h"

namespace HB::XML::CAD
{
class CADMaterial;
}

namespace HB::Visualization
{

/// A material group with the colours of a document's material. Group and material bear its name.
osg::NodePtr makeMaterialNode(const XML::CAD::CADMaterial& source);

} // namespace HB::Visualization
