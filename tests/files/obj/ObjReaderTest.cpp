#include "files/obj/ObjReader.h"

#include "tests/files/ReaderTest.h"

#include <gmock/gmock.h>

namespace
{

using ObjReaderTest = ReaderTest;
using files::ReadOptions;
using osg::Color3f;
using osg::Color4f;
using osg::Vec2f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* twoParts = R"(# two parts
mtllib colours of parts.mtl
v 1 2 3
v 4 2 3
v 4 6 3
v 1 6 3.5
vt 0.25 0.5
vt 0.75 0.5
vt 0.75 1
vn 0 0 1
o Big plate
g front side
usemtl red paint
f 1/1/1 2/2/1 3/3/1
g rear
usemtl Blau glänzend
f 1 3 4
usemtl red paint
f 1 2 4
o Edge
l 1 2 3
p 4
)";

constexpr const char* colours = R"(newmtl red paint
Ka 0.05 0.06 0.07
Kd 0.5 0.25 0.125
Ks 0.375 0.75 0.625
Ke 0.1 0.2 0.3
Ns 30
d 0.4
newmtl Blau glänzend
Kd 0 0.1 0.9
Tr 0.25
)";

class ObjPartsTest : public ObjReaderTest
{
protected:
    void SetUp() override
    {
        write(QStringLiteral("colours of parts.mtl"), colours);
        const files::ReadResult result = read(write(QString::fromUtf8("Träger 支架.v2.obj"), twoParts));
        ASSERT_TRUE(result);
        EXPECT_THAT(texts(result.warnings), IsEmpty());
    }
};

TEST_F(ObjPartsTest, ObjectsGroupsAndMaterialsBecomeLevelsOfTheTree)
{
    EXPECT_EQ(nameOf(root()), "Träger 支架.v2");
    EXPECT_EQ(outline(root()), "Big plate(front side rear(Blau glänzend red paint)) Edge(rear)");
}

TEST_F(ObjPartsTest, FacesKeepTheirCorners)
{
    const osg::Mesh& front = mesh(node({"Big plate", "front side"}));
    EXPECT_THAT(list(front.positions), ElementsAre(Vec3f{1, 2, 3}, Vec3f{4, 2, 3}, Vec3f{4, 6, 3}));
    EXPECT_THAT(list(front.texCoords), ElementsAre(Vec2f{0.25f, 0.5f}, Vec2f{0.75f, 0.5f}, Vec2f{0.75f, 1}));
    EXPECT_THAT(list(front.normals), ElementsAre(Vec3f{0, 0, 1}, Vec3f{0, 0, 1}, Vec3f{0, 0, 1}));
    EXPECT_THAT(list(front.triangles), ElementsAre(0u, 1u, 2u));
    const osg::Mesh& rear = mesh(node({"Big plate", "rear", "Blau glänzend"}));
    EXPECT_THAT(list(rear.positions), ElementsAre(Vec3f{1, 2, 3}, Vec3f{4, 6, 3}, Vec3f{1, 6, 3.5f}));
    EXPECT_TRUE(rear.normals.empty());
    EXPECT_TRUE(rear.texCoords.empty());
    EXPECT_TRUE(rear.colors.empty());
}

TEST_F(ObjPartsTest, PolyLinesBecomeSegmentsAndPointsStay)
{
    const osg::Mesh& edge = mesh(node({"Edge", "rear"}));
    EXPECT_THAT(list(edge.positions), ElementsAre(Vec3f{1, 2, 3}, Vec3f{4, 2, 3}, Vec3f{4, 6, 3}, Vec3f{1, 6, 3.5f}));
    EXPECT_THAT(list(edge.lines), ElementsAre(0u, 1u, 1u, 2u));
    EXPECT_THAT(list(edge.points), ElementsAre(3u));
    EXPECT_TRUE(edge.triangles.empty());
}

