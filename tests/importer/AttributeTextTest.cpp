#include "importer/AttributeText.h"

#include "tests/scene/SceneGraphTest.h"
#include "tests/support/HostileAttributes.h"

#include <QString>

#include <algorithm>

namespace
{

using osg::AttributeList;
using osg::AttributeOwner;
using osg::NodePtr;

class AttributeTextTest : public SceneGraphTest
{
protected:
    static std::string textOf(AttributeList attributes)
    {
        const osg::RefPtr<NodePtr> node(osg::Node::create());
        osg::addAttributes(node.get(), AttributeOwner::Occurrence, std::move(attributes));
        return importer::AttributeText().of(node.get(), "  ");
    }
    static std::string valueShown(const std::string& value) { return textOf({{"a", value}}).substr(18); }
};

TEST_F(AttributeTextTest, ALineForEachWithItsUnit)
{
    EXPECT_EQ(textOf({{"Mass", 7.5, "kg"}, {"Parts", std::vector<std::string>{"x", "y"}}}),
              "  occurrence: Mass = 7.5 kg\n  occurrence: Parts = x; y\n");
    EXPECT_EQ(textOf({}), "");
}

TEST_F(AttributeTextTest, AProductIsToldOnce)
{
    const osg::RefPtr<osg::AttributeAttachment::Ptr> wheel(
        osg::AttributeAttachment::create({{"Product", std::string("wheel")}}));
    importer::AttributeText text;
    for (const char* expected : {"product: Product = wheel\noccurrence: Side = left\n", "occurrence: Side = left\n"}) {
        const osg::RefPtr<NodePtr> node(osg::Node::create());
        osg::setAttributes(node.get(), AttributeOwner::Product, wheel.get());
        osg::addAttributes(node.get(), AttributeOwner::Occurrence, {{"Side", std::string("left")}});
        EXPECT_EQ(text.of(node.get(), ""), expected);
    }
}

TEST_F(AttributeTextTest, ControlCharactersAreShownAsNumbers)
{
    EXPECT_EQ(valueShown("a\x1B[31m\tb\n"), "a\\x1b[31m\\x09b\\x0a\n");
    EXPECT_EQ(valueShown(std::string("\0\x7F", 2)), "\\x00\\x7f\n");
    EXPECT_EQ(valueShown("\xC2\x80\xC2\x9F\xC2\xA0"), "\\xc2\\x80\\xc2\\x9f\xC2\xA0\n");
    EXPECT_EQ(textOf({{"a\nb", 1.0, "k\rg"}}), "  occurrence: a\\x0ab = 1 k\\x0dg\n");
}

TEST_F(AttributeTextTest, LettersStayAndOtherBytesAreShownAsNumbers)
{
    EXPECT_EQ(valueShown("\xC3\xA4 \xE5\xA4\x96 \xF0\x9F\x94\xA9"), "\xC3\xA4 \xE5\xA4\x96 \xF0\x9F\x94\xA9\n");
    EXPECT_EQ(valueShown("\xFF\x80\xC3(\xE5\xA4"), "\\xff\\x80\\xc3(\\xe5\\xa4\n");
    EXPECT_EQ(valueShown("\xC0\x9B\xF8"), "\\xc0\\x9b\\xf8\n");
}

TEST_F(AttributeTextTest, LongTextsAreCutBetweenLetters)
{
    EXPECT_EQ(valueShown(std::string(200, 'x')), std::string(200, 'x') + "\n");
    EXPECT_EQ(valueShown(std::string(199, 'x') + "\xC3\xA4"), std::string(199, 'x') + "... (201 bytes)\n");
    EXPECT_EQ(valueShown(std::string(10'000'000, '\x80')), "... (10000000 bytes)\n");
}

TEST_F(AttributeTextTest, HostileAttributesAreShortPlainLines)
{
    const std::string text = textOf(hostileAttributes(10'000'000, 0));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7);
    EXPECT_LT(text.size(), 2500u);
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char c) { return c == '\n' || (c >= ' ' && c != 0x7F); }));
}

} // namespace
