#include "host/OSGSystem/Drawable.h"

namespace osg
{

FieldContainerType DrawableBase::_type("Drawable", &NodeCore::_type);

} // namespace osg
