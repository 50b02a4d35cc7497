#include "tests/files/vrml/VrmlTexturesTest.h"

#include <QImage>

namespace
{

using osg::AlphaMode;
using osg::Color3f;
using osg::PhysicalSurface;
using osg::TextureSlot;
using testing::IsEmpty;
using Wrap = osg::TextureSampler::Wrap;

TEST_F(VrmlTexturesTest, TheFirstPictureThatIsThereIsTaken)
{
    write(QStringLiteral("maps/oak wood.png"), pngOf("oak"));
    const PhysicalSurface surface =
        surfaceOf("texture ImageTexture { url [ \"http://example.org/oak.png\" \"gone.png\" \"maps/oak%20wood.png\" ] "
                  "repeatS FALSE }");
    EXPECT_THAT(warnings(), IsEmpty());
    EXPECT_EQ(pictureOf(surface), pngOf("oak"));
    EXPECT_EQ(surface.textures.at(TextureSlot::BaseColor).sampler.wrapU, Wrap::Clamp);
    EXPECT_EQ(surface.textures.at(TextureSlot::BaseColor).sampler.wrapV, Wrap::Repeat);
    EXPECT_EQ(pictureOf(surfaceOf("texture ImageTexture { url \"D:\\\\x\\\\oak wood.png\" repeatT FALSE }")),
              "(no texture)");
    write(QStringLiteral("oak wood.png"), pngOf("oak"));
    const PhysicalSurface other = surfaceOf("texture ImageTexture { url \"D:\\\\x\\\\oak wood.png\" repeatT FALSE }");
    EXPECT_EQ(pictureOf(other), pngOf("oak"));
    EXPECT_EQ(other.textures.at(TextureSlot::BaseColor).sampler.wrapU, Wrap::Repeat);
    EXPECT_EQ(other.textures.at(TextureSlot::BaseColor).sampler.wrapV, Wrap::Clamp);
    EXPECT_EQ(pictureOf(surfaceOf("texture ImageTexture { url \"data:image/png;base64,AAAA\" }")),
              QByteArray("\0\0\0", 3));
}

TEST_F(VrmlTexturesTest, APictureThatCannotBeTakenIsToldOnce)
{
    const PhysicalSurface surface =
        surfaceOf(QByteArray(paint) + " texture ImageTexture { url [ \"gone.png\" \"lost.png\" ] }");
    EXPECT_THAT(surface.textures, IsEmpty());
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].contains(QLatin1String("gone.png was left out"))) << warnings()[0].toStdString();
    EXPECT_TRUE(warnings()[0].contains(QLatin1String("line 2, column"))) << warnings()[0].toStdString();
    EXPECT_EQ(material()->getDiffuse(), (Color3f{0.5f, 0.25f, 0.125f}));
    surfaceOf("texture ImageTexture { url \"http://example.org/oak.png\" }");
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("a picture is not on this computer and was left out: http")));
}

TEST_F(VrmlTexturesTest, APictureOutsideTheFolderIsRefused)
{
    write(QStringLiteral("secret.png"), pngOf("secret"));
    const files::ReadResult result = read(
        write(QStringLiteral("in/a.wrl"), "#VRML V2.0 utf8\nShape { appearance Appearance { texture ImageTexture { "
                                          "url \"../secret.png\" } } geometry " TRIANGLE_WITH_COORDINATES " }"));
    EXPECT_THAT(osg::surfaceOf(material()).textures, IsEmpty());
    ASSERT_EQ(result.warnings.size(), 1u);
    EXPECT_TRUE(result.warnings[0].message.contains(QLatin1String("secret.png was left out")));
}