TEST_F(ObjPartsTest, AllValuesOfAMaterialArrive)
{
    const osg::SimpleMaterialPtr red = material(node({"Big plate", "front side"}));
    EXPECT_EQ(nameOf(red), "red paint");
    EXPECT_EQ(red->getAmbient(), (Color3f{0.05f, 0.06f, 0.07f}));
    EXPECT_EQ(red->getDiffuse(), (Color3f{0.5f, 0.25f, 0.125f}));
    EXPECT_EQ(red->getSpecular(), (Color3f{0.375f, 0.75f, 0.625f}));
    EXPECT_EQ(red->getEmission(), (Color3f{0.1f, 0.2f, 0.3f}));
    EXPECT_FLOAT_EQ(red->getShininess(), 30);
    EXPECT_FLOAT_EQ(red->getTransparency(), 0.6f);
}

TEST_F(ObjPartsTest, AMaterialIsSharedByAllThatUseIt)
{
    const osg::SimpleMaterialPtr red = material(node({"Big plate", "front side"}));
    EXPECT_TRUE(material(node({"Big plate", "rear", "red paint"})) == red);
    EXPECT_TRUE(material(node({"Edge", "rear"})) == red);
    EXPECT_EQ(red->getRefCount(), 3u);
}

TEST_F(ObjPartsTest, TransparencyIsReadAsItIs)
{
    const osg::SimpleMaterialPtr blue = material(node({"Big plate", "rear", "Blau glänzend"}));
    EXPECT_EQ(blue->getDiffuse(), (Color3f{0, 0.1f, 0.9f}));
    EXPECT_FLOAT_EQ(blue->getTransparency(), 0.25f);
}

TEST_F(ObjReaderTest, AFileWithoutNamesGivesOneGeometryWithoutMaterial)
{
    ASSERT_TRUE(read(write(QStringLiteral("plain.obj"), "v 0 0 1\nv 1 0 1\nv 0 1 1\nf 1 2 3\n")));
    ASSERT_EQ(root()->getNChildren(), 1u);
    const osg::NodePtr child = root()->getChild(0);
    EXPECT_EQ(nameOf(child), "(none)");
    EXPECT_TRUE(geometry(child)->getMaterial() == osg::NullFC);
}

TEST_F(ObjReaderTest, PolygonsBecomeTrianglesThatCoverThem)
{
    // An L: the corner at (1, 1) points inwards.
    ASSERT_TRUE(
        read(write(QStringLiteral("l.obj"), "v 0 0 7\nv 3 0 7\nv 3 1 7\nv 1 1 7\nv 1 3 7\nv 0 3 7\nf 1 2 3 4 5 6\n")));
    const osg::Mesh& shape = mesh(root()->getChild(0));
    ASSERT_EQ(shape.triangles.size(), 12u);
    float area = 0;
    for (std::size_t i = 0; i < shape.triangles.size(); i += 3) {
        const Vec3f& a = shape.positions[shape.triangles[i]];
        const Vec3f& b = shape.positions[shape.triangles[i + 1]];
        const Vec3f& c = shape.positions[shape.triangles[i + 2]];
        const float twice = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
        EXPECT_GT(twice, 0);
        area += twice / 2;
    }
    EXPECT_FLOAT_EQ(area, 5);
}

TEST_F(ObjReaderTest, EqualVerticesAreOneAndOthersStayApart)
{
    ASSERT_TRUE(read(write(QStringLiteral("quad.obj"),
                           "v 0 0 1\nv 1 0 1\nv 1 1 1\nv 0 1 1\nv 0.000001 1 1\nf 1 2 3\nf 1 3 4\nf 1 3 5\n")));
    const osg::Mesh& shape = mesh(root()->getChild(0));
    EXPECT_EQ(shape.positions.size(), 5u);
    EXPECT_THAT(list(shape.triangles), ElementsAre(0u, 1u, 2u, 0u, 2u, 3u, 0u, 2u, 4u));
}

TEST_F(ObjReaderTest, NegativeIndicesCountFromTheLastVertex)
{
    ASSERT_TRUE(read(write(QStringLiteral("back.obj"), "v 9 9 9\nv 0 0 1\nv 1 0 1\nv 0 1 1\nf -3 -2 -1\nv 5 5 5\n")));
    EXPECT_THAT(list(mesh(root()->getChild(0)).positions), ElementsAre(Vec3f{0, 0, 1}, Vec3f{1, 0, 1}, Vec3f{0, 1, 1}));
}

