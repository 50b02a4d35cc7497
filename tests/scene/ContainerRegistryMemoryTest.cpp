// What is freed when there is no memory left.

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/ContainerRegistry.h"
#include "scene/Tags.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace
{

bool isOut = false;

} // namespace

void* operator new(std::size_t size)
{
    if (void* memory = isOut ? nullptr : std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

TEST(ContainerRegistryMemory, ATreeIsFreedWithoutAny)
{
    const std::size_t before = osg::livingContainerCount();
    osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
    for (int i = 0; i < 1000; ++i) {
        const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
        osg::setName(node, "node");
        osg::setTags(node, {"tag"});
        root->addChild(node);
    }
    ASSERT_GT(osg::livingContainerCount(), before + 3000);
    isOut = true;
    root = osg::RefPtr<osg::NodePtr>();
    isOut = false;
    EXPECT_EQ(osg::livingContainerCount(), before);
}
