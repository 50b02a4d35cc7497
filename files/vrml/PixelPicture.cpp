#include "files/vrml/PixelPicture.h"

#include <zlib.h>

#include <array>
#include <string_view>

namespace files::vrml
{

namespace
{

using Bytes = std::vector<std::byte>;
using namespace std::string_view_literals;

constexpr std::string_view pngSignature = "\x89PNG\r\n\x1a\n"sv;
constexpr std::size_t lengthOfNumber = 4;
constexpr unsigned colorChannels = 3;

void append(Bytes& bytes, std::string_view text)
{
    const auto* data = reinterpret_cast<const std::byte*>(text.data());
    bytes.insert(bytes.end(), data, data + text.size());
}

void appendNumber(Bytes& bytes, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::byte>(number >> shift));
}

/// Length, type, content, and the check sum of the latter two.
void appendChunk(Bytes& png, std::string_view type, const Bytes& content)
{
    appendNumber(png, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = png.size();
    append(png, type);
    png.insert(png.end(), content.begin(), content.end());
    const uLong sum = crc32_z(0, reinterpret_cast<const Bytef*>(png.data() + start), png.size() - start);
    appendNumber(png, static_cast<std::uint32_t>(sum));
}

/// PNG begins at the top, and each line with the number of its filter, 0 for none.
Bytes linesOf(std::span<const std::int32_t> pixels, std::size_t width, unsigned channels)
{
    Bytes lines;
    lines.reserve(pixels.size() * channels + pixels.size() / width);
    for (std::size_t first = pixels.size(); first > 0;) {
        first -= width;
        lines.push_back(std::byte{0});
        for (const std::int32_t pixel : pixels.subspan(first, width))
            for (unsigned channel = channels; channel-- > 0;)
                lines.push_back(static_cast<std::byte>(static_cast<std::uint32_t>(pixel) >> (8 * channel)));
    }
    return lines;
}

Bytes packed(const Bytes& bytes)
{
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    Bytes result(size);
    compress2(reinterpret_cast<Bytef*>(result.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
              static_cast<uLong>(bytes.size()), Z_BEST_COMPRESSION);
    result.resize(size);
    return result;
}

unsigned byteAt(std::span<const std::byte> bytes, std::size_t at)
{
    return at < bytes.size() ? std::to_integer<unsigned>(bytes[at]) : 0;
}

std::uint32_t numberAt(std::span<const std::byte> bytes, std::size_t at)
{
    return byteAt(bytes, at) << 24 | byteAt(bytes, at + 1) << 16 | byteAt(bytes, at + 2) << 8 | byteAt(bytes, at + 3);
}

std::string_view textOf(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The kind of colours stands behind width, height and depth of the first chunk; colours of a palette, and one that
/// stands for what is not there, may have alpha in a chunk "tRNS" before the pixels.
unsigned channelsOfPng(std::span<const std::byte> png)
{
    constexpr std::size_t placeOfKind = 25;
    constexpr unsigned isColor = 2, hasAlpha = 4;
    const unsigned kind = byteAt(png, placeOfKind);
    const unsigned plain = (kind & isColor) != 0 ? colorChannels : 1;
    if ((kind & hasAlpha) != 0)
        return plain + 1;
    for (std::uint64_t at = pngSignature.size(); at + 2 * lengthOfNumber <= png.size();) {
        const std::string_view type = textOf(png).substr(at + lengthOfNumber, lengthOfNumber);
        if (type == "tRNS")
            return plain + 1;
        if (type == "IDAT")
            break;
        at += std::uint64_t(numberAt(png, at)) + 3 * lengthOfNumber;
    }
    return plain;
}

/// Segments of a marker and a length follow each other; that of a frame says how many components there are.
unsigned channelsOfJpeg(std::span<const std::byte> jpeg)
{
    for (std::uint64_t at = 2; at + lengthOfNumber <= jpeg.size();) {
        const unsigned marker = byteAt(jpeg, at + 1);
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        constexpr std::size_t placeOfCount = 9;
        if (isFrame)
            return byteAt(jpeg, at + placeOfCount) == 1 ? 1 : colorChannels;
        at += 2 + (byteAt(jpeg, at + 2) << 8 | byteAt(jpeg, at + 3));
    }
    return colorChannels;
}

} // namespace

std::vector<std::byte> pngOfPixels(std::span<const std::int32_t> image)
{
    constexpr std::size_t head = 3;
    constexpr unsigned mostChannels = 4;
    if (image.size() <= head || image[0] <= 0 || image[1] <= 0 || image[2] < 1 || image[2] > int(mostChannels))
        return {};
    const auto width = static_cast<std::uint64_t>(image[0]), height = static_cast<std::uint64_t>(image[1]);
    const auto channels = static_cast<unsigned>(image[2]);
    if (image.size() - head < width * height)
        return {};
    constexpr std::array<unsigned, mostChannels> kinds = {0, 4, 2, 6};
    Bytes header;
    appendNumber(header, static_cast<std::uint32_t>(width));
    appendNumber(header, static_cast<std::uint32_t>(height));
    for (const unsigned value : {8u, kinds[channels - 1], 0u, 0u, 0u}) // bits, kind, packing, filter, no interlacing
        header.push_back(static_cast<std::byte>(value));
    Bytes png;
    append(png, pngSignature);
    appendChunk(png, "IHDR", header);
    appendChunk(png, "IDAT", packed(linesOf(image.subspan(head, width * height), width, channels)));
    appendChunk(png, "IEND", {});
    return png;
}

unsigned channelsOf(std::span<const std::byte> file)
{
    const std::string_view text = textOf(file);
    if (text.starts_with(pngSignature))
        return channelsOfPng(file);
    return text.starts_with("\xff\xd8"sv) ? channelsOfJpeg(file) : colorChannels;
}

} // namespace files::vrml
