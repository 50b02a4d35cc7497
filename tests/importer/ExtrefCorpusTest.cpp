// Real assemblies whose parts lie in other files, through the real converter. The expected places are the numbers of the
// files' own placements, added up by hand and in millimetres.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "importer/SceneText.h"
#include "importer/znImporter.h"
#include "standalone/OSGSystem/MatrixMath.h"
#include "standalone/session/znStandaloneSession.h"

#include "host/OSGSystem/TreeFunctions.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>

namespace
{

struct Assembly {
    const char* file;
    std::vector<std::string> places; ///< of the geometries: the part's name and its origin
};

void PrintTo(const Assembly& assembly, std::ostream* stream)
{
    *stream << assembly.file;
}

/// One import in a session of its own.
struct Import {
    znImportResult result;
    std::string tree;
    std::vector<std::string> places;
    std::vector<std::string> matrices; ///< the same with the axes
};

osg::Matrix worldMatrix(osg::NodePtr node)
{
    osg::Matrix matrix;
    for (; node; node = node->getParent())
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            matrix = transform->getMatrix() * matrix;
    return matrix;
}

/// The name of the part; the files of one set call their inner nodes all alike.
std::string partName(osg::NodePtr node)
{
    while (std::string(osg::getName(node)) == "MASTER")
        node = node->getParent();
    return osg::getName(node);
}

std::string rounded(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, " %.2f", std::abs(value) < 0.005 ? 0.0 : value);
    return text;
}

void notePlaces(const osg::NodePtr& root, Import& import)
{
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (!osg::fcCast<osg::Geometry>(node->getCore()))
            return osg::Action::Continue;
        const osg::Matrix matrix = worldMatrix(node);
        std::string place = partName(node);
        for (const unsigned i : {12u, 13u, 14u})
            place += rounded(matrix[i]);
        import.places.push_back(place);
        for (const unsigned i : {0u, 1u, 2u, 4u, 5u, 6u, 8u, 9u, 10u})
            place += rounded(matrix[i]);
        import.matrices.push_back(place);
        return osg::Action::Continue;
    });
    std::sort(import.places.begin(), import.places.end());
    std::sort(import.matrices.begin(), import.matrices.end());
}

Import import(const QString& file, const char* processes, const char* references = "keep")
{
    znStandaloneSession session;
    EXPECT_FALSE(session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT)));
    EXPECT_FALSE(session.settings().set(QStringLiteral("processes.most"), QString::fromUtf8(processes)));
    EXPECT_FALSE(session.settings().set(QStringLiteral("optimize.sourceReferences"), QString::fromUtf8(references)));
    znImporter importer(session);
    Import import;
    QEventLoop loop;
    QObject::connect(&importer, &znImporter::finished, &loop, [&](const znImportResult& end) {
        import.result = end;
        loop.quit();
    });
    QTimer::singleShot(300000, &loop, &QEventLoop::quit);
    importer.import(file);
    loop.exec();
    import.tree = describeScene(session.sceneRoot());
    notePlaces(session.sceneRoot(), import);
    import.result.node = osg::NodePtr();
    return import;
}

class ExtrefCorpusTest : public testing::TestWithParam<Assembly>
{
protected:
    const QString m_file =
        qEnvironmentVariable("ZN_CORPUS") + QStringLiteral("/step/") + QString::fromUtf8(GetParam().file);
};

TEST_P(ExtrefCorpusTest, EveryPartIsInItsPlaceWhateverTheNumberOfProcesses)
{
    if (!QFileInfo::exists(m_file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam().file << " in it";
    const Import inlined = import(m_file, "1");
    const Import two = import(m_file, "2");
    const Import four = import(m_file, "4");
    for (const Import* one : {&inlined, &two, &four}) {
        EXPECT_EQ(one->result.state, znCADFileTypes::JobSucceeded) << one->result.error.toStdString();
        EXPECT_TRUE(one->result.missing.empty());
        EXPECT_THAT(one->places, testing::ElementsAreArray(GetParam().places));
    }
    EXPECT_EQ(two.tree, four.tree);
    EXPECT_EQ(inlined.matrices, two.matrices);
    EXPECT_THAT(two.tree, testing::HasSubstr("[ExtReference]"));
    const Import dissolved = import(m_file, "2", "dissolve");
    EXPECT_EQ(dissolved.matrices, two.matrices);
    EXPECT_THAT(dissolved.tree, testing::Not(testing::HasSubstr("[ExtReference]")));
}

INSTANTIATE_TEST_SUITE_P(
    Sets, ExtrefCorpusTest,
    testing::Values(
        // Inches in the file, and files that refer to files.
        Assembly{"extref-s1-c5-214/s1-c5-214.stp",
                 {"FOOT_BACK_000 0.00 -36.48 -0.23", "FOOT_BACK_000 0.00 36.48 -0.23",
                  "FOOT_FRONT_000 0.00 -36.48 -0.23", "FOOT_FRONT_000 0.00 36.48 -0.23", "HEAD_BACK -48.00 0.00 0.00",
                  "HEAD_FRONT -48.00 0.00 0.00", "MAINBODY_BACK 50.00 0.00 0.00", "MAINBODY_FRONT -30.00 0.00 0.00",
                  "TAIL_MIDDLE_PART -102.00 0.00 0.00", "TAIL_TURBINE 41.00 -24.00 0.00",
                  "TAIL_TURBINE 41.00 24.00 0.00"}},
        Assembly{"extref-s1-tu-203/s1-tu-203.stp",
                 {"FOOTBACK 227.20 -31.75 -70.68", "FOOTBACK 227.20 42.25 -73.18", "FOOTFRONT 227.20 -31.75 -70.68",
                  "FOOTFRONT 227.20 42.25 -73.18", "HEADBACK 125.00 0.00 0.00", "HEADFRONT 60.00 0.00 0.00",
                  "MAINBODYBACK 257.20 0.00 0.00", "MAINBODYFRONT 207.20 0.00 0.00", "TAILMIDDLEPART 362.20 0.00 0.00",
                  "TAILTURBINE::1 314.93 -75.00 0.00", "TAILTURBINE::2 314.93 75.00 0.00"}}));

} // namespace
