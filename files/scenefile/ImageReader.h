#pragma once

#include "files/scenefile/ChunkFile.h"
#include "host/OSGSystem/EncodedImage.h"

#include <scene_generated.h>

namespace osg::scenefile
{

using ImageList = std::vector<EncodedImagePtr>;

/// The images of a checked graph. Their bytes are those of the file and keep it alive. Each lies within its chunk, and
/// all of them together are no longer than the file: who shares images by their content looks at every byte.
files::Expected<ImageList> readImages(const ChunkFile& file, const sceneformat::Scene& scene);

} // namespace osg::scenefile
