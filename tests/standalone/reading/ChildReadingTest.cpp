#include "standalone/reading/ChildReading.h"

#include "standalone/startup/BuiltInReaders.h"
#include "tests/files/gltf/GltfFixture.h"
#include "tests/standalone/reading/ReadingTest.h"
#include "tests/standalone/reading/SameTree.h"

#include <QDirIterator>

#include <iostream>

namespace
{

using files::ErrorCode;

const char* const objText =
    "mtllib lamp.mtl\nmtllib nowhere.mtl\no base plate\ng left\nusemtl brass\n"
    "v 0 0 0\nv 2 0 0\nv 0 3 0\nv 2 3 0.5\nvn 0 0 1\nvt 0.25 0.75\n"
    "f 1/1/1 2/1/1 3/1/1\nusemtl glass\nf 2 4 3\no cover\nusemtl brass\nf 1 4 3\nl 1 2\nbogus 3\n";
const char* const mtlText = "newmtl brass\nKd 0.8 0.6 0.1\nKs 0.5 0.5 0.5\nNs 40\nmap_Kd brass.png\n"
                            "newmtl glass\nKd 0.1 0.2 0.9\nd 0.25\n";
const char* const plyText = "ply\nformat ascii 1.0\ncomment made by hand\nelement vertex 4\nproperty float x\n"
                            "property float y\nproperty float z\nproperty uchar red\nproperty uchar green\n"
                            "property uchar blue\nproperty float strain\nelement face 2\n"
                            "property list uchar int vertex_indices\nend_header\n0 0 0 255 0 0 1\n1 0 0 0 255 0 2\n"
                            "0 1 0 0 0 255 3\n1 1 1 9 8 7 4\n3 0 1 2\n3 1 3 2\n";
const char* const wrlText = R"(#VRML V2.0 utf8
WorldInfo { title "lamp" info ["by hand"] }
DEF mast Transform { translation 1 2 3 rotation 0 0 1 0.5 scale 2 2 2 children [
  DEF ball Shape { appearance Appearance { material DEF red Material { diffuseColor 0.9 0.1 0.2 transparency 0.5 } }
    geometry Sphere { radius 3 } }
  Shape { appearance Appearance { material USE red } geometry IndexedFaceSet {
    coord Coordinate { point [0 0 0, 1 0 0, 0 1 0] } coordIndex [0 1 2 -1] } }
  Group { children USE ball } ] }
Viewpoint { position 1 2 30 description "front" }
Script { url "javascript:" }
Inline { url "missing.wrl" }
)";

QByteArray gltfText()
{
    const GltfBytes bytes = GltfBytes().floats({0, 0, 0, 1, 0, 0, 0, 1, 0});
    return R"({"asset": {"version": "2.0"}, "buffers": [)" + bytes.embedded() + R"(],
        "bufferViews": [{"buffer": 0, "byteLength": 36}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0],
                       "max": [1, 1, 0]}],
        "extensionsUsed": ["KHR_materials_variants", "KHR_node_visibility", "KHR_lights_punctual"],
        "extensions": {"KHR_materials_variants": {"variants": [{"name": "day"}, {"name": "night"}]}},
        "materials": [{"name": "red", "pbrMetallicRoughness": {"baseColorFactor": [1, 0.1, 0.2, 0.5]},
                       "alphaMode": "BLEND", "extras": {"uuid": "{1}"}}, {"name": "blue"}],
        "meshes": [{"name": "sail", "primitives": [{"material": 0, "attributes": {"POSITION": 0}, "extensions":
            {"KHR_materials_variants": {"mappings": [{"material": 1, "variants": [1]}]}}}]}],
        "cameras": [{"type": "perspective", "name": "Vorn", "perspective": {"yfov": 0.5, "znear": 0.25, "zfar": 20}}],
        "animations": [{"channels": [], "samplers": []}],
        "extras": {"products": [{"material": "oak", "mass": 12.5}]},
        "nodes": [{"name": "boat", "mesh": 0, "extras": {"product": 0, "attributes": {"weight": 3, "ok": true}}},
            {"name": "mast", "camera": 0, "translation": [1, 2, 3]},
            {"name": "twin", "mesh": 0, "scale": [1, 2, 1], "extensions": {"KHR_node_visibility": {"visible": false}}},
            {"name": "hung", "mesh": 0, "extras": {"variants": {"night": true, "day": false}}}]})";
}

