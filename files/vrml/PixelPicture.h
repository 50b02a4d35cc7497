#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace files::vrml
{

/// A PNG file of the picture that is the value of a field SFImage: width, height, how many of 1 to 4 channels, then the
/// pixels, from the lower left corner to the right and up, the first channel in the highest byte. Empty when `image` is
/// no such picture, or one without pixels.
std::vector<std::byte> pngOfPixels(std::span<const std::int32_t> image);

/// How many channels the picture of a file has: 1 grey, 2 grey and alpha, 3 colours, 4 colours and alpha. 3 for files
/// that are neither PNG nor JPEG, or damaged.
unsigned channelsOf(std::span<const std::byte> file);

} // namespace files::vrml
