#include "scene/NameRevisions.h"

#include "host/OSGSystem/Material.h"
#include "host/znOpenSGUberCamera/UberCamera.h"

namespace osg
{

namespace
{

std::uint64_t materialNames = 1;
std::uint64_t cameraNames = 1;

bool isOf(const FieldContainerType& wanted, const AttachmentContainer& container)
{
    for (const FieldContainerType* type = &container.getType(); type; type = type->getParent())
        if (type == &wanted)
            return true;
    return false;
}

} // namespace

std::uint64_t materialNamesRevision()
{
    return materialNames;
}

std::uint64_t cameraNamesRevision()
{
    return cameraNames;
}

void poolChanged()
{
    ++materialNames;
}

void nameChanged(const AttachmentContainer& container)
{
    if (isOf(MaterialBase::_type, container))
        ++materialNames;
    else if (isOf(UberCameraBase::_type, container))
        ++cameraNames;
}

} // namespace osg
