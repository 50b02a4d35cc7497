// Files of few bytes that stand for much.

#include "files/vrml/VrmlReader.h"

#include "tests/files/vrml/VrmlTest.h"
#include "tests/support/PackedFiles.h"

namespace
{

class VrmlReaderLimitsTest : public VrmlTest
{
protected:
    QString errorWithin(std::uint64_t megabytes, const QByteArray& scene)
    {
        files::ReadOptions options;
        options.limits.maxMemory = megabytes << 20;
        return sceneError(scene, options);
    }

    /// An extrusion of `count` rings of `count` points.
    static QByteArray extrusion(int count)
    {
        QByteArray spine, section;
        for (int i = 0; i < count; ++i) {
            spine += "0 " + QByteArray::number(i) + " 0,";
            section += QByteArray::number(i) + " 0,";
        }
        return "Shape{geometry Extrusion{spine[" + spine + "] crossSection[" + section + "]}}";
    }
};

TEST_F(VrmlReaderLimitsTest, ASweepOfMorePointsThanAFileOfItsSizeMayMeanIsRefused)
{
    EXPECT_EQ(sceneError(extrusion(4000)).left(76),
              QStringLiteral("LimitExceeded d.wrl: it would take more than 316 MB of memory, too much for "));
    EXPECT_EQ(sceneError(extrusion(40)), QStringLiteral("none"));
}

TEST_F(VrmlReaderLimitsTest, WhatGeometryIsMadeOfCountsAsMemory)
{
    const QString tooMuch =
        QStringLiteral("LimitExceeded d.wrl: it would take more memory than the 1 MB that it may (read.memory) (line "
                       "2, column %1)");
    const QByteArray points = "Coordinate{point[" + QByteArray("0 0 0,").repeated(20'000) + "]}";
    EXPECT_EQ(errorWithin(1, "Shape{geometry IndexedFaceSet{coord Coordinate{point[0 0 0,1 0 0,0 1 0]} coordIndex[" +
                                 QByteArray("0 1 2 -1 ").repeated(3000) + "]}}"),
              tooMuch.arg(16));
    EXPECT_EQ(errorWithin(1, "Shape{geometry IndexedLineSet{coord Coordinate{point[0 0 0,1 0 0]} coordIndex[" +
                                 QByteArray("0 1 -1 ").repeated(6000) + "]}}"),
              tooMuch.arg(16));
    EXPECT_EQ(errorWithin(1, "Shape{geometry PointSet{coord " + points + "}}"), tooMuch.arg(16));
    EXPECT_EQ(errorWithin(1, QByteArray("Shape{geometry Sphere{}}").repeated(100)).left(83), tooMuch.left(83));
    EXPECT_EQ(errorWithin(1, QByteArray("Group{}").repeated(1000)).left(83), tooMuch.left(83));
}

TEST_F(VrmlReaderLimitsTest, BytesThatComeOutOfAPackedFileCountAsMemory)
{
    const QString path =
        write(QStringLiteral("bomb.wrz"),
              QByteArray::fromStdString(packedfiles::gzipped("#VRML V2.0 utf8\n" + std::string(5 << 20, ' '))));
    files::ReadOptions options;
    options.limits.maxMemory = 4 << 20;
    EXPECT_EQ(
        errorOf(path, options),
        QStringLiteral("LimitExceeded bomb.wrz: it would take more memory than the 4 MB that it may (read.memory)"));
}

} // namespace
