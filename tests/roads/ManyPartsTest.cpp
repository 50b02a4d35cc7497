// A generated assembly of many part files through the real converter.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "importer/Importer.h"
#include "importer/SceneText.h"
#include "standalone/startup/StandaloneSession.h"
#include "tests/roads/CorpusImport.h"
#include "tests/support/AssemblyBuilder.h"

#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

#include <set>
#include <string>

namespace
{

TEST(ManyPartsTest, EveryReferenceHasItsPartAndPartsAreReadOnce)
{
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/many parts äö XXXXXX"));
    const AssemblyPlan plan{12, 130};
    const QString file = QString::fromStdString(plan.write(folder.path().toStdString()));
    ASSERT_FALSE(file.isEmpty());
    zn::StandaloneSession session;
    ASSERT_FALSE(session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT)));
    ASSERT_FALSE(session.settings().set(QStringLiteral("processes.most"), QStringLiteral("2")));
    zn::Importer importer(session);
    QEventLoop loop;
    zn::ImportResult result;
    QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
        result = end;
        loop.quit();
    });
    QTimer::singleShot(110000, &loop, &QEventLoop::quit);
    importer.import({file});
    loop.exec();
    ASSERT_EQ(result.state, znCADFileTypes::JobSucceeded) << result.error.toStdString();
    const zn::SceneCounts counts = zn::countScene(result.node);
    EXPECT_EQ(counts.geometries, 12u);
    EXPECT_EQ(counts.placedGeometries, 130u);
    EXPECT_EQ(counts.placedTriangles, 130u * 12u);
    const osg::NodePtr top = result.node->getChild(0);
    ASSERT_EQ(top->getNChildren(), 130u);
    const osg::NodePtr place = top->getChild(117);
    EXPECT_STREQ(osg::getName(place), "place 117");
    const auto transform = osg::fcCast<osg::Transform>(place->getCore());
    ASSERT_TRUE(transform);
    EXPECT_EQ(transform->getMatrix()[12], 340);
    EXPECT_EQ(transform->getMatrix()[13], 20);
    EXPECT_EQ(transform->getMatrix()[14], 5);
    EXPECT_STREQ(osg::getName(place->getChild(0)), "box 9");
    result.node = osg::NodePtr();
}

TEST(ManyPartsTest, TheTreeDoesNotTellTheNumberOfProcesses)
{
    const QTemporaryDir folder;
    const QString file = QString::fromStdString(CarPlan::write(folder.path().toStdString()));
    ASSERT_FALSE(file.isEmpty());
    const corpustest::Import inlined = corpustest::import(file, "1", "dissolve");
    EXPECT_THAT(inlined.tree, testing::HasSubstr("    car [Transform3D]\n"
                                                 "      front [Transform3D]\n"
                                                 "        left [Transform3D]\n"
                                                 "          wheel [Transform3D @1]\n"
                                                 "            first bolt [Transform3D @2]\n"
                                                 "              bolt (inactive) [Transform3D @3]\n"));
    EXPECT_THAT(inlined.tags,
                testing::IsSupersetOf({"left; Product=content of wheel.stp; Product id=content of wheel.stp",
                                       "first bolt; Product=content of bolt.stp; Product id=content of bolt.stp",
                                       "bolt; Product=bolt; Layer=screws; Product id=bolt",
                                       "front lamp; Product=content of lamp.stp; Product id=content of lamp.stp"}));
    EXPECT_THAT(inlined.ids,
                testing::Contains("car.stp/car/front@axle/right@content of wheel.stp/wheel/rim place@rim/rim"));
    EXPECT_EQ(std::set<std::string>(inlined.ids.begin(), inlined.ids.end()).size(), inlined.ids.size());
    for (const char* processes : {"2", "4"}) {
        const corpustest::Import parallel = corpustest::import(file, processes, "dissolve");
        EXPECT_EQ(parallel.result.state, znCADFileTypes::JobSucceeded) << parallel.result.error.toStdString();
        EXPECT_EQ(parallel.tree, inlined.tree) << processes;
        EXPECT_EQ(parallel.tags, inlined.tags) << processes;
        EXPECT_EQ(parallel.ids, inlined.ids) << processes;
    }
}

} // namespace
