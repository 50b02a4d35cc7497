#include "files/ply/PlyReader.h"

#include "tests/files/ReaderTest.h"

#include <QtEndian>

#include <gmock/gmock.h>

#include <sys/resource.h>

#include <ctime>

namespace
{

using files::ReadOptions;
using osg::Color4f;
using osg::Vec2f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::IsEmpty;

class PlyReaderTest : public ReaderTest
{
protected:
    const osg::Mesh& only() const { return mesh(root()->getChild(0)); }
};

constexpr const char* painted = R"(ply
format ascii 1.0
comment made by hand
obj_info nothing
element vertex 4
property float x
property double y
property float32 z
property float nx
property float ny
property float nz
property uchar red
property uint8 green
property ushort blue
property float alpha
property float quality
property float s
property float t
element face 2
property uchar flags
property list uchar int vertex_indices
element edge 1
property int vertex1
property int vertex2
end_header
1 2 3 0 0 1 51 255 13107 0.25 9 0.125 0.5
4 2 3 0 1 0 0 0 0 1 9 0 1

4 6 3.5 1 0 0 255 255 65535 1 9 1 1
1 6 3 0 0 -1 102 0 0 0.75 9 0.5 0.75
7 3 0 1 2
7 3 0 2 3
0 3
)";

TEST_F(PlyReaderTest, AllThatVerticesCarryArrives)
{
    const auto result = read(write(QString::fromUtf8("Stück 零件.ply"), painted));
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_THAT(list(only().positions), ElementsAre(Vec3f{1, 2, 3}, Vec3f{4, 2, 3}, Vec3f{4, 6, 3.5f}, Vec3f{1, 6, 3}));
    EXPECT_THAT(list(only().normals), ElementsAre(Vec3f{0, 0, 1}, Vec3f{0, 1, 0}, Vec3f{1, 0, 0}, Vec3f{0, 0, -1}));
    EXPECT_THAT(list(only().texCoords), ElementsAre(Vec2f{0.125f, 0.5f}, Vec2f{0, 1}, Vec2f{1, 1}, Vec2f{0.5f, 0.75f}));
    EXPECT_THAT(list(only().colors), ElementsAre(Color4f{0.2f, 1, 0.2f, 0.25f}, Color4f{0, 0, 0, 1},
                                                 Color4f{1, 1, 1, 1}, Color4f{0.4f, 0, 0, 0.75f}));
    EXPECT_THAT(list(only().triangles), ElementsAre(0u, 1u, 2u, 0u, 2u, 3u));
    EXPECT_THAT(list(only().lines), ElementsAre(0u, 3u));
    EXPECT_TRUE(only().points.empty());
    EXPECT_TRUE(geometry(root()->getChild(0))->getMaterial() == osg::NullFC);
}

/// The same small mesh as bytes of one order.
template <class T>
void append(QByteArray& bytes, T number, bool isBigEndian)
{
    const T ordered = isBigEndian ? qToBigEndian(number) : qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&ordered), sizeof(ordered));
}

QByteArray binaryFile(bool isBigEndian)
{
    QByteArray bytes =
        isBigEndian ? "ply\nformat binary_big_endian 1.0\n" : "ply\r\nformat binary_little_endian 1.0\r\n";
    bytes += "element vertex 3\nproperty float x\nproperty double y\nproperty short z\nproperty uchar red\n"
             "property uchar green\nproperty uchar blue\nelement face 1\nproperty list uchar ushort vertex_index\n"
             "property int group\nend_header\n";
    for (const std::int16_t i : {std::int16_t(1), std::int16_t(-2), std::int16_t(300)}) {
        append(bytes, float(i) + 0.5f, isBigEndian);
        append(bytes, double(i) * 2, isBigEndian);
        append(bytes, i, isBigEndian);
        bytes.append("\x00\x33\xFF", 3);
    }
    bytes.append('\x03');
    for (const std::uint16_t index : {2, 0, 1})
        append(bytes, index, isBigEndian);
    append(bytes, std::int32_t(77), isBigEndian);
    return bytes;
}

class PlyBinaryTest : public PlyReaderTest, public testing::WithParamInterface<bool>
{
};

TEST_P(PlyBinaryTest, NumbersOfAllTypesAreRead)
{
    ASSERT_TRUE(read(write(QStringLiteral("binary.ply"), binaryFile(GetParam()))));
    EXPECT_THAT(list(only().positions), ElementsAre(Vec3f{1.5f, 2, 1}, Vec3f{-1.5f, -4, -2}, Vec3f{300.5f, 600, 300}));
    EXPECT_EQ(only().colors[1], (Color4f{0, 0.2f, 1, 1}));
    EXPECT_THAT(list(only().triangles), ElementsAre(2u, 0u, 1u));
}

TEST_P(PlyBinaryTest, EveryTruncationIsRefused)
{
    const QByteArray whole = binaryFile(GetParam());
    for (int length = 0; length < whole.size(); ++length) {
        const files::ReadResult result = read(write(QStringLiteral("cut.ply"), whole.left(length)));
        ASSERT_FALSE(result) << length;
        EXPECT_EQ(result.error().code, files::ErrorCode::Damaged);
    }
}

