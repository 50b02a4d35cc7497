#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Tags.h"
#include "tests/files/vrml/VrmlTest.h"

#include <zlib.h>

namespace
{

using osg::Color3f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Pointwise;

using VrmlSceneTest = VrmlTest;

#define TRIANGLE "IndexedFaceSet { coord Coordinate { point [ 1 2 3, 4 2 3, 1 7 3 ] } coordIndex [ 0 1 2 -1 ] }"
#define SHAPE "Shape { geometry " TRIANGLE " }"

TEST_F(VrmlSceneTest, AShapeComesInAsItIs)
{
    const auto result = readScene("DEF Blech Shape { geometry " TRIANGLE " }");
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_EQ(outline(root()), "Blech");
    const osg::Mesh& only = mesh(root()->getChild(0));
    EXPECT_THAT(list(only.positions), ElementsAre(Vec3f{1, 2, 3}, Vec3f{4, 2, 3}, Vec3f{1, 7, 3}));
    EXPECT_THAT(list(only.normals), ElementsAre(Vec3f{0, 0, 1}, Vec3f{0, 0, 1}, Vec3f{0, 0, 1}));
    EXPECT_THAT(list(only.triangles), ElementsAre(0u, 1u, 2u));
    EXPECT_TRUE(geometry(root()->getChild(0))->getMaterial() == osg::NullFC);
}

TEST_F(VrmlSceneTest, ATransformTurnsAndScalesAboutItsCentre)
{
    ASSERT_TRUE(readScene("DEF T Transform { translation 10 20 30 center 1 0 0 rotation 0 0 1 1.5707963 scale 2 3 4 "
                          "children " SHAPE " }"));
    // (1 0 0) is the centre; x becomes 2 y, y becomes -3 x, z becomes 4 z.
    EXPECT_THAT(matrix(node({"T"})).values,
                Pointwise(FloatNear(1e-5f), {0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 11, 18, 30, 1}));
}

TEST_F(VrmlSceneTest, ScalingFollowsItsOrientation)
{
    ASSERT_TRUE(readScene("DEF T Transform { scaleOrientation 0 0 2 0.78539816 scale 3 1 1 children [" SHAPE "] }"));
    EXPECT_THAT(matrix(node({"T"})).values,
                Pointwise(FloatNear(1e-5f), {2, 1, 0, 0, 1, 2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST_F(VrmlSceneTest, AllValuesOfAMaterialArrive)
{
    ASSERT_TRUE(readScene("Shape { appearance Appearance { material DEF Lack Material { ambientIntensity 0.5 "
                          "diffuseColor 0.2 0.4 0.6 specularColor .1 .2 .3 emissiveColor 0 0.125 0.25 shininess 0.25 "
                          "transparency 0.75 } texture ImageTexture { url [ \"maps/holz.png\" ] } } "
                          "geometry " TRIANGLE " }"));
    const osg::SimpleMaterialPtr lack = material(root()->getChild(0));
    EXPECT_EQ(nameOf(lack), "Lack");
    EXPECT_EQ(lack->getAmbient(), (Color3f{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(lack->getDiffuse(), (Color3f{0.2f, 0.4f, 0.6f}));
    EXPECT_EQ(lack->getSpecular(), (Color3f{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(lack->getEmission(), (Color3f{0, 0.125f, 0.25f}));
    EXPECT_EQ(lack->getShininess(), 32);
    EXPECT_EQ(lack->getTransparency(), 0.75f);
    EXPECT_THAT(osg::tagsOf(lack), ElementsAre("texture=maps/holz.png"));
}

TEST_F(VrmlSceneTest, WhatIsUsedAgainSharesItsCores)
{
    ASSERT_TRUE(readScene("DEF A Transform { translation 1 2 3 children DEF S Shape { appearance DEF L Appearance { "
                          "material Material { diffuseColor 1 0 0 } } geometry DEF G " TRIANGLE " } }\n"
                          "DEF B Group { children [ USE A Shape { appearance USE L geometry USE G } ] }"));
    EXPECT_EQ(outline(root()), "A(S) B(A(S) G)");
    EXPECT_TRUE(node({"A"})->getCore() == node({"B", "A"})->getCore());
    EXPECT_TRUE(node({"A", "S"})->getCore() == node({"B", "A", "S"})->getCore());
    EXPECT_TRUE(material(node({"A", "S"})) == material(node({"B", "G"})));
    EXPECT_EQ(mesh(node({"A", "S"})).positions.data(), mesh(node({"B", "G"})).positions.data());
}

TEST_F(VrmlSceneTest, GroupsOfAllKindsBecomeNodes)
{
    const auto result = readScene("DEF a Anchor { url \"x\" children DEF b Billboard { children DEF c Collision { "
                                  "collide FALSE children DEF d Shape { geometry " TRIANGLE " } } } }");
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_EQ(outline(root()), "a(b(c(d)))");
}

TEST_F(VrmlSceneTest, OfASwitchTheChosenAndOfLevelsTheFinestIsTaken)
{
    ASSERT_TRUE(readScene("DEF w Switch { whichChoice 1 choice [ DEF x " SHAPE " DEF y " SHAPE " ] }\n"
                          "DEF n Switch { choice [ " SHAPE " ] }\n"
                          "DEF l LOD { range [ 5 ] level [ DEF fine " SHAPE " DEF coarse " SHAPE " ] }"));
    EXPECT_EQ(outline(root()), "w(y) n l(fine)");
}

TEST_F(VrmlSceneTest, AViewpointIsACamera)
{
    ASSERT_TRUE(readScene("DEF v Viewpoint { position 7 8 9 orientation 0 1 0 1.5707963 fieldOfView 0.5235988 "
                          "description \"Von links\" } " SHAPE));
    const auto camera = osg::fcCast<osg::UberCamera>(node({"v"})->getCore());
    ASSERT_TRUE(camera);
    EXPECT_EQ(nameOf(camera), "Von links");
    EXPECT_NEAR(camera->getFieldOfView(), 30, 1e-4);
    EXPECT_THAT(camera->getMatrix().values,
                Pointwise(FloatNear(1e-6f), {0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 7, 8, 9, 1}));
}

TEST_F(VrmlSceneTest, APrototypeTakesTheValuesOfItsInstances)
{
    const auto result = readScene("PROTO Teil [ exposedField SFColor farbe 0 1 0 field MFNode inhalt [] "
                                  "eventIn SFBool an ] { Group { children [ Shape { appearance Appearance { material "
                                  "Material { diffuseColor IS farbe } } geometry " TRIANGLE " } Group { children IS "
                                  "inhalt } ] } Group { } }\n"
                                  "DEF eins Teil { } DEF zwei Teil { farbe 1 0 0.5 inhalt DEF innen " SHAPE " }");
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_EQ(outline(root()), "eins((none) (none)) zwei((none) (none)(innen))");
    EXPECT_EQ(material(node({"eins", "(none)"}))->getDiffuse(), (Color3f{0, 1, 0}));
    EXPECT_EQ(material(node({"zwei", "(none)"}))->getDiffuse(), (Color3f{1, 0, 0.5f}));
}

TEST_F(VrmlSceneTest, APrototypePassesValuesOnToOneInIt)
{
    ASSERT_TRUE(
        readScene("PROTO In [ field SFVec3f ort 0 0 0 ] { Transform { translation IS ort children " SHAPE " } }"
                  " PROTO Aus [ field SFVec3f wo 1 1 1 ] { Group { children [ DEF k In { ort IS wo } USE k ] } }"
                  " DEF n Aus { wo 4 5 6 }"));
    EXPECT_EQ(outline(root()), "n(k((none)) k((none)))");
    EXPECT_THAT(matrix(node({"n", "k"})).values, ElementsAre(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 4, 5, 6, 1));
    EXPECT_TRUE(node({"n"})->getChild(0)->getCore() == node({"n"})->getChild(1)->getCore());
}

TEST_F(VrmlSceneTest, BehaviourIsPassedOver)
{
    const auto result = readScene("WorldInfo { title \"}\" info [ \"a \\\"b\\\" {\" ] }\n# { not a bracket\n"
                                  "DEF t TimeSensor { loop TRUE } DEF s Script { field SFNode n USE s url \"x\" }\n"
                                  "ROUTE t.fraction TO s.in\n" SHAPE);
    EXPECT_TRUE(result);
    EXPECT_THAT(texts(result.warnings), IsEmpty());
}

TEST_F(VrmlSceneTest, WhatIsNotReadIsToldWithItsPlace)
{
    const auto result = readScene("Shape { geometry Text { string \"a\" } }\n  Wolke { dichte [ 1 { } ] }\n"
                                  "EXTERNPROTO Fern [ field SFBool b ] \"fern.wrl\"\nFern { b TRUE }\nUSE niemand\n"
                                  "Group { farbe 1 2 3 children " SHAPE " }");
    EXPECT_TRUE(result);
    EXPECT_THAT(
        texts(result.warnings),
        ElementsAre(
            QStringLiteral("nodes of the type 'Text' are not read @ line 2, column 18"),
            QStringLiteral("nodes of the type 'Wolke' are not known @ line 3, column 3"),
            QStringLiteral(
                "the prototype 'Fern' lies in another file; what is made of it is left out @ line 4, column 13"),
            QStringLiteral("there is no node 'niemand' before this use of it @ line 6, column 5"),
            QStringLiteral("nodes of the type 'Group' have no field 'farbe' @ line 7, column 9")));
}

TEST_F(VrmlSceneTest, AnInlineFileIsReadBesideTheFile)
{
    writeScene("DEF rad " SHAPE, QString::fromUtf8("teile/Räder.wrl"));
    writeScene("DEF w Inline { url \"R\xc3\xa4"
               "der.wrl\" }",
               QStringLiteral("teile/wagen.wrl"));
    ASSERT_TRUE(readScene("DEF a Inline { url [ \"weg.wrl\" \"teile/wagen.wrl\" ] } DEF b Inline { url "
                          "\"teile/wagen.wrl\" }"));
    EXPECT_EQ(outline(root()), "a(w(rad)) b(w(rad))");
    EXPECT_TRUE(node({"a", "w", "rad"})->getCore() == node({"b", "w", "rad"})->getCore());
}

TEST_F(VrmlSceneTest, FilesInACircleAndBrokenOnesAreLeftOut)
{
    write(QStringLiteral("kaputt.wrl"), "#VRML V2.0 utf8\nGroup { children [\n");
    writeScene("Inline { url \"a.wrl\" } " SHAPE, QStringLiteral("b.wrl"));
    const auto result =
        read(writeScene("Inline { url \"b.wrl\" } Inline { url \"kaputt.wrl\" } Inline { }", QStringLiteral("a.wrl")));
    EXPECT_TRUE(result);
    ASSERT_EQ(result.warnings.size(), 3u);
    EXPECT_TRUE(result.warnings[0].file.endsWith(QStringLiteral("/b.wrl")));
    EXPECT_TRUE(result.warnings[0].message.endsWith(QStringLiteral("/a.wrl' takes itself in")));
    EXPECT_TRUE(result.warnings[1].file.endsWith(QStringLiteral("/kaputt.wrl")));
    EXPECT_EQ(result.warnings[1].place, QStringLiteral("line 3, column 1"));
    EXPECT_EQ(result.warnings[2].message, QStringLiteral("the file '' is not there"));
}

QByteArray packed(const QByteArray& text)
{
    QByteArray result(text.size() + 1000, '\0');
    z_stream stream = {};
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY), Z_OK);
    QByteArray input = text;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    result.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return result;
}

TEST_F(VrmlSceneTest, APackedFileIsReadAsOneThatIsNot)
{
    const QByteArray text = "#VRML V2.0 utf8\nDEF p " SHAPE;
    ASSERT_TRUE(read(write(QStringLiteral("p.wrz"), packed(text))));
    EXPECT_EQ(outline(root()), "p");
    EXPECT_EQ(errorOf(write(QStringLiteral("cut.wrl"), packed(text).chopped(12))),
              QStringLiteral("Damaged cut.wrl: the compressed data are damaged or end too early"));
    files::ReadOptions options;
    options.limits.maxFileBytes = 5000;
    EXPECT_EQ(errorOf(write(QStringLiteral("bomb.wrl"), packed(text + QByteArray(100'000, ' '))), options),
              QStringLiteral("LimitExceeded bomb.wrl: more than 5000 bytes to read"));
}

TEST_F(VrmlSceneTest, FilesInMetresAreBroughtToMillimetresAndZUp)
{
    files::ReadOptions options;
    options.vrmlInMetres = true;
    ASSERT_TRUE(readScene(SHAPE, options));
    EXPECT_THAT(matrix(root()->getChild(0)).values,
                ElementsAre(1000, 0, 0, 0, 0, 0, 1000, 0, 0, -1000, 0, 0, 0, 0, 0, 1));
}

TEST_F(VrmlSceneTest, DeepAndWideFilesMeetLimits)
{
    const QByteArray deep = QByteArray("Group { children ").repeated(600) + SHAPE + QByteArray("}").repeated(600);
    EXPECT_EQ(sceneError(deep), QStringLiteral("LimitExceeded d.wrl: nodes are nested deeper than 500 (line 2, column "
                                               "8501)"));
    QByteArray doubling = "DEF n0 " SHAPE "\n";
    for (int i = 1; i <= 40; ++i)
        doubling += QStringLiteral("DEF n%1 Group { children [ USE n%2 USE n%2 ] }\n").arg(i).arg(i - 1).toUtf8();
    files::ReadOptions options;
    options.limits.maxNodes = 1000;
    EXPECT_EQ(sceneError(doubling, options), QStringLiteral("LimitExceeded d.wrl: more than 1000 nodes"));
    QByteArray prototypes = "PROTO P0 [] { " SHAPE " }\n";
    for (int i = 1; i <= 40; ++i)
        prototypes +=
            QStringLiteral("PROTO P%1 [] { Group { children [ P%2 { } P%2 { } ] } }\n").arg(i).arg(i - 1).toUtf8();
    EXPECT_EQ(sceneError(prototypes + "P40 { }", options),
              QStringLiteral("LimitExceeded d.wrl: more than 1000 nodes (line 2, column 55)"));
    options.limits.maxVertices = 5;
    EXPECT_EQ(sceneError(SHAPE, options),
              QStringLiteral("LimitExceeded d.wrl: more than 5 vertices (line 2, column 18)"));
}

struct Damage {
    const char* name;
    const char* scene;
    const char* error;
};

class VrmlDamageTest : public VrmlTest, public testing::WithParamInterface<Damage>
{
};

TEST_P(VrmlDamageTest, FailsWithFileCauseAndPlace)
{
    EXPECT_EQ(sceneError(GetParam().scene), QString::fromUtf8(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Files, VrmlDamageTest,
    testing::Values(
        Damage{"Nothing", "# only this", "Empty d.wrl: there is nothing to draw in it"},
        Damage{"NoBracket", "Group children", "Damaged d.wrl: '{' was expected (line 2, column 7)"},
        Damage{"Open", "Group {\n children [", "Damaged d.wrl: the file ends too early (line 3, column 12)"},
        Damage{"OpenUnknown", "\nWolke { [ }", "Damaged d.wrl: what begins here does not end (line 3, column 9)"},
        Damage{"OpenString", "Inline { url \"a", "Damaged d.wrl: a string does not end (line 2, column 14)"},
        Damage{"Number", "Coordinate { point [ 1 2 x3 ] }", "Damaged d.wrl: 'x3' is no number (line 2, column 26)"},
        Damage{"NotANumber", "Coordinate { point [ 1 2 -nan ] }",
               "Damaged d.wrl: '-nan' is no number (line 2, column 26)"},
        Damage{"Large", "Sphere { radius 1e99 }", "Damaged d.wrl: the number 1e99 is too large (line 2, column 17)"},
        Damage{"Index", "IndexedFaceSet { coordIndex [ 0 1.5 ] }",
               "Damaged d.wrl: '1.5' is no number (line 2, column 33)"},
        Damage{"Multiple", "Coordinate { point [ 1 2 3 4 ] }",
               "Damaged d.wrl: the number of numbers in 'point' is no multiple of 3 (line 2, column 20)"},
        Damage{"Switch", "Cone { side maybe }", "Damaged d.wrl: 'maybe' is neither TRUE nor FALSE (line 2, column 13)"},
        Damage{"FieldKind", "PROTO P [ feld SFBool a TRUE ] { }",
               "Damaged d.wrl: 'feld' is no kind of field (line 2, column 11)"},
        Damage{"FieldType", "PROTO P [ field SFWort a TRUE ] { }",
               "Damaged d.wrl: 'SFWort' is no type of a field (line 2, column 11)"}),
    [](const auto& test) { return test.param.name; });

TEST_F(VrmlSceneTest, OtherFilesAreToldApart)
{
    EXPECT_EQ(errorOf(write(QStringLiteral("alt.wrl"), "#VRML V1.0 ascii\nSeparator { }\n")),
              QStringLiteral("Unsupported alt.wrl: this is a VRML 1.0 file; only VRML 2.0 (VRML97) is read (line 1, "
                             "column 1)"));
    EXPECT_EQ(errorOf(write(QStringLiteral("leer.wrl"), "")),
              QStringLiteral("Damaged leer.wrl: this is no VRML 2.0 file (line 1, column 1)"));
}

/// Every cut of a file that has all kinds of syntax ends with a tree or an error, and leaves nothing behind.
TEST_F(VrmlSceneTest, EveryTruncationIsReadOrRefused)
{
    const QByteArray whole = "PROTO P [ field SFColor c 0 1 0 ] { Shape { appearance Appearance { material Material { "
                             "diffuseColor IS c } } geometry " TRIANGLE " } }\nDEF a P { c 1 0 0 } USE a\n"
                             "DEF s Switch { whichChoice 0 choice [ USE a ] } ROUTE a.b TO c.d Wolke { x \"}\" }\n";
    for (int length = 0; length <= whole.size(); ++length) {
        const files::ReadResult result = readScene(whole.left(length));
        EXPECT_TRUE(!result || result.value()) << length;
    }
}

} // namespace
