#pragma once

#include "files/scenefile/SceneCodecs.h"
#include "host/OSGSystem/PhysicalSurface.h"

namespace osg::scenefile
{

/// The record of `surface` with the numbers of its images, which must live until the file is written.
SurfaceFields surfaceFields(const PhysicalSurface& surface, ObjectNumbers& numbers);
/// No more bytes than this are added by `storeSurface`.
std::uint64_t storedSize(const SurfaceFields& fields);
flatbuffers::Offset<fb::Surface> storeSurface(const SurfaceFields& fields, flatbuffers::FlatBufferBuilder& builder);
/// Whether the record keeps the promises of `PhysicalSurface`: known slots, each once, with known words and an image.
/// `images` is how many the file has.
bool isSound(const fb::Surface& record, std::uint64_t images);
/// The surface of a sound record.
PhysicalSurface restoreSurface(const fb::Surface& record, const NumberedObjects& objects);

} // namespace osg::scenefile