TEST_P(PlyBinaryTest, EveryChangedByteIsReadOrRefused)
{
    const QByteArray whole = binaryFile(GetParam());
    for (int place = 0; place < whole.size(); ++place) {
        QByteArray changed = whole;
        changed[place] = static_cast<char>(changed[place] ^ 0x99);
        const files::ReadResult result = read(write(QStringLiteral("changed.ply"), changed));
        EXPECT_TRUE(!result || result.value());
    }
}

INSTANTIATE_TEST_SUITE_P(Orders, PlyBinaryTest, testing::Values(false, true),
                         [](const auto& test) { return test.param ? "BigEndian" : "LittleEndian"; });

TEST_F(PlyReaderTest, VerticesAloneAreACloudOfPoints)
{
    ASSERT_TRUE(read(write(QStringLiteral("cloud.ply"),
                           "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\n"
                           "property float z\nend_header\n1 2 3\n+4e0 5 6\n")));
    EXPECT_THAT(list(only().positions), ElementsAre(Vec3f{1, 2, 3}, Vec3f{4, 5, 6}));
    EXPECT_THAT(list(only().points), ElementsAre(0u, 1u));
}

TEST_F(PlyReaderTest, StripsBecomeTrianglesThatRunTheSameWay)
{
    ASSERT_TRUE(read(write(QStringLiteral("strips.ply"),
                           "ply\nformat ascii 1.0\nelement vertex 5\nproperty float x\nproperty float y\n"
                           "property float z\nelement tristrips 1\nproperty list int int vertex_indices\nend_header\n"
                           "0 0 1\n1 0 1\n0 1 1\n1 1 1\n0 2 1\n9 0 1 2 3 4 -1 4 3 2\n")));
    EXPECT_THAT(list(only().triangles), ElementsAre(0u, 1u, 2u, 2u, 1u, 3u, 2u, 3u, 4u, 4u, 3u, 2u));
}

TEST_F(PlyReaderTest, WhatIsLeftOutIsToldOf)
{
    const auto result = read(write(QStringLiteral("more.ply"),
                                   "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
                                   "property float z\nelement face 1\nproperty list uchar int vertex_indices\n"
                                   "property uchar red\nelement camera 2\nproperty list int float values\nend_header\n"
                                   "0 0 1\n1 0 1\n0 1 1\n3 0 1 2 255\n2 1 1\n0\n"));
    EXPECT_TRUE(result);
    EXPECT_THAT(texts(result.warnings), ElementsAre(QStringLiteral("the colours of faces were left out @ "),
                                                    QStringLiteral("2 elements 'camera' were left out @ ")));
}

TEST_F(PlyReaderTest, UnitAndAxisOfTheOptionsBecomeOneTransform)
{
    ReadOptions options;
    options.millimetresPerUnit = 10;
    ASSERT_TRUE(read(write(QStringLiteral("cm.ply"), painted), options));
    EXPECT_THAT(osg::fcCast<osg::Transform>(root()->getChild(0)->getCore())->getMatrix().values,
                ElementsAre(10, 0, 0, 0, 0, 10, 0, 0, 0, 0, 10, 0, 0, 0, 0, 1));
}

TEST_F(PlyReaderTest, LimitsOfTheOptionsAreKept)
{
    ReadOptions options;
    options.limits.maxVertices = 15;
    EXPECT_EQ(errorOf(write(QStringLiteral("p.ply"), painted), options),
              QStringLiteral("LimitExceeded p.ply: more than 15 vertices (line 25)"));
    options.limits.maxVertices = 16;
    EXPECT_EQ(errorOf(write(QStringLiteral("p.ply"), painted), options), QStringLiteral("none"));
}

TEST_F(PlyReaderTest, CountsThatNoByteBacksTakeNoMemory)
{
    for (const char* count : {"1000000000", "4000000000"})
        for (const char* format : {"ascii", "binary_little_endian"}) {
            const QByteArray text = QByteArray("ply\nformat ") + format + " 1.0\nelement vertex " + count +
                                    "\nproperty float x\nproperty float y\nproperty float z\nend_header\n0 0 0\n";
            const std::clock_t start = std::clock();
            EXPECT_NE(errorOf(write(QStringLiteral("claims.ply"), text), {}), QStringLiteral("none"))
                << count << format;
            EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC, 1) << count << format;
        }
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    EXPECT_LT(used.ru_maxrss, 1'000'000) << "kilobytes at the most";
}

struct Damage {
    const char* name;
    const char* header;
    const char* data;
    const char* error;
};

class PlyDamageTest : public PlyReaderTest, public testing::WithParamInterface<Damage>
{
};

TEST_P(PlyDamageTest, FailsWithFileCauseAndPlace)
{
    const QByteArray content = QByteArray(GetParam().header) + "end_header\n" + GetParam().data;
    EXPECT_EQ(errorOf(write(QStringLiteral("d.ply"), content)), QString::fromUtf8(GetParam().error));
}

