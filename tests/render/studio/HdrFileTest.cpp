#include "render/studio/HdrFile.h"

#include "tests/render/studio/HdrBytes.h"

#include <gtest/gtest.h>

namespace render::studio
{

namespace
{

constexpr std::size_t plenty = 1 << 20;

class HdrFile : public ::testing::Test
{
protected:
    static HdrPicture read(const QByteArray& bytes)
    {
        const HdrTestFile file(bytes);
        files::Expected<HdrPicture> result = readHdrFile(file.path(), plenty);
        EXPECT_TRUE(result) << result.error().toString().toStdString();
        return result ? std::move(result).value() : HdrPicture();
    }

    static void expectRefused(const QByteArray& bytes, files::ErrorCode code, const char* words)
    {
        const HdrTestFile file(bytes);
        const files::Expected<HdrPicture> result = readHdrFile(file.path(), plenty);
        ASSERT_FALSE(result) << words;
        EXPECT_EQ(result.error().code, code) << result.error().toString().toStdString();
        EXPECT_EQ(result.error().file, file.path());
        EXPECT_TRUE(result.error().message.contains(QLatin1String(words))) << result.error().message.toStdString();
    }

    static void expectLight(const Eigen::Vector3f& light, float red, float green, float blue)
    {
        EXPECT_NEAR(light.x(), red, 0.01f * std::max(red, 0.1f));
        EXPECT_NEAR(light.y(), green, 0.01f * std::max(green, 0.1f));
        EXPECT_NEAR(light.z(), blue, 0.01f * std::max(blue, 0.1f));
    }