class ChildReadingTest : public ReadingTest
{
protected:
    /// The same file in both ways: trees, warnings and errors.
    void expectSame(const QString& file, const files::ReadOptions& options = {})
    {
        const files::ReadResult here = zn::startup::builtInReaders().read(file, options);
        const osg::RefPtr<osg::NodePtr> hereRoot(here ? here.value() : osg::NodePtr());
        const files::ReadResult there = read(file, options);
        const osg::RefPtr<osg::NodePtr> thereRoot(there ? there.value() : osg::NodePtr());
        EXPECT_EQ(here.warnings, there.warnings) << file.toStdString();
        ASSERT_EQ(bool(here), bool(there)) << file.toStdString();
        m_warnings += here.warnings.size();
        if (here) {
            m_nodes += SameTree().compare(hereRoot, thereRoot, file.toStdString() + "/");
            return;
        }
        EXPECT_EQ(here.error().toStringWithCode(), there.error().toStringWithCode());
        m_error = here.error().toString();
    }

    std::size_t m_nodes = 0;
    std::size_t m_warnings = 0;
    QString m_error;
};

TEST_F(ChildReadingTest, FilesOfEachFormatGiveTheSameTreeAndWarnings)
{
    write(QStringLiteral("lamp.mtl"), mtlText);
    const std::pair<const char*, QByteArray> made[] = {
        {"lämp.obj", objText}, {"a b.ply", plyText}, {"boat.gltf", gltfText()}, {"mast.wrl", wrlText}};
    for (const auto& [name, text] : made) {
        m_nodes = m_warnings = 0;
        expectSame(write(QString::fromUtf8(name), text));
        EXPECT_GT(m_nodes, 1u) << name;
    }
    EXPECT_TRUE(m_log.empty());
}

TEST_F(ChildReadingTest, TheOptionsOfAReadAreThoseOfTheChild)
{
    files::ReadOptions options;
    options.millimetresPerUnit = 25.4;
    options.upAxis = files::UpAxis::Y;
    expectSame(writeTriangle(QStringLiteral("inch.obj")), options);
    options.vrmlInMetres = true;
    expectSame(write(QStringLiteral("metre.wrl"), wrlText), options);
    options.limits.maxVertices = 2;
    expectSame(writeTriangle(QStringLiteral("many.obj")), options);
    EXPECT_TRUE(m_error.contains(QStringLiteral("more than 2 vertices"))) << m_error.toStdString();
}

TEST_F(ChildReadingTest, FilesThatCannotBeReadGiveTheSameErrors)
{
    for (const char* name : {"cut.ply", "cut.gltf", "cut.glb", "cut.wrl"}) {
        expectSame(write(QString::fromLatin1(name), "nothing of this kind\n"));
        EXPECT_FALSE(m_error.isEmpty()) << name;
    }
    expectSame(path(QStringLiteral("missing.obj")));
    expectSame(m_folder.path() + QStringLiteral("/.obj"));
}

TEST_F(ChildReadingTest, MoreThanAHundredWarningsAreCountedOnce)
{
    QByteArray text = "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n";
    for (int i = 0; i < 130; ++i)
        text += "f 1 2 " + QByteArray::number(1000 + i) + "\n";
    expectSame(write(QStringLiteral("warned.obj"), text));
}

TEST_F(ChildReadingTest, TheTreeStandsOnAMapAndLeavesNoFile)
{
    const files::ReadResult result = read(writeLargeObj(2000));
    ASSERT_TRUE(result);
    const osg::RefPtr<osg::NodePtr> root(result.value());
    EXPECT_EQ(readFolders(), QStringList());
    QFile maps(QStringLiteral("/proc/self/maps"));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    EXPECT_TRUE(maps.readAll().contains("/scene.osb"));
    EXPECT_STREQ(osg::getName(root.get()), "large");
}

TEST_F(ChildReadingTest, AllMeshFilesOfTheCorpusGiveTheSame)
{
    const QString corpus = qEnvironmentVariable("ZN_CORPUS");
    if (corpus.isEmpty())
        GTEST_SKIP() << "ZN_CORPUS is not set";
    std::size_t count = 0;
    QDirIterator step(corpus,
                      {QStringLiteral("*.obj"), QStringLiteral("*.gltf"), QStringLiteral("*.glb"),
                       QStringLiteral("*.ply"), QStringLiteral("*.wrl"), QStringLiteral("*.wrz")},
                      QDir::Files, QDirIterator::Subdirectories);
    for (; step.hasNext() && !HasFailure(); ++count)
        expectSame(step.next());
    std::cout << count << " files, " << m_nodes << " nodes, " << m_warnings << " warnings\n";
}

} // namespace