#define PLY_ASCII "ply\nformat ascii 1.0\n"
#define PLY_XYZ "property float x\nproperty float y\nproperty float z\n"
#define PLY_ONE PLY_ASCII "element vertex 1\n" PLY_XYZ
#define PLY_FACE PLY_ONE "element face 1\nproperty list int int vertex_indices\n"

INSTANTIATE_TEST_SUITE_P(
    Files, PlyDamageTest,
    testing::Values(
        Damage{"OtherFile", "PLY\n", "", "Damaged d.ply: this is no PLY file (line 1)"},
        Damage{"NoFormat", "ply\nelement vertex 1\n", "",
               "Damaged d.ply: the header does not tell the format (line 3)"},
        Damage{"Format", "ply\nformat utf8 1.0\n", "", "Damaged d.ply: the format is not known (line 2)"},
        Damage{"Word", "ply\nflavour mint\n", "", "Damaged d.ply: 'flavour' is not known (line 2)"},
        Damage{"Count", PLY_ASCII "element vertex many\n", "",
               "Damaged d.ply: an element needs a name and a number (line 3)"},
        Damage{"NegativeCount", PLY_ASCII "element vertex -1\n", "",
               "Damaged d.ply: an element needs a name and a number (line 3)"},
        Damage{"Type", PLY_ASCII "element vertex 1\nproperty text x\n", "",
               "Damaged d.ply: the type of a property is not known (line 4)"},
        Damage{"LooseProperty", PLY_ASCII "property float x\n", "",
               "Damaged d.ply: a property stands before the first element (line 3)"},
        Damage{"FloatLength", PLY_ASCII "element face 1\nproperty list float int vertex_indices\n", "",
               "Damaged d.ply: the length of a list is not an integer (line 4)"},
        Damage{"NoProperties", PLY_ASCII "element vertex 4000000000\n", "",
               "Damaged d.ply: the element 'vertex' has no properties (line 4)"},
        Damage{"TooMany", PLY_ASCII "element vertex 18446744073709551615\n" PLY_XYZ, "1 2 3\n",
               "Damaged d.ply: the file is too short for 18446744073709551615 elements 'vertex' (line 7)"},
        Damage{"NoVertices", PLY_ASCII "element vertex 0\n" PLY_XYZ, "", "Empty d.ply: there are no vertices in it"},
        Damage{"NoZ", PLY_ASCII "element vertex 1\nproperty float x\nproperty float y\n", "1 2\n",
               "Damaged d.ply: the vertices have no x, y and z (line 6)"},
        Damage{"Twice", PLY_ONE "element vertex 1\n" PLY_XYZ, "1 2 3\n1 2 3\n",
               "Damaged d.ply: there are vertices already (line 12)"},
        Damage{"MissingNumber", PLY_ONE, "1 2\n", "Damaged d.ply: a number is missing (line 8)"},
        Damage{"NoNumber", PLY_ONE, "1 2 three\n", "Damaged d.ply: a value is no number (line 8)"},
        Damage{"CommaNumber", PLY_ONE, "1 2 3,5\n", "Damaged d.ply: a value is no number (line 8)"},
        Damage{"EndsEarly", PLY_ASCII "element vertex 2\n" PLY_XYZ, "1 2 3\n \n",
               "Damaged d.ply: the file ends too early (line 9)"},
        Damage{"Beyond", PLY_FACE, "1 2 3\n3 0 0 1\n",
               "Damaged d.ply: an index reaches beyond the 1 vertices before it (line 11)"},
        Damage{"Negative", PLY_FACE, "1 2 3\n3 0 0 -1\n",
               "Damaged d.ply: an index reaches beyond the 1 vertices before it (line 11)"},
        Damage{"NotANumber", PLY_FACE, "1 2 3\n3 0 0 nan\n",
               "Damaged d.ply: an index reaches beyond the 1 vertices before it (line 11)"},
        Damage{"LongList", PLY_FACE, "1 2 3\n2000000000 0\n",
               "Damaged d.ply: a list is longer than the file (line 11)"},
        Damage{"NegativeList", PLY_FACE, "1 2 3\n-3 0 0 0\n",
               "Damaged d.ply: a list is longer than the file (line 11)"},
        Damage{"BeyondByEdge", PLY_ONE "element edge 1\nproperty int vertex1\nproperty int vertex2\n", "1 2 3\n0 7\n",
               "Damaged d.ply: an index reaches beyond the 1 vertices before it (line 12)"},
        Damage{"BeyondByStrip", PLY_ONE "element tristrips 1\nproperty list int int vertex_indices\n", "1 2 3\n1 7\n",
               "Damaged d.ply: an index reaches beyond the 1 vertices before it (line 11)"}),
    [](const auto& test) { return test.param.name; });

TEST_F(PlyReaderTest, APolygonOfManyCornersIsCutUp)
{
    QByteArray content = PLY_FACE "end_header\n1 2 3\n40000";
    for (int i = 0; i < 40'000; ++i)
        content += " 0";
    EXPECT_TRUE(read(write(QStringLiteral("round.ply"), content)));
}

} // namespace
