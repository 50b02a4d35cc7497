#include "scene/MaterialLook.h"
#include "tests/files/Pictures.h"
#include "tests/files/ReaderTest.h"

#include <QtEndian>

#include <gmock/gmock.h>

#include <sstream>

namespace
{

using osg::Color3f;
using osg::TextureSlot;
using osg::Vec2f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* fourPoints = "0 0 0\n1 0 0\n1 1 0\n0 1 0\n";
constexpr const char* wedges = "property list uchar int vertex_indices\nproperty list uchar float texcoord\n";

/// Reads a PLY text, in a folder with two pictures.
class PlyReaderTexturesTest : public ReaderTest
{
protected:
    void SetUp() override
    {
        write(QStringLiteral("oak plank.png"), pngOf("oak"));
        write(QStringLiteral("brass.jpg"), jpegOf("brass"));
    }

    /// `comments` and properties of vertices and faces stand in the header, `rows` behind it.
    bool readText(const QByteArray& comments, const QByteArray& ofVertices, const QByteArray& ofFaces, int faces,
                  const QByteArray& rows, const files::ReadOptions& options = {})
    {
        const QByteArray text = "ply\nformat ascii 1.0\n" + comments +
                                "element vertex 4\nproperty float x\nproperty float y\nproperty float z\n" +
                                ofVertices + "element face " + QByteArray::number(faces) + "\n" + ofFaces +
                                "end_header\n" + rows;
        const files::ReadResult result = read(write(QStringLiteral("p.ply"), text), options);
        m_warnings = texts(result.warnings);
        return bool(result);
    }

    const osg::Mesh& mesh(unsigned part = 0) const { return ReaderTest::mesh(root()->getChild(part)); }
    osg::SimpleMaterialPtr material(unsigned part = 0) const { return ReaderTest::material(root()->getChild(part)); }
    const QStringList& warnings() const { return m_warnings; }

    QByteArray pictureOf(unsigned part = 0) const
    {
        const osg::PhysicalSurface surface = osg::surfaceOf(material(part));
        const auto texture = surface.textures.find(TextureSlot::BaseColor);
        return texture == surface.textures.end() ? "(no texture)" : bytesOf(texture->second.image);
    }

    /// "x y: u v" of each corner of the triangles.
    std::vector<std::string> corners(unsigned part = 0) const
    {
        std::vector<std::string> result;
        for (const std::uint32_t index : mesh(part).triangles) {
            const Vec3f& at = mesh(part).positions[index];
            const Vec2f& uv = mesh(part).texCoords[index];
            std::ostringstream text;
            text << at.x << ' ' << at.y << ": " << uv.x << ' ' << uv.y;
            result.push_back(text.str());
        }
        return result;
    }

private:
    QStringList m_warnings;
};

TEST_F(PlyReaderTexturesTest, APictureIsTheBaseColour)
{
    ASSERT_TRUE(readText("comment made by hand\ncomment TextureFile oak plank.png\r\n",
                         "property float u\nproperty float v\n", "property list uchar int vertex_indices\n", 1,
                         "0 0 0 0 0\n1 0 0 1 0\n1 1 0 1 1\n0 1 0 0 0.5\n3 0 1 2\n"));
    EXPECT_THAT(warnings(), IsEmpty());
    EXPECT_EQ(pictureOf(), pngOf("oak"));
    EXPECT_EQ(material()->getDiffuse(), (Color3f{1, 1, 1}));
    EXPECT_EQ(nameOf(material()), "oak plank");
    EXPECT_EQ(nameOf(root()->getChild(0)), "(none)");
}

TEST_F(PlyReaderTexturesTest, CornersWithDifferentCoordinatesAreVerticesOfTheirOwn)
{
    ASSERT_TRUE(readText(
        "comment TextureFile oak plank.png\n", "property float nx\nproperty float ny\nproperty float nz\n", wedges, 3,
        "0 0 0 0 0 1\n1 0 0 0 0 2\n1 1 0 0 0 3\n0 1 0 0 0 4\n"
        "3 0 1 2 6 0 0 0.5 0 0.5 0.5\n3 0 2 3 6 0.75 0 0.5 0.5 1 1\n3 2 1 0 6 0.5 0.5 0.5 0 0.75 0\n"));
    EXPECT_THAT(warnings(), IsEmpty());
    EXPECT_THAT(corners(), ElementsAre("0 0: 0 0", "1 0: 0.5 0", "1 1: 0.5 0.5", "0 0: 0.75 0", "1 1: 0.5 0.5",
                                       "0 1: 1 1", "1 1: 0.5 0.5", "1 0: 0.5 0", "0 0: 0.75 0"));
    EXPECT_EQ(mesh().positions.size(), 5u) << "only the corner at 0 0 has two pairs";
    EXPECT_EQ(mesh().normals[4], (Vec3f{0, 0, 1}));
    EXPECT_EQ(mesh().triangles[8], mesh().triangles[3]);
}

TEST_F(PlyReaderTexturesTest, PolygonsKeepTheCoordinatesOfTheirCorners)
{
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\n", "", wedges, 1,
                         QByteArray(fourPoints) + "4 0 1 2 3 8 0 0 1 0 1 1 0 1\n"));
    for (const std::string& corner : corners())
        EXPECT_EQ(corner.substr(0, 3), corner.substr(5));
    EXPECT_EQ(corners().size(), 6);
}