    static QByteArray bytes(std::initializer_list<int> values)
    {
        QByteArray result;
        for (const int value : values)
            result += char(value);
        return result;
    }
};

} // namespace

TEST_F(HdrFile, PixelsShareAnExponent)
{
    const HdrPicture picture = read(hdrHeader(2, 1) + bytes({128, 64, 0, 129, 255, 0, 128, 140}));
    ASSERT_EQ(picture.pixels.size(), 2u);
    expectLight(picture.pixels[0], 1, 0.5f, 0);
    expectLight(picture.pixels[1], 4080, 0, 2048);
}

TEST_F(HdrFile, APixelWithoutExponentIsBlackAndTheBrightestIsLimited)
{
    const HdrPicture picture = read(hdrHeader(2, 1) + bytes({9, 9, 9, 0, 255, 255, 255, 255}));
    EXPECT_EQ(picture.pixels[0], Eigen::Vector3f(0, 0, 0));
    EXPECT_EQ(picture.pixels[1], Eigen::Vector3f(mostLight, mostLight, mostLight));
}

TEST_F(HdrFile, PackedRowsHaveRunsAndPiecesOfEachChannel)
{
    QByteArray packed = hdrHeader(8, 1) + bytes({2, 2, 0, 8});
    packed += bytes({128 + 8, 128});                     // red: eight times
    packed += bytes({3, 1, 2, 3, 128 + 5, 64});          // green: three and a run
    packed += bytes({8, 0, 10, 20, 30, 40, 50, 60, 70}); // blue
    packed += bytes({128 + 4, 129, 128 + 4, 130});       // exponents
    const HdrPicture picture = read(packed);
    ASSERT_EQ(picture.pixels.size(), 8u);
    expectLight(picture.pixels[1], 1, 2 / 128.0f, 10 / 128.0f);
    expectLight(picture.pixels[7], 2, 1, 70 / 64.0f);
}

TEST_F(HdrFile, PlainRowsMayRepeatAPixel)
{
    const HdrPicture picture =
        read(hdrHeader(300, 1) + bytes({128, 0, 0, 129, 1, 1, 1, 42, 1, 1, 1, 1, 0, 128, 0, 129}));
    ASSERT_EQ(picture.pixels.size(), 300u);
    expectLight(picture.pixels[298], 1, 0, 0); // 1 + 42 + 256
    expectLight(picture.pixels[299], 0, 1, 0);
}

TEST_F(HdrFile, ExposuresAreTakenBack)
{
    const QByteArray header = "#?RGBE\n# a comment\nEXPOSURE=2\nEXPOSURE= 4\n\n-Y 1 +X 1\n";
    expectLight(read(header + bytes({128, 128, 128, 129})).pixels[0], 0.125f, 0.125f, 0.125f);
}

TEST_F(HdrFile, TheUpperBorderIsUpAndTheMiddleIsX)
{
    // A column for each quarter, the second and third of which the middle lies between; up is bright.
    const HdrPicture picture = read(hdrBytes(4, 2, [](int column, int row) {
        return Eigen::Vector3f(column == 1 || column == 2 ? 1.0f : 0.0f, column >= 2 ? 1.0f : 0.0f,
                               row == 0 ? 1.0f : 0.0f);
    }));
    expectLight(picture.at({0, 0, 1}), 1, 0.5f, 1);
    expectLight(picture.at({0, 0, -1}), 1, 0.5f, 0);
    expectLight(picture.at({1, 0, 0}), 1, 0.5f, 0.5f);
    expectLight(picture.at({-1, 0, 0}), 0, 0.5f, 0.5f);
    expectLight(picture.at({0, -1, 0}), 0.5f, 1, 0.5f);
    expectLight(picture.at({0, 1, 0}), 0.5f, 0, 0.5f);
}

TEST_F(HdrFile, WhatIsNoPictureOrNotThereIsRefused)
{
    expectRefused({}, files::ErrorCode::UnknownFormat, "no Radiance picture");
    expectRefused("\x89PNG", files::ErrorCode::UnknownFormat, "no Radiance picture");
    expectRefused("#?RADIANCE\nFORMAT=32-bit_rle_xyze\n\n-Y 1 +X 1\n", files::ErrorCode::Unsupported,
                  "32-bit_rle_xyze");
    expectRefused("#?RADIANCE\n\n+Y 1 +X 1\n....", files::ErrorCode::Unsupported, "from top to bottom");
    EXPECT_EQ(readHdrFile(QStringLiteral("nowhere/light.hdr"), plenty).error().code, files::ErrorCode::NotFound);
    const QTemporaryDir folder;
    EXPECT_EQ(readHdrFile(folder.path(), plenty).error().code, files::ErrorCode::NotRegular);
}

TEST_F(HdrFile, DamagedHeadersAreRefused)
{
    expectRefused("#?RADIANCE", files::ErrorCode::DamagedHeader, "does not end");
    expectRefused("#?RADIANCE\n" + QByteArray(5000, 'x') + "\n\n", files::ErrorCode::DamagedHeader, "does not end");
    expectRefused("#?RADIANCE\n" + QByteArray("A=1\n").repeated(2000), files::ErrorCode::DamagedHeader, "does not end");
    expectRefused("#?RADIANCE\nEXPOSURE=0\n\n", files::ErrorCode::DamagedHeader, "exposure");
    expectRefused("#?RADIANCE\nEXPOSURE=nan\n\n", files::ErrorCode::DamagedHeader, "exposure");
    expectRefused("#?RADIANCE\nEXPOSURE=1e38\nEXPOSURE=1e38\n\n", files::ErrorCode::DamagedHeader, "exposure");
}

TEST_F(HdrFile, LargePicturesAreRefusedBeforeTheirPixels)
{
    expectRefused(hdrHeader(1 << 11, 1 << 10), files::ErrorCode::LimitExceeded, "2048x1024");
    expectRefused(hdrHeader(0, 4), files::ErrorCode::LimitExceeded, "0x4");
    expectRefused("#?RADIANCE\n\n-Y 99999999999 +X 2\n", files::ErrorCode::LimitExceeded, "at most");
}

TEST_F(HdrFile, DamagedRowsAreRefusedWithTheirPlace)
{
    const QByteArray whole = hdrBytes(4, 4, [](int, int) { return Eigen::Vector3f(1, 1, 1); });
    for (int size = hdrHeader(4, 4).size(); size < whole.size(); ++size)
        expectRefused(whole.left(size), files::ErrorCode::Truncated, "ends within");
    expectRefused(hdrHeader(8, 1) + bytes({2, 2, 0, 9}), files::ErrorCode::Damaged, "another width");
    expectRefused(hdrHeader(8, 1) + bytes({2, 2, 0, 8, 128 + 9, 1}), files::ErrorCode::Damaged, "longer");
    expectRefused(hdrHeader(8, 1) + bytes({2, 2, 0, 8, 0}), files::ErrorCode::Damaged, "longer");
    expectRefused(hdrHeader(4, 1) + bytes({1, 1, 1, 3}), files::ErrorCode::Damaged, "longer");
    expectRefused(hdrHeader(4, 1) + bytes({9, 1, 1, 129, 1, 1, 1, 4}), files::ErrorCode::Damaged, "longer");
    const HdrTestFile file(hdrHeader(4, 2) + bytes({9, 9, 9, 129, 1, 1, 1, 3, 9}));
    EXPECT_EQ(readHdrFile(file.path(), plenty).error().place, QStringLiteral("row 2"));
}

} // namespace render::studio