/// The lighting model of VRML97.
TEST_F(VrmlTexturesTest, ColoursOfAPictureReplaceTheDiffuseColourAndGreyIsMultiplied)
{
    for (const int channels : {1, 2}) {
        surfaceOf(paint + pixelTexture(pixels[channels - 1]));
        EXPECT_EQ(material()->getDiffuse(), (Color3f{0.5f, 0.25f, 0.125f})) << channels;
        EXPECT_EQ(material()->getAmbient(), (Color3f{0.25f, 0.125f, 0.0625f})) << channels;
    }
    for (const int channels : {3, 4}) {
        surfaceOf(paint + pixelTexture(pixels[channels - 1]));
        EXPECT_EQ(material()->getDiffuse(), (Color3f{1, 1, 1})) << channels;
        EXPECT_EQ(material()->getAmbient(), (Color3f{0.5f, 0.5f, 0.5f})) << channels;
    }
}

TEST_F(VrmlTexturesTest, AlphaOfAPictureReplacesTheTransparency)
{
    for (const int channels : {1, 3}) {
        const PhysicalSurface surface = surfaceOf(paint + pixelTexture(pixels[channels - 1]));
        EXPECT_EQ(material()->getTransparency(), 0.25f) << channels;
        EXPECT_EQ(surface.opacity, 0.75f) << channels;
        EXPECT_EQ(surface.alphaMode, AlphaMode::Blend) << channels;
    }
    for (const int channels : {2, 4}) {
        const PhysicalSurface surface = surfaceOf(paint + pixelTexture(pixels[channels - 1]));
        EXPECT_EQ(material()->getTransparency(), 0) << channels;
        EXPECT_EQ(surface.opacity, 1) << channels;
        EXPECT_EQ(surface.alphaMode, AlphaMode::Blend) << channels;
    }
    EXPECT_EQ(surfaceOf("material Material { }" + pixelTexture(pixels[2])).alphaMode, AlphaMode::Opaque);
}

TEST_F(VrmlTexturesTest, ColoursOfAMeshAreMultipliedByGreyAndReplacedByColours)
{
    const QByteArray colored = QByteArray(TRIANGLE_WITH_COORDINATES)
                                   .replace("coordIndex", "color Color { color [ 1 0 0 0 1 0 0 0 1 ] } coordIndex");
    surfaceOf(paint + pixelTexture(pixels[0]), colored);
    EXPECT_EQ(mesh().colors.size(), 3u);
    EXPECT_EQ(material()->getDiffuse(), (Color3f{1, 1, 1}));
    surfaceOf(paint + pixelTexture(pixels[2]), colored);
    EXPECT_EQ(mesh().colors.size(), 0u);
}

TEST_F(VrmlTexturesTest, WithoutAMaterialAPictureIsNotLit)
{
    EXPECT_TRUE(surfaceOf(pixelTexture(pixels[2])).unlit);
    EXPECT_EQ(material()->getDiffuse(), (Color3f{1, 1, 1}));
    EXPECT_FALSE(surfaceOf(paint + pixelTexture(pixels[2])).unlit);
}

TEST_F(VrmlTexturesTest, FilesTellHowManyChannelsTheyHave)
{
    const auto diffuseWith = [this](const QByteArray& picture) {
        write(QStringLiteral("p.png"), picture);
        surfaceOf(QByteArray(paint) + "texture ImageTexture { url \"p.png\" }");
        return material()->getDiffuse();
    };
    const auto transparencyWith = [&](const QByteArray& picture) {
        diffuseWith(picture);
        return material()->getTransparency();
    };
    const auto png = [](char kind, const QByteArray& chunk = {}) {
        return pngOf(QByteArray("\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08", 17) + kind + QByteArray(7, '\0') + chunk +
                     QByteArray("\0\0\0\0IDAT", 8));
    };
    const QByteArray alpha("\0\0\0\1tRNS\0\0\0\0\0", 13);
    const auto jpeg = [](char count) {
        return QByteArray("\xff\xd8\xff\xe0\0\4ab\xff\xc4\0\3x\xff\xc0\0\x0b\x08\0\1\0\1", 22) + count +
               QByteArray(3, '\1');
    };
    const Color3f replaced = {1, 1, 1}, multiplied = {0.5f, 0.25f, 0.125f};
    EXPECT_EQ(diffuseWith(png(0)), multiplied);
    EXPECT_EQ(diffuseWith(png(4)), multiplied);
    EXPECT_EQ(diffuseWith(png(2)), replaced);
    EXPECT_EQ(diffuseWith(png(3)), replaced);
    EXPECT_EQ(diffuseWith(png(6)), replaced);
    EXPECT_EQ(diffuseWith(jpeg(1)), multiplied);
    EXPECT_EQ(diffuseWith(jpeg(3)), replaced);
    EXPECT_EQ(diffuseWith("GIF89a"), replaced);
    EXPECT_EQ(diffuseWith(QByteArray("\xff\xd8\xff", 3)), replaced);
    EXPECT_EQ(transparencyWith(png(2)), 0.25f);
    EXPECT_EQ(transparencyWith(png(6)), 0);
    EXPECT_EQ(transparencyWith(png(4)), 0);
    EXPECT_EQ(transparencyWith(png(3, alpha)), 0);
    EXPECT_EQ(transparencyWith(png(0, alpha)), 0);
    EXPECT_EQ(transparencyWith(pngOf("")), 0.25f);
}

