#include "render/StudioSet.h"

#include "render/studio/HdrFile.h"
#include "render/studio/StudioLight.h"

namespace render
{

namespace
{

/// How many values the light of the built-in studio has once around.
constexpr int studioDetail = 1024;

} // namespace

files::Expected<std::unique_ptr<StudioSet>> studioSetFor(const geometry::rays::PartList& list,
                                                         const SnapshotOptions& options, int threads)
{
    if (options.look != SnapshotLook::Studio)
        return std::unique_ptr<StudioSet>();
    studio::RadianceFunction light = studio::studioLight;
    int detail = studioDetail;
    studio::HdrPicture picture;
    if (!options.environmentFile.isEmpty()) {
        files::Expected<studio::HdrPicture> read =
            studio::readHdrFile(options.environmentFile, options.limits.maxEnvironmentPixels);
        if (!read)
            return read.error();
        picture = std::move(read).value();
        light = [&picture](const Eigen::Vector3f& direction) { return picture.at(direction); };
        detail = picture.width;
    }
    return std::make_unique<StudioSet>(StudioSet{studio::MaterialTable(list, options.limits.maxTexturePixels),
                                                 studio::Environment(light, detail, threads, options.cancel)});
}

} // namespace render