TEST_F(ObjReaderTest, VertexColoursStay)
{
    ASSERT_TRUE(read(
        write(QStringLiteral("painted.obj"), "v 0 0 1 0.5 0.25 1\nv 1 0 1 0 1 0.75\nv 0 1 1 0.1 0.2 0.3\nf 1 2 3\n")));
    EXPECT_THAT(list(mesh(root()->getChild(0)).colors),
                ElementsAre(Color4f{0.5f, 0.25f, 1, 1}, Color4f{0, 1, 0.75f, 1}, Color4f{0.1f, 0.2f, 0.3f, 1}));
}

TEST_F(ObjReaderTest, ColoursOfSomeVerticesOnlyAreToldOf)
{
    const auto result = read(write(QStringLiteral("half.obj"), "v 0 0 1\nv 1 0 1 1 0 0\nv 0 1 1\nf 1 2 3\n"));
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("colours were left out because not every vertex has one @ ")));
    EXPECT_TRUE(mesh(root()->getChild(0)).colors.empty());
}

TEST_F(ObjReaderTest, WeightsOfVerticesAreNoColours)
{
    ASSERT_TRUE(read(write(QStringLiteral("weights.obj"), "v 2 0 1 0.5\nv 1 0 1 0.5\nv 0 1 1 0.5\nf 1 2 3\n")));
    EXPECT_EQ(mesh(root()->getChild(0)).positions[0], (Vec3f{2, 0, 1}));
    EXPECT_TRUE(mesh(root()->getChild(0)).colors.empty());
}

TEST_F(ObjReaderTest, VerticesAloneAreACloudOfPoints)
{
    ASSERT_TRUE(read(write(QStringLiteral("cloud.obj"), "v 0 0 1\nv 1 0 1\n")));
    EXPECT_THAT(list(mesh(root()->getChild(0)).points), ElementsAre(0u, 1u));
}

TEST_F(ObjReaderTest, StatementsMayGoOnInTheNextLineAndEndInAComment)
{
    ASSERT_TRUE(
        read(write(QStringLiteral("lines.obj"),
                   "\xEF\xBB\xBFv 0 0 1\r\nv 1 0 \\\r\n 1\r\n  v\t+1.5e+0 1 1 # third\r\nf 1 2 \\\n3 # all\r\n")));
    EXPECT_THAT(list(mesh(root()->getChild(0)).positions),
                ElementsAre(Vec3f{0, 0, 1}, Vec3f{1, 0, 1}, Vec3f{1.5f, 1, 1}));
}

TEST_F(ObjReaderTest, NamesThatAreNoUtf8AreTakenForLatin1)
{
    ASSERT_TRUE(read(write(QStringLiteral("latin.obj"), "v 0 0 1\nv 1 0 1\nv 0 1 1\no Geh\xE4use\nf 1 2 3\n")));
    EXPECT_EQ(outline(root()), "Gehäuse");
}

TEST_F(ObjReaderTest, AMissingLibraryIsAWarningThatNamesIt)
{
    const auto result =
        read(write(QStringLiteral("lost.obj"),
                   "v 0 0 1\nmtllib C:\\work\\lost colours.mtl\nv 1 0 1\nv 0 1 1\nusemtl green\nf 1 2 3\n"));
    ASSERT_TRUE(result);
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("the material library 'C:\\work\\lost' is missing @ line 2"),
                            QStringLiteral("the material library 'colours.mtl' is missing @ line 2"),
                            QStringLiteral("no material library has the material 'green' @ ")));
    EXPECT_EQ(nameOf(material(root()->getChild(0))), "green");
}

TEST_F(ObjReaderTest, ALibraryWithTheFoldersOfAnotherMachineIsFoundBesideTheFile)
{
    write(QStringLiteral("far.mtl"), "newmtl a\nKd 0.1 0.2 0.3\n");
    const auto result = read(write(QStringLiteral("near.obj"),
                                   "mtllib D:\\models\\far.mtl\nv 0 0 1\nv 1 0 1\nv 0 1 1\nusemtl a\nf 1 2 3\n"));
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_EQ(material(root()->getChild(0))->getDiffuse(), (Color3f{0.1f, 0.2f, 0.3f}));
}

