#include "importer/LeftOutContent.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Tags.h"
#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

osg::NodePtr nodeWith(std::vector<std::string> tags)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
    osg::setTags(node, std::move(tags));
    return node;
}

TEST(LeftOutContent, IsSummedUpOverFilesEachOfWhichCountsOnce)
{
    const osg::RefPtr<osg::NodePtr> root(nodeWith({"ptx::left-out=2 segments of PMI\n/a.jt", "other"}));
    root->addChild(nodeWith({"ptx::left-out=5 segments of PMI\n/b.jt", "ptx::left-out=1 views\n/b.jt"}));
    root->addChild(nodeWith({"ptx::left-out=5 segments of PMI\n/b.jt"}));
    const std::vector<zn::LeftOutContent> content = zn::leftOutContent(root.get());
    ASSERT_EQ(content.size(), 2u);
    EXPECT_EQ(content[0].what, QStringLiteral("segments of PMI"));
    EXPECT_EQ(content[0].count, 7u);
    EXPECT_EQ(content[0].files, 2u);
    EXPECT_EQ(describe(QStringLiteral("/a%1.jt"), content[0]),
              QStringLiteral("/a%1.jt: segments of PMI are left out: 7, in 2 files"));
    EXPECT_EQ(describe(QStringLiteral("/a%1.jt"), content[1]), QStringLiteral("/a%1.jt: views are left out: 1"));
}

} // namespace
