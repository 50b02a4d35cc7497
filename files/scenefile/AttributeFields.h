#pragma once

#include "files/scenefile/SceneCodecs.h"

namespace osg::scenefile
{

/// Adds what the file stores of `attributes` to `fields`.
void addAttributeFields(const AttributeList& attributes, ObjectNumbers& numbers, AttachmentFields& fields);

/// Reads attributes from the records of a checked graph each time when they are asked for; the place is the
/// `fb::Attachment`. It shares `owner`, which keeps the bytes of `scene` alive.
std::shared_ptr<const AttributeSource> makeAttributeSource(const fb::Scene& scene, std::shared_ptr<const void> owner);

} // namespace osg::scenefile