TEST_F(VrmlTexturesTest, PixelsBecomeAPngFile)
{
    // From below to above.
    const QImage colors =
        QImage::fromData(pictureOf(surfaceOf(pixelTexture("2 2 3 0xFF0000 0x00FF00 0x0000FF 0x102030"))));
    ASSERT_EQ(colors.size(), QSize(2, 2));
    EXPECT_EQ(colors.pixel(0, 1), qRgb(255, 0, 0));
    EXPECT_EQ(colors.pixel(1, 1), qRgb(0, 255, 0));
    EXPECT_EQ(colors.pixel(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(colors.pixel(1, 0), qRgb(0x10, 0x20, 0x30));
    EXPECT_FALSE(colors.hasAlphaChannel());
    const QImage clear = QImage::fromData(pictureOf(surfaceOf(pixelTexture("1 2 4 0x11223344 0xFFEEDDCC"))));
    ASSERT_EQ(clear.size(), QSize(1, 2));
    EXPECT_EQ(clear.pixel(0, 1), qRgba(0x11, 0x22, 0x33, 0x44));
    EXPECT_EQ(clear.pixel(0, 0), qRgba(0xFF, 0xEE, 0xDD, 0xCC));
    const QImage grey = QImage::fromData(pictureOf(surfaceOf(pixelTexture("3 1 1 0x10 0x80 255"))));
    ASSERT_EQ(grey.size(), QSize(3, 1));
    EXPECT_EQ(grey.pixel(0, 0), qRgb(0x10, 0x10, 0x10));
    EXPECT_EQ(grey.pixel(2, 0), qRgb(255, 255, 255));
    const QImage veil = QImage::fromData(pictureOf(surfaceOf(pixelTexture("1 1 2 0x8040"))));
    EXPECT_EQ(veil.pixel(0, 0), qRgba(0x80, 0x80, 0x80, 0x40));
    EXPECT_EQ(surfaceOf(pixelTexture("1 1 3 0")).textures.at(TextureSlot::BaseColor).image->mimeType(), "image/png");
}

TEST_F(VrmlTexturesTest, PixelsThatDoNotMakeAPictureAreTold)
{
    for (const char* const image :
         {"2 2 3 1 2 3", "1 1 5 7", "-1 1 3 7", "1 1 0 7", "2147483647 2147483647 3 7", "1 1 3"}) {
        EXPECT_THAT(surfaceOf(pixelTexture(image)).textures, IsEmpty()) << image;
        ASSERT_EQ(warnings().size(), 1) << image;
        EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("the pixels of a picture are not as many as it says")));
    }
    EXPECT_THAT(surfaceOf(pixelTexture("0 0 0")).textures, IsEmpty());
    EXPECT_THAT(warnings(), IsEmpty()) << "that is the default: no picture";
}

TEST_F(VrmlTexturesTest, AMovieIsLeftOut)
{
    EXPECT_THAT(surfaceOf("texture MovieTexture { url \"a.mpg\" }").textures, IsEmpty());
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("nodes of the type 'MovieTexture' are not read")));
}

} // namespace