TEST_F(ObjReaderTest, SeveralLibrariesInOneStatementAreAllRead)
{
    write(QStringLiteral("a.mtl"), "newmtl a\nKd 0.1 0.2 0.3\n");
    write(QStringLiteral("b.mtl"), "newmtl b\nKd 0.4\nmap_Ks wood.png\nKs x\n");
    const auto result =
        read(write(QStringLiteral("two.obj"), "mtllib a.mtl b.mtl\nv 0 0 1\nv 1 0 1\nv 0 1 1\no A\nusemtl a\nf 1 2 3\n"
                                              "o B\nusemtl b\nf 3 2 1\n"));
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("a value of 'Ks' is no number @ line 4"),
                            QStringLiteral("1 textures were left out, of the statements map_Ks @ ")));
    EXPECT_EQ(material(node({"A"}))->getDiffuse(), (Color3f{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(material(node({"B"}))->getDiffuse(), (Color3f{0.4f, 0.4f, 0.4f}));
}

TEST_F(ObjReaderTest, OpacityWinsOverTransparency)
{
    write(QStringLiteral("m.mtl"), "newmtl a\nd -halo 0.75\nTr 0.75\n");
    ASSERT_TRUE(read(write(QStringLiteral("m.obj"), "mtllib m.mtl\nv 0 0 1\nv 1 0 1\nv 0 1 1\nusemtl a\nf 1 2 3\n")));
    EXPECT_FLOAT_EQ(material(root()->getChild(0))->getTransparency(), 0.25f);
}

TEST_F(ObjReaderTest, UnitAndAxisOfTheOptionsBecomeOneTransform)
{
    ReadOptions options;
    options.millimetresPerUnit = 25.4;
    options.upAxis = files::UpAxis::Y;
    ASSERT_TRUE(read(write(QStringLiteral("inch.obj"), "v 1 2 3\nv 1 0 1\nv 0 1 1\nf 1 2 3\n"), options));
    ASSERT_EQ(root()->getNChildren(), 1u);
    const osg::TransformPtr place = osg::fcCast<osg::Transform>(root()->getChild(0)->getCore());
    ASSERT_TRUE(place);
    EXPECT_THAT(place->getMatrix().values, ElementsAre(25.4f, 0, 0, 0, 0, 0, 25.4f, 0, 0, -25.4f, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ(mesh(root()->getChild(0)->getChild(0)).positions[0], (Vec3f{1, 2, 3}));
}

TEST_F(ObjReaderTest, WhatIsLeftOutIsToldOf)
{
    const auto result = read(write(QStringLiteral("odd.obj"), "v 0 0 1\nv 1 0 1\nv 0 1 1\nf 1 2 3\nf 1 2\nsurf 1 2\n"
                                                              "wobble 1\nwabble 2\n"));
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("1 faces and lines without enough corners were left out @ "),
                            QStringLiteral("1 free-form curves and surfaces were left out @ "),
                            QStringLiteral("2 unknown statements were left out, the first is 'wobble' in line 7 @ ")));
}

struct Damage {
    const char* name;
    const char* content;
    const char* error;
};

class ObjDamageTest : public ObjReaderTest, public testing::WithParamInterface<Damage>
{
};

TEST_P(ObjDamageTest, FailsWithFileCauseAndLine)
{
    EXPECT_EQ(errorOf(write(QStringLiteral("broken.obj"), GetParam().content)), QString::fromUtf8(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Files, ObjDamageTest,
    testing::Values(
        Damage{"Empty", "", "Empty broken.obj: there are no faces, lines or points in it"},
        Damage{"NoElements", "o nothing\nvn 0 0 1\n", "Empty broken.obj: there are no faces, lines or points in it"},
        Damage{"Word", "v 0 0 1\nv 1 x 1\n", "Damaged broken.obj: 'x' is no number (line 2)"},
        Damage{"Missing", "v 0 0 1\nv 1 1\n", "Damaged broken.obj: a number is missing (line 2)"},
        Damage{"Huge", "v 0 1e39 1\n", "Damaged broken.obj: '1e39' is no number (line 1)"},
        Damage{"NotANumber", "v nan 0 1\n", "Damaged broken.obj: 'nan' is no number (line 1)"},
        Damage{"CommaNumber", "v 1,5 0 1\n", "Damaged broken.obj: '1,5' is no number (line 1)"},
        Damage{"Beyond", "v 0 0 1\nv 1 0 1\n\nf 1 2 3\n",
               "Damaged broken.obj: vertex 3 is asked for, but there are 2 (line 4)"},
        Damage{"BeyondNormals", "v 0 0 1\nv 1 0 1\nv 1 1 1\nvn 0 0 1\nf 1//1 2//1 3//2\n",
               "Damaged broken.obj: normal 2 is asked for, but there are 1 (line 5)"},
        Damage{"BeyondTexCoords", "v 0 0 1\nv 1 0 1\nv 1 1 1\nf 1/4 2/4 3/4\n",
               "Damaged broken.obj: texture coordinate 4 is asked for, but there are 0 (line 4)"},
        Damage{"Before", "v 0 0 1\nf -1 -2 -3\n", "Damaged broken.obj: an index reaches outside the file (line 2)"},
        Damage{"Zero", "v 0 0 1\nf 0 1 1\n", "Damaged broken.obj: '0' is no index (line 2)"},
        Damage{"Overflow", "v 0 0 1\nf 1 1 99999999999999999999\n",
               "Damaged broken.obj: '99999999999999999999' is no index (line 2)"},
        Damage{"Slashes", "v 0 0 1\nf 1/// 1 1\n", "Damaged broken.obj: '/' is out of place in an index (line 2)"},
        Damage{"Letters", "v 0 0 1\nf 1a 1 1\n", "Damaged broken.obj: 'a' is out of place in an index (line 2)"}),
    [](const auto& test) { return test.param.name; });

TEST_F(ObjReaderTest, ABinaryFileIsRefused)
{
    EXPECT_EQ(errorOf(write(QStringLiteral("binary.obj"), QByteArray("v 0 0 1\n\0\0", 10))),
              QStringLiteral("Damaged binary.obj: this is no text (byte 8)"));
}

TEST_F(ObjReaderTest, APolygonOfAMillionCornersIsCutUp)
{
    QByteArray content = "v 0 0 1\nv 1 0 1\nv 1 1 1\nf";
    for (int i = 0; i < 1'000'000; ++i)
        content += i % 3 == 0 ? " 1" : i % 3 == 1 ? " 2" : " 3";
    ASSERT_TRUE(read(write(QStringLiteral("round.obj"), content)));
}

TEST_F(ObjReaderTest, EachOfTenThousandMaterialsIsFound)
{
    QByteArray content = "mtllib many.mtl\nv 0 0 1\nv 1 0 1\nv 1 1 1\n", library;
    for (int i = 0; i < 10'000; ++i) {
        const QByteArray name = "m" + QByteArray::number(i);
        content += "usemtl " + name + "\nf 1 2 3\n";
        library += "newmtl " + name + "\nNs " + QByteArray::number(i % 900) + '\n';
    }
    write(QStringLiteral("many.mtl"), library);
    ASSERT_TRUE(read(write(QStringLiteral("many.obj"), content)));
    const osg::NodePtr last = root()->getChild(9'999);
    const auto geometry = osg::fcCast<osg::Geometry>(last->getCore());
    EXPECT_EQ(osg::fcCast<osg::SimpleMaterial>(geometry->getMaterial())->getShininess(), 9'999 % 900);
}

TEST_F(ObjReaderTest, LimitsOfTheOptionsAreKept)
{
    ReadOptions options;
    options.limits.maxVertices = 7;
    const QString path = write(QStringLiteral("big.obj"), "v 0 0 1\nv 1 0 1\nv 1 1 1\nf 1 2 3\no b\nf 1 3 2\n");
    EXPECT_EQ(errorOf(path, options), QStringLiteral("LimitExceeded big.obj: more than 7 vertices (line 6)"));
    options.limits.maxVertices = 9;
    EXPECT_EQ(errorOf(path, options), QStringLiteral("none"));
    options.limits.maxNodes = 1;
    EXPECT_EQ(errorOf(path, options), QStringLiteral("LimitExceeded big.obj: more than 1 nodes"));
    options.limits = {};
    options.limits.maxFileBytes = 10;
    EXPECT_EQ(errorOf(path, options), QStringLiteral("LimitExceeded big.obj: more than 10 bytes to read"));
}

} // namespace
