// What glTF-Transform knows of the materials of files that went through us.

#include "scene/MaterialLook.h"
#include "tests/clients/Clients.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"
#include "tests/support/SurfaceSamples.h"

#include <QProcess>

namespace
{

using nlohmann::json;

class SurfacesClientTest : public GlbTest
{
protected:
    void SetUp() override
    {
        GlbTest::SetUp();
        if (!clients::isInstalled(QStringLiteral("gltf-transform")))
            GTEST_SKIP() << "glTF-Transform is not installed";
    }

    /// A file with each sample on a triangle.
    QString chart()
    {
        std::size_t count = 0;
        for (const surfacesamples::Sample& sample : surfacesamples::all()) {
            files::MaterialLook look;
            look.emission = {1, 1, 1};
            look.transparency = sample.surface.alphaMode == osg::AlphaMode::Blend ? 1 - sample.surface.opacity : 0;
            look.surface = sample.surface;
            osg::Mesh mesh = triangle();
            mesh.normals = std::vector<osg::Vec3f>{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}};
            mesh.texCoords = std::vector<osg::Vec2f>{{0, 0}, {1, 0}, {0, 1}};
            mesh.texCoords1 = mesh.texCoords;
            const std::string name = sample.name + " #" + std::to_string(count++);
            add(files::makeNode(name, geometry(name, mesh, files::makeMaterial(name, look))));
        }
        (void)written();
        return pathOf(QString::fromUtf8("Größe 大小.glb"));
    }
};

TEST_F(SurfacesClientTest, EachSampleIsTheSameAfterASecondRound)
{
    const QString first = chart();
    const files::ReadResult read = readScene(first);
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> tree(read.value());
    const QString second = pathOf(QStringLiteral("second.glb"));
    ASSERT_TRUE(files::glb::write(tree.get(), second, options));
    const json before = clients::surfaces(first);
    ASSERT_EQ(before.size(), surfacesamples::all().size());
    EXPECT_EQ(clients::surfaces(second), before);
}

TEST_F(SurfacesClientTest, SamplesAreWhatTheyAreCalled)
{
    const json seen = clients::surfaces(chart());
    const auto sample = [&](const std::string& name) {
        for (const auto& [key, value] : seen.items())
            if (key.starts_with(name + " #"))
                return value;
        return json();
    };
    EXPECT_EQ(sample("metalness")["MetallicFactor"], 0.75);
    EXPECT_EQ(sample("cutoff")["AlphaMode"], "MASK");
    EXPECT_EQ(sample("cutoff")["AlphaCutoff"], 0.25);
    EXPECT_EQ(sample("one side")["DoubleSided"], false);
    EXPECT_TRUE(sample("unlit").contains("KHR_materials_unlit"));
    EXPECT_EQ(sample("emission strength")["KHR_materials_emissive_strength"]["EmissiveStrength"], 8);
    EXPECT_EQ(sample("refraction")["KHR_materials_ior"]["IOR"], 1.25);
    EXPECT_EQ(sample("sheen green")["KHR_materials_sheen"]["SheenColorFactor"], json({0, 0.25, 0}));
    EXPECT_EQ(sample("specular red")["KHR_materials_specular"]["SpecularColorFactor"], json({2, 1, 1}));
    EXPECT_EQ(sample("clearcoat roughness")["KHR_materials_clearcoat"]["ClearcoatRoughnessFactor"], 0.75);
    EXPECT_EQ(sample("transmission")["KHR_materials_transmission"]["TransmissionFactor"], 0.75);
    const json normal = sample("strength");
    EXPECT_EQ(normal["NormalScale"], 0.5);
    EXPECT_EQ(sample("clamp u")["NormalTexture"]["info"]["WrapS"], 33071);
    EXPECT_EQ(sample("mirror v")["NormalTexture"]["info"]["WrapT"], 33648);
    EXPECT_EQ(sample("second set")["NormalTexture"]["info"]["TexCoord"], 1);
    EXPECT_EQ(sample("scale v")["NormalTexture"]["info"]["KHR_texture_transform"]["Scale"], json({1, 4}));
    EXPECT_NE(sample("other image")["NormalTexture"]["image"], normal["NormalTexture"]["image"]);
}

/// Models that others made.
class SurfacesCorpusTest : public testing::TestWithParam<const char*>
{
};

TEST_P(SurfacesCorpusTest, MaterialsAndPicturesAreTheSameInTheOutput)
{
    const QString input = qEnvironmentVariable("ZN_CORPUS") + QStringLiteral("/gltf/") + QLatin1String(GetParam());
    if (!QFile::exists(input))
        GTEST_SKIP() << "ZN_CORPUS names no folder with gltf/" << GetParam() << " in it";
    if (!clients::isInstalled(QStringLiteral("gltf-transform")))
        GTEST_SKIP() << "glTF-Transform is not installed";
    const QTemporaryDir folder;
    const json before = clients::surfaces(input);
    ASSERT_FALSE(before.empty());
    for (const QStringList& more :
         {QStringList(), QStringList{QStringLiteral("--set"), QStringLiteral("export.quantize=on")},
          QStringList{QStringLiteral("--textures"), QStringLiteral("external")}}) {
        const QString file = folder.filePath(QStringLiteral("out.glb"));
        QProcess znimport;
        znimport.start(QStringLiteral(ZNIMPORT), QStringList{input, QStringLiteral("-o"), file} + more);
        ASSERT_TRUE(znimport.waitForFinished(600'000));
        EXPECT_EQ(znimport.exitCode(), 0);
        EXPECT_EQ(clients::surfaces(file), before) << more.join(QLatin1Char(' ')).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(, SurfacesCorpusTest,
                         testing::Values("BoxTextured.glb", "BoxTextured-embedded.gltf", "AlphaBlendModeTest.glb",
                                         "DamagedHelmet.glb", "Duck.glb", "VertexColorTest.gltf"));

} // namespace