TEST_F(PlyReaderTexturesTest, WedgesWinOverCoordinatesOfVertices)
{
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\n", "property float s\nproperty float t\n", wedges, 2,
                         "0 0 0 9 9\n1 0 0 9 9\n1 1 0 9 9\n0 1 0 0.25 0.5\n3 0 1 2 6 0 0 1 0 1 1\n3 0 2 3 0\n"));
    EXPECT_THAT(corners(), ElementsAre("0 0: 0 0", "1 0: 1 0", "1 1: 1 1", "0 0: 0 0", "1 1: 1 1", "0 1: 0.25 0.5"));
    EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(PlyReaderTexturesTest, WedgesThatDoNotFitTheCornersAreTold)
{
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\n", "", wedges, 2,
                         QByteArray(fourPoints) + "3 0 1 2 5 0 0 1 0 1\n3 0 2 3 8 0 0 1 0 1 1 7 7\n"));
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("the texture coordinates of 2 faces were left out: they are not "
                                                       "two for each corner @ ")));
    EXPECT_EQ(mesh().positions.size(), 4u);
}

TEST_F(PlyReaderTexturesTest, BinaryWedgesAreReadAsWell)
{
    QByteArray data = "ply\nformat binary_little_endian 1.0\ncomment TextureFile brass.jpg\nelement vertex 3\nproperty "
                      "float x\nproperty float y\nproperty float z\nelement face 1\n" +
                      QByteArray(wedges) + "end_header\n";
    const auto append = [&data](auto value) {
        data.resize(data.size() + int(sizeof(value)));
        qToLittleEndian(value, data.data() + data.size() - int(sizeof(value)));
    };
    for (const float number : {0, 0, 0, 1, 0, 0, 1, 1, 0})
        append(number);
    data += '\3';
    for (const std::int32_t index : {0, 1, 2})
        append(index);
    data += '\6';
    for (const float number : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f, 0.125f})
        append(number);
    ASSERT_TRUE(read(write(QStringLiteral("b.ply"), data)));
    EXPECT_THAT(corners(), ElementsAre("0 0: 0 0.25", "1 0: 0.5 0.75", "1 1: 1 0.125"));
    EXPECT_EQ(pictureOf(), jpegOf("brass"));
}

TEST_F(PlyReaderTexturesTest, EachOfSeveralPicturesHasAGeometry)
{
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\ncomment TextureFile brass.jpg\n", "",
                         QByteArray(wedges) + "property int texnumber\n", 4,
                         QByteArray(fourPoints) +
                             "3 0 1 2 6 0 0 1 0 1 1 1\n3 0 2 3 6 0 0 1 1 0 1 0\n3 1 2 3 6 1 0 1 1 0 1 -1\n"
                             "3 3 0 1 6 0 1 0 0 1 0 1\n"));
    EXPECT_THAT(warnings(), IsEmpty());
    EXPECT_EQ(outline(root()), "(none) oak plank brass");
    EXPECT_TRUE(geometry(root()->getChild(0))->getMaterial() == osg::NullFC);
    EXPECT_EQ(pictureOf(1), pngOf("oak"));
    EXPECT_EQ(pictureOf(2), jpegOf("brass"));
    EXPECT_THAT(corners(0), ElementsAre("1 0: 1 0", "1 1: 1 1", "0 1: 0 1"));
    EXPECT_THAT(corners(1), ElementsAre("0 0: 0 0", "1 1: 1 1", "0 1: 0 1"));
    EXPECT_THAT(corners(2), ElementsAre("0 0: 0 0", "1 0: 1 0", "1 1: 1 1", "0 1: 0 1", "0 0: 0 0", "1 0: 1 0"));
    EXPECT_EQ(mesh(1).positions.size(), 3u);
    EXPECT_EQ(mesh(2).positions.size(), 4u);
}

