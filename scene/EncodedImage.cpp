#include "host/OSGSystem/EncodedImage.h"

#include <QCryptographicHash>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace osg
{

namespace
{

/// The images that somebody holds, by their hash.
using Living = std::unordered_multimap<std::uint64_t, std::weak_ptr<const EncodedImage>>;

Living& living()
{
    // Never destroyed: images may be held by objects that live as long as the program.
    static auto* const images = new Living;
    return *images;
}

std::uint64_t hashOf(std::span<const std::byte> bytes)
{
    constexpr std::size_t step = std::size_t(1) << 30; // addData counts in int
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (std::size_t at = 0; at < bytes.size(); at += step)
        hash.addData(reinterpret_cast<const char*>(bytes.data()) + at,
                     static_cast<int>(std::min(step, bytes.size() - at)));
    const QByteArray digest = hash.result();
    std::uint64_t result = 0;
    for (int i = 0; i < 8; ++i)
        result = result << 8 | static_cast<unsigned char>(digest[i]);
    return result;
}

bool haveEqualBytes(std::span<const std::byte> a, std::span<const std::byte> b)
{
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

/// How the files of a kind begin: `text` stands at `offset`.
struct Beginning {
    std::size_t offset;
    std::string_view text;
    const char* mimeType;
};

using namespace std::string_view_literals;

constexpr std::array<Beginning, 7> beginnings = {{
    {0, "\x89PNG\r\n\x1a\n"sv, "image/png"},
    {0, "\xff\xd8\xff"sv, "image/jpeg"},
    {8, "WEBP"sv, "image/webp"},
    {0, "\xabKTX 20\xbb\r\n\x1a\n"sv, "image/ktx2"},
    {0, "GIF8"sv, "image/gif"},
    {0, "BM"sv, "image/bmp"},
    {0, "DDS "sv, "image/vnd-ms.dds"},
}};

} // namespace

struct EncodedImage::Content {
    std::shared_ptr<const void> owner;
    std::span<const std::byte> bytes;
    std::string mimeType;
    std::string name;
    std::uint64_t hash = 0;
};

std::string imageMimeType(std::span<const std::byte> bytes)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (const Beginning& kind : beginnings)
        if (text.size() >= kind.offset && text.substr(kind.offset).starts_with(kind.text))
            return kind.mimeType;
    return {};
}

EncodedImagePtr EncodedImage::share(std::vector<std::byte> bytes, const std::string& mimeType, const std::string& name)
{
    const auto owner = std::make_shared<const std::vector<std::byte>>(std::move(bytes));
    return share(owner, *owner, mimeType, name);
}

EncodedImagePtr EncodedImage::share(std::shared_ptr<const void> owner, std::span<const std::byte> bytes,
                                    const std::string& mimeType, const std::string& name)
{
    const std::uint64_t hash = hashOf(bytes);
    const auto [first, last] = living().equal_range(hash);
    for (auto known = first; known != last; ++known)
        if (EncodedImagePtr image = known->second.lock(); image && haveEqualBytes(image->bytes(), bytes))
            return image;
    const EncodedImagePtr image(
        new EncodedImage({std::move(owner), bytes, mimeType.empty() ? imageMimeType(bytes) : mimeType, name, hash}));
    living().emplace(hash, image);
    return image;
}

EncodedImage::EncodedImage(Content content)
    : m_owner(std::move(content.owner)), m_bytes(content.bytes), m_mimeType(std::move(content.mimeType)),
      m_name(std::move(content.name)), m_hash(content.hash)
{
}

EncodedImage::~EncodedImage()
{
    const auto [first, last] = living().equal_range(m_hash);
    const auto own = std::find_if(first, last, [](const auto& known) { return known.second.expired(); });
    if (own != last)
        living().erase(own);
}

} // namespace osg
