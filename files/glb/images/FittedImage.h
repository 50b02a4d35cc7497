#pragma once

#include "files/Expected.h"
#include "host/OSGSystem/EncodedImage.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace files::glb::images
{

/// A picture in a form that a glTF file may have.
struct FittedImage {
    std::shared_ptr<const void> owner; ///< keeps the bytes alive
    std::span<const std::byte> bytes;
    std::string mimeType;
};

/// Pixels of a picture that is decoded, at most.
inline constexpr std::int64_t mostPixels = std::int64_t(1) << 28;

/// `image` as it is if glTF knows its kind (PNG, JPEG, and by extensions WebP, KTX2 and DDS) and neither side is longer
/// than `mostSide` pixels (0 for any length); else decoded, made smaller and encoded as it was, or as PNG. A KTX2 or
/// DDS picture stays as it is, for it is not decoded here. The error says why there is no such picture.
files::Expected<FittedImage> fitted(const osg::EncodedImagePtr& image, int mostSide);

} // namespace files::glb::images
