#include "host/OSGSystem/Material.h"

namespace osg
{

FieldContainerType MaterialBase::_type("Material", &AttachmentContainer::_type, "Material");

} // namespace osg
