// Looks, light and backgrounds of pictures, from the command line to the file.

#include "tests/roads/znimport/ToolRun.h"

#include <QImage>

namespace
{

const char* const square = "v 0 0 0\nv 10 0 0\nv 10 0 10\nv 0 0 10\nf 1 2 3 4\n";

class PicturesTest : public ToolRun
{
protected:
    Ending drawn(const char* picture, const QStringList& options) const
    {
        return znimport(QStringList{write("square.obj", square), text("--snapshot"), path(picture), text("--size"),
                                    text("60x40"), text("--view"), text("front")} +
                        options);
    }

    QImage picture(const char* name, const QStringList& options) const
    {
        const Ending ending = drawn(name, options);
        EXPECT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
        return QImage(path(name));
    }

    /// Of a file with one pixel, which is red.
    QString writeLight() const
    {
        return write("light.hdr",
                     QByteArray("#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 1 +X 1\n") + QByteArray::fromHex("80000080"));
    }
};

TEST_F(PicturesTest, TheLookOfAnOptionIsThatOfTheSetting)
{
    const QImage plain = picture("plain.png", {});
    const QImage studio = picture("studio.png", {text("--look"), text("studio")});
    EXPECT_NE(plain, studio);
    EXPECT_EQ(studio, picture("set.png", {text("--set"), text("picture.look=studio")}));
    EXPECT_EQ(plain, picture("back.png", {text("--set"), text("picture.look=studio"), text("--look"), text("plain")}));
}

TEST_F(PicturesTest, TheLightComesFromTheEnvironment)
{
    const QImage image = picture("red.png", {text("--look"), text("studio"), text("--environment"), writeLight()});
    EXPECT_GT(qRed(image.pixel(30, 20)), 100);
    EXPECT_LT(qGreen(image.pixel(30, 20)), 5);
}

TEST_F(PicturesTest, AnEnvironmentWithoutTheLookIsTold)
{
    const Ending ending = drawn("plain.png", {text("--environment"), writeLight()});
    EXPECT_EQ(ending.exitCode, 0);
    EXPECT_TRUE(ending.errors.contains(text("--environment has no effect"))) << ending.errors.toStdString();
}

TEST_F(PicturesTest, WhatIsBehindIsAsTheOptionSays)
{
    EXPECT_EQ(picture("blue.png", {text("--background"), text("blue")}).pixel(1, 1), qRgb(0, 0, 255));
    const QImage clear = picture("clear.png", {text("--background"), text("transparent")});
    EXPECT_TRUE(clear.hasAlphaChannel());
    EXPECT_EQ(qAlpha(clear.pixel(1, 1)), 0);
    EXPECT_EQ(qAlpha(clear.pixel(30, 20)), 255);
}

TEST_F(PicturesTest, WrongValuesEndTheRunBeforeTheImport)
{
    const QString damaged = write("damaged.hdr", "#?RADIANCE\n");
    for (const QStringList& options :
         {QStringList{text("--look"), text("shiny")}, QStringList{text("--background"), text("no-colour")},
          QStringList{text("--look"), text("studio"), text("--environment"), damaged}}) {
        const Ending ending = drawn("wrong.png", options);
        EXPECT_EQ(ending.exitCode, 2);
        EXPECT_TRUE(ending.errors.contains(options.last())) << ending.errors.toStdString();
        EXPECT_FALSE(QFile::exists(path("wrong.png")));
    }
}

} // namespace
