#pragma once

#include "files/scenefile/SceneCodecs.h"
#include "scene/Attributes.h"

namespace osg::scenefile
{

/// The attributes of a checked record, as files have them that know no table of attributes.
AttributeList attributesIn(const fb::Attachment& record, const NumberedObjects& objects);

} // namespace osg::scenefile
