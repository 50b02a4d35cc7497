#include "files/scenefile/SceneFile.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "scene/GeometryWalk.h"
#include "tests/standalone/znTessellation/RetessellationTest.h"

#include <QCoreApplication>
#include <QProcess>

namespace
{

/// Real parts, converted with their exact surfaces.
class TessellationCorpus : public RetessellationTest, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        const QString corpus = qEnvironmentVariable("ZN_CORPUS");
        m_input = corpus + QStringLiteral("/step/") + QString::fromLatin1(GetParam());
        if (corpus.isEmpty() || !QFile::exists(m_input))
            GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam() << " in it";
        const QString output = path(QStringLiteral("converted.osb"));
        const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/ptxconvert");
        ASSERT_EQ(
            QProcess::execute(program, {QStringLiteral("--set"), QStringLiteral("keep-brep=1"), QStringLiteral("--set"),
                                        QStringLiteral("convert.pmi=0"), m_input, output}),
            0);
        root->addChild(osg::scenefile::readSceneFile(output).value());
    }

    /// Area and volume of all distinct geometries together.
    MeshMeasures measured() const
    {
        MeshMeasures sum;
        for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root)) {
            const MeshMeasures one = measuresOf(osg::GeometryAccess::mesh(*geometry));
            sum.area += one.area;
            sum.volume += one.volume;
        }
        return sum;
    }
    /// Of a box around everything in the coordinates of the parts, which the converter's deviation is a share of.
    double largestDiagonal() const
    {
        osg::Vec3f low = {1e9f, 1e9f, 1e9f}, high = {-1e9f, -1e9f, -1e9f};
        for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root))
            for (const osg::Vec3f& p : osg::GeometryAccess::mesh(*geometry).positions) {
                low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
                high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
            }
        return std::hypot(high.x - low.x, high.y - low.y, high.z - low.z);
    }
    std::size_t geometryCount() const { return osg::geometriesBelow(root).size(); }

    QString m_input;
};

TEST_P(TessellationCorpus, MergingKeepsAreaAndVolumeAndRetessellationBothWithinTolerance)
{
    const MeshMeasures converted = measured();
    const std::size_t before = geometryCount();
    znOptimize::triangulate(root, false);
    znOptimize::mergeGeometry(root);
    const MeshMeasures merged = measured();
    EXPECT_NEAR(merged.area, converted.area, 1e-6 * converted.area);
    EXPECT_NEAR(merged.volume, converted.volume, 1e-6 * converted.area);
    EXPECT_LE(geometryCount(), before);
    retessellate({.chordDeviation = 0.02, .normalTolerance = 7.5});
    const MeshMeasures fine = measured();
    EXPECT_NEAR(fine.area, converted.area, 0.02 * converted.area);
    // No mesh lies farther from its surface than its deviation.
    EXPECT_NEAR(fine.volume, converted.volume, (0.02 + 0.001 * largestDiagonal()) * converted.area);
    for (const std::string& line : m_log)
        ADD_FAILURE() << line;
}

TEST_P(TessellationCorpus, NoMoreEdgesAreOpenThanBeforeAlsoWhenEdgesAreSplit)
{
    std::size_t converted = 0, split = 0;
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root))
        converted += openEdges(osg::GeometryAccess::mesh(*geometry));
    retessellate({.chordDeviation = 0.1, .normalTolerance = 15});
    std::size_t whole = 0;
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root))
        whole += openEdges(osg::GeometryAccess::mesh(*geometry));
    retessellate({.chordDeviation = 0.1, .normalTolerance = 15, .maxChordLength = 5});
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root)) {
        split += openEdges(osg::GeometryAccess::mesh(*geometry));
        EXPECT_LE(longestEdge(osg::GeometryAccess::mesh(*geometry)), 5.0001);
    }
    EXPECT_EQ(converted == 0, whole == 0);
    EXPECT_EQ(whole == 0, split == 0);
}

INSTANTIATE_TEST_SUITE_P(Step, TessellationCorpus,
                         testing::Values("as1-oc-214.stp", "io1-cm-214.stp", "cube.step", "cube_hole.step",
                                         "eight_cyl.stp", "conical-surface.step", "dm1-id-214.stp",
                                         "face_recognition_sample_part.stp"));

} // namespace
