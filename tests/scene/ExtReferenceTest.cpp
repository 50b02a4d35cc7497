#include "host/znOpenSGExt/ExtReference.h"

#include "scene/ContainerRegistry.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using ExtReferenceTest = SceneGraphTest;

TEST_F(ExtReferenceTest, FileReferencesAreCountedByTheReferenceCore)
{
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    {
        const osg::RefPtr<osg::ExtReferencePtr> first(osg::ExtReferenceBase::create());
        const osg::RefPtr<osg::ExtReferencePtr> second(osg::ExtReferenceBase::create());
        first->setSourceFile(file);
        second->setSmartFile(file);
        second->setSourceFile(file);
        EXPECT_EQ(file->getRefCount(), 3u);
        EXPECT_TRUE(first->getSourceFile() == file);
        EXPECT_TRUE(first->getSmartFile() == osg::NullFC);
    }
    EXPECT_EQ(osg::livingContainerCount(), 0u);
}

} // namespace
