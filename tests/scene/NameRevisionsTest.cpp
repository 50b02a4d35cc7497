#include "scene/NameRevisions.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "tests/scene/SceneGraphTest.h"

#include <gtest/gtest.h>

namespace
{

class NameRevisionsTest : public SceneGraphTest
{
protected:
    /// Whether `work` changes the number.
    template <class Work>
    static bool changes(std::uint64_t (*revision)(), const Work& work)
    {
        const std::uint64_t before = revision();
        work();
        return revision() != before;
    }
};

TEST_F(NameRevisionsTest, NamesOfMaterialsAndWhatPoolsHoldCount)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> paint(osg::SimpleMaterial::create());
    const osg::RefPtr<osg::MaterialPoolPtr> pool(osg::MaterialPool::create());
    const auto revision = osg::materialNamesRevision;
    EXPECT_TRUE(changes(revision, [&] { osg::setName(paint.get(), "red"); }));
    EXPECT_TRUE(changes(revision, [&] { osg::setName(paint.get(), "blue"); }));
    EXPECT_TRUE(changes(revision, [&] { osg::setName(paint.get(), ""); }));
    EXPECT_TRUE(changes(revision, [&] { pool->add(osg::MaterialPtr(paint.get())); }));
    EXPECT_FALSE(changes(revision, [&] { pool->add(osg::MaterialPtr(paint.get())); }));
    EXPECT_TRUE(changes(revision, [&] { pool->sub(paint.get()); }));
    EXPECT_FALSE(changes(revision, [&] { paint->setDiffuse({1, 0, 0}); }));
}

TEST_F(NameRevisionsTest, NamesOfCamerasCountAndThoseOfNodesDoNot)
{
    const osg::RefPtr<osg::UberCameraPtr> camera(osg::UberCamera::create());
    const osg::RefPtr<osg::NodePtr> node(osg::makeNodeFor(camera.get()));
    EXPECT_TRUE(changes(osg::cameraNamesRevision, [&] { osg::setName(camera.get(), "front"); }));
    EXPECT_FALSE(changes(osg::materialNamesRevision, [&] { osg::setName(camera.get(), "side"); }));
    EXPECT_FALSE(changes(osg::cameraNamesRevision, [&] { osg::setName(node.get(), "front"); }));
    EXPECT_FALSE(changes(osg::materialNamesRevision, [&] { osg::setName(node.get(), "front"); }));
}

} // namespace
