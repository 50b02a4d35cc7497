#include "standalone/znUtils/CallTrace.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

void inner(int number)
{
    const zn::TracedCall call("inner", number);
}

void outer(const std::string& text, bool flag)
{
    const zn::TracedCall call("outer", text, flag);
    inner(1);
}

TEST(CallTrace, TellsNameAndArgumentsOfTheOutermostCallAlone)
{
    std::vector<std::string> calls;
    {
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(call); });
        outer("a b", true);
        inner(7);
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"outer('a b', true)", "inner(7)"}));
}

TEST(CallTrace, TellsNothingBeforeAndAfterItsLife)
{
    std::vector<std::string> calls;
    inner(1);
    {
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(call); });
    }
    inner(2);
    EXPECT_TRUE(calls.empty());
}

TEST(CallTrace, CanEndWithinACall)
{
    std::vector<std::string> calls;
    auto trace = std::make_unique<zn::CallTrace>([&](const std::string& call) { calls.push_back(call); });
    {
        const zn::TracedCall call("ending");
        trace.reset();
        inner(3);
    }
    EXPECT_EQ(calls, std::vector<std::string>{"ending()"});
}

TEST(CallTrace, ShowsTextsListsAndNodes)
{
    EXPECT_EQ(zn::tracetext::of(std::vector<QString>{QStringLiteral("ä"), QStringLiteral("b")}), "['ä', 'b']");
    EXPECT_EQ(zn::tracetext::of(static_cast<const char*>(nullptr)), "null");
    EXPECT_EQ(zn::tracetext::of(osg::NodePtr()), "null");
    EXPECT_EQ(zn::tracetext::of(2.5), "2.5");
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    osg::setName(node.get(), "lid");
    EXPECT_EQ(zn::tracetext::of(node.get()), "node " + std::to_string(node->getContainerId()) + " 'lid'");
}

} // namespace
