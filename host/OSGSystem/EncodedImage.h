#pragma once

#include "host/HostExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace osg
{

class EncodedImage;
/// How images are held: immutable, by as many as like.
using EncodedImagePtr = std::shared_ptr<const EncodedImage>;

/// A picture as its file has it: PNG, JPEG or another encoding, never decoded here. Equal bytes are one image, however
/// many files and materials bring them, as long as anybody holds it: two pointers are equal exactly when the bytes are.
///
/// Belongs to one thread, as containers do.
class ZN_HOST_EXPORT EncodedImage
{
public:
    /// The image of these bytes: the one that lives already, with its own name and kind, or a new one.
    /// @param mimeType what the bytes are, as "image/png"; empty to look at their beginning
    /// @param name a UTF-8 name for people, often that of a file, without a folder; may be empty
    static EncodedImagePtr share(std::vector<std::byte> bytes, const std::string& mimeType, const std::string& name);
    /// The same for bytes that stand in memory which `owner` keeps alive, and that nobody changes: no copy is made.
    static EncodedImagePtr share(std::shared_ptr<const void> owner, std::span<const std::byte> bytes,
                                 const std::string& mimeType, const std::string& name);

    EncodedImage(const EncodedImage&) = delete;
    EncodedImage& operator=(const EncodedImage&) = delete;
    ~EncodedImage();

    /// As long as the image lives.
    std::span<const std::byte> bytes() const { return m_bytes; }
    /// Such as "image/png", "image/jpeg", "image/webp", "image/ktx2"; empty when nobody knows.
    const std::string& mimeType() const { return m_mimeType; }
    /// For people; not unique, may be empty.
    const std::string& name() const { return m_name; }
    /// Of the bytes; equal bytes give equal values in every run on every machine.
    std::uint64_t hash() const { return m_hash; }

private:
    struct Content;
    explicit EncodedImage(Content content);

    std::shared_ptr<const void> m_owner;
    std::span<const std::byte> m_bytes;
    std::string m_mimeType;
    std::string m_name;
    std::uint64_t m_hash = 0;
};

/// What the first bytes of a picture say that it is, as a MIME type; empty when they say nothing that is known here.
ZN_HOST_EXPORT std::string imageMimeType(std::span<const std::byte> bytes);

} // namespace osg
