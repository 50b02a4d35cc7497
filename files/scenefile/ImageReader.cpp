#include "files/scenefile/ImageReader.h"

#include "files/scenefile/ArrayReader.h"
#include "files/scenefile/SceneErrors.h"

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

files::Expected<ImageList> readImages(const ChunkFile& file, const fb::Scene& scene)
{
    const std::byte* start = file.data().bytes.data();
    std::uint64_t bytesLeft = file.data().bytes.size();
    ImageList images;
    if (!scene.images())
        return images;
    images.reserve(scene.images()->size());
    for (const fb::Image* record : *scene.images()) {
        Buffer<std::byte> bytes;
        ArrayReader reader(file);
        reader.read(&record->bytes(), ChunkType::Image, bytes);
        if (!reader.isSound() || bytes.size() > bytesLeft)
            return makeError(files::ErrorCode::DamagedGraph, Text::tr("The bytes of a picture lie outside their chunk"),
                             static_cast<std::uint64_t>(reinterpret_cast<const std::byte*>(record) - start));
        bytesLeft -= bytes.size();
        const auto text = [&](std::uint32_t index) { return scene.texts()->Get(index)->str(); };
        images.push_back(
            EncodedImage::share(file.data().owner, bytes.span(), text(record->mime_type()), text(record->name())));
    }
    return images;
}

} // namespace osg::scenefile