TEST_F(PlyReaderTexturesTest, APictureThatNoFaceBearsAndOneThatIsNotNamedAreTold)
{
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\ncomment TextureFile brass.jpg\n", "",
                         QByteArray(wedges) + "property int texnumber\n", 2,
                         QByteArray(fourPoints) + "3 0 1 2 6 0 0 1 0 1 1 1\n3 0 2 3 6 0 0 1 1 0 1 2\n"));
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("1 faces bear a picture that the file does not name @ "),
                                        QStringLiteral("1 pictures were left out: no face bears them @ ")));
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\ncomment TextureFile brass.jpg\n", "", wedges, 1,
                         QByteArray(fourPoints) + "3 0 1 2 6 0 0 1 0 1 1\n"));
    EXPECT_EQ(pictureOf(), pngOf("oak"));
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("1 pictures were left out: no face bears them @ ")));
}

TEST_F(PlyReaderTexturesTest, APictureWithoutCoordinatesAndAMissingOneAreTold)
{
    const QByteArray face = QByteArray(fourPoints) + "3 0 1 2\n";
    const QByteArray list = "property list uchar int vertex_indices\n";
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\n", "", list, 1, face));
    EXPECT_THAT(warnings(),
                ElementsAre(QStringLiteral("a picture was left out: neither vertices nor faces have texture "
                                           "coordinates @ ")));
    EXPECT_TRUE(geometry(root()->getChild(0))->getMaterial() == osg::NullFC);
    ASSERT_TRUE(
        readText("comment TextureFile gone.png\n", "", wedges, 1, QByteArray(fourPoints) + "3 0 1 2 6 0 0 1 0 1 1\n"));
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].contains(QLatin1String("gone.png was left out")));
    EXPECT_TRUE(geometry(root()->getChild(0))->getMaterial() == osg::NullFC);
    ASSERT_TRUE(readText("comment TextureFile \ncomment Texture oak plank.png\n", "", list, 1, face));
    EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(PlyReaderTexturesTest, APictureStandsInsteadOfColoursOfVertices)
{
    const QByteArray colors = "property uchar red\nproperty uchar green\nproperty uchar blue\n";
    const QByteArray rows = "0 0 0 9 9 9\n1 0 0 9 9 9\n1 1 0 9 9 9\n0 1 0 9 9 9\n3 0 1 2 6 0 0 1 0 1 1\n";
    ASSERT_TRUE(readText("comment TextureFile oak plank.png\n", colors, wedges, 1, rows));
    EXPECT_THAT(warnings(),
                ElementsAre(QStringLiteral("the colours of vertices were left out: a picture stands instead "
                                           "of them @ ")));
    EXPECT_TRUE(mesh().colors.empty());
    ASSERT_TRUE(readText("", colors, wedges, 1, rows));
    EXPECT_EQ(mesh().colors.size(), 4u);
    EXPECT_EQ(mesh().texCoords.size(), 4u);
}

TEST_F(PlyReaderTexturesTest, VerticesOfWedgesCountAgainstTheLimits)
{
    QByteArray rows = fourPoints;
    for (int i = 0; i < 200; ++i)
        rows += "3 0 1 2 6 0 0." + QByteArray::number(1000 + i) + " 1 0 1 1\n";
    files::ReadOptions options;
    options.limits.maxVertices = 203;
    EXPECT_TRUE(readText("", "", wedges, 200, rows, options));
    EXPECT_EQ(mesh().positions.size(), 203u);
    options.limits.maxVertices = 202;
    EXPECT_FALSE(readText("", "", wedges, 200, rows, options));
}

TEST_F(PlyReaderTexturesTest, AnIndexOfAFileNeverMeansAVertexOfWedges)
{
    const QByteArray rows = QByteArray(fourPoints) + "3 0 1 2 6 0 0 1 0 1 1\n3 0 1 2 6 0.5 0 1 0 1 1\n";
    ASSERT_TRUE(readText("", "", wedges, 2, rows));
    ASSERT_EQ(mesh().positions.size(), 5u);
    EXPECT_FALSE(readText("", "", wedges, 3, rows + "3 0 1 4 6 0 0 1 0 1 1\n"));
}

} // namespace
