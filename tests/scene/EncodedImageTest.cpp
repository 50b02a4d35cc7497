#include "host/OSGSystem/EncodedImage.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using osg::EncodedImage;
using osg::EncodedImagePtr;
using osg::imageMimeType;

std::vector<std::byte> bytesOf(const std::string& text)
{
    const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
    return {bytes, bytes + text.size()};
}

std::string textOf(const EncodedImagePtr& image)
{
    return {reinterpret_cast<const char*>(image->bytes().data()), image->bytes().size()};
}

TEST(EncodedImageTest, EqualBytesAreOneImageWithItsFirstNameAndKind)
{
    const EncodedImagePtr first = EncodedImage::share(bytesOf("oak"), "image/png", "oak.png");
    const EncodedImagePtr second = EncodedImage::share(bytesOf("oak"), "image/jpeg", "other.jpg");
    EXPECT_EQ(first, second);
    EXPECT_EQ(second->name(), "oak.png");
    EXPECT_EQ(second->mimeType(), "image/png");
    EXPECT_EQ(textOf(first), "oak");
}

TEST(EncodedImageTest, DifferentBytesAreDifferentImages)
{
    const EncodedImagePtr first = EncodedImage::share(bytesOf("oak"), {}, "a");
    for (const char* const other : {"oal", "oa", "oak ", ""}) {
        const EncodedImagePtr second = EncodedImage::share(bytesOf(other), {}, "a");
        EXPECT_NE(first, second) << other;
        EXPECT_NE(first->hash(), second->hash()) << other;
        EXPECT_EQ(textOf(second), other);
    }
}

TEST(EncodedImageTest, AnImageIsForgottenWithItsLastHolder)
{
    EncodedImagePtr first = EncodedImage::share(bytesOf("oak"), {}, "first");
    EncodedImagePtr second = first;
    const std::weak_ptr<const EncodedImage> watched = first;
    first.reset();
    EXPECT_EQ(EncodedImage::share(bytesOf("oak"), {}, "again"), second);
    second.reset();
    EXPECT_TRUE(watched.expired()) << "nothing keeps it but its holders";
    EXPECT_EQ(EncodedImage::share(bytesOf("oak"), {}, "anew")->name(), "anew");
}

TEST(EncodedImageTest, AnImageThatGoesLeavesThoseThatStay)
{
    EncodedImagePtr oak = EncodedImage::share(bytesOf("oak"), {}, "oak");
    const EncodedImagePtr elm = EncodedImage::share(bytesOf("elm"), {}, "elm");
    oak.reset();
    EXPECT_EQ(EncodedImage::share(bytesOf("elm"), {}, "other"), elm);
}

TEST(EncodedImageTest, BytesOfAnOwnerAreNotCopiedAndKeptAlive)
{
    auto owner = std::make_shared<const std::string>("a picture in a file");
    const std::weak_ptr<const std::string> watched = owner;
    const auto* const data = reinterpret_cast<const std::byte*>(owner->data());
    EncodedImagePtr image = EncodedImage::share(owner, {data + 2, 7}, "image/png", "p");
    owner.reset();
    EXPECT_EQ(image->bytes().data(), data + 2);
    EXPECT_EQ(textOf(image), "picture");
    EXPECT_EQ(EncodedImage::share(bytesOf("picture"), {}, {}), image);
    image.reset();
    EXPECT_TRUE(watched.expired());
}

TEST(EncodedImageTest, TheHashIsTheSameInEveryRun)
{
    // The first eight bytes of the SHA-1 of "abc".
    EXPECT_EQ(EncodedImage::share(bytesOf("abc"), {}, {})->hash(), 0xa9993e364706816aU);
}

TEST(EncodedImageTest, KindsAreKnownByTheirBeginnings)
{
    const auto kind = [](const char* text, std::size_t size) { return imageMimeType(bytesOf({text, size})); };
    EXPECT_EQ(kind("\x89PNG\r\n\x1a\n....", 12), "image/png");
    EXPECT_EQ(kind("\xff\xd8\xff\xe0", 4), "image/jpeg");
    EXPECT_EQ(kind("RIFF\1\2\3\4WEBPVP8 ", 16), "image/webp");
    EXPECT_EQ(kind("\xabKTX 20\xbb\r\n\x1a\n", 12), "image/ktx2");
    EXPECT_EQ(kind("GIF89a", 6), "image/gif");
    EXPECT_EQ(kind("BM....", 6), "image/bmp");
    EXPECT_EQ(kind("DDS |", 5), "image/vnd-ms.dds");
    for (const char* const other : {"", "\x89PN", "RIFF", "text"})
        EXPECT_EQ(kind(other, std::strlen(other)), "") << other;
}

TEST(EncodedImageTest, WithoutAKindTheBytesTellIt)
{
    EXPECT_EQ(EncodedImage::share(bytesOf("GIF89a"), {}, {})->mimeType(), "image/gif");
    EXPECT_EQ(EncodedImage::share(bytesOf("GIF89a "), "image/own", {})->mimeType(), "image/own");
    EXPECT_EQ(EncodedImage::share(bytesOf("what"), {}, {})->mimeType(), "");
}

} // namespace
