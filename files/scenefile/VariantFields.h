#pragma once

#include "files/scenefile/SceneCodecs.h"
#include "scene/VariantTable.h"

namespace osg::scenefile
{

/// The numbers of the texts of `table`, which must live until the file is written.
VariantFields variantFields(const VariantTable& table, ObjectNumbers& numbers);
/// No more bytes than this are added by `storeVariants`.
std::uint64_t storedSize(const VariantFields& fields);
flatbuffers::Offset<fb::Variants> storeVariants(const VariantFields& fields, flatbuffers::FlatBufferBuilder& builder);
VariantTable restoreVariants(const fb::Variants& record, const NumberedObjects& objects);

} // namespace osg::scenefile
