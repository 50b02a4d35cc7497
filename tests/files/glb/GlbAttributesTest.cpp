#include "files/glb/GlbAttributes.h"

#include "host/OSGSystem/SimpleMaterial.h"
#include "tests/files/glb/GlbTest.h"

#include <limits>

namespace
{

using GlbAttributesTest = GlbTest;
using files::glb::attributesText;
using nlohmann::json;
using osg::AttributeOwner;

TEST_F(GlbAttributesTest, ValuesKeepTypeAndDigits)
{
    const json object = json::parse(attributesText({{"text", std::string("a\"\\\n\x01\xC3\xA4")},
                                                    {"big", std::int64_t(9007199254740993)},
                                                    {"real", 12345.678901234567},
                                                    {"mass", 0.1, "kg"},
                                                    {"yes", true},
                                                    {"day", osg::AttributeDate{"2024-05-31"}},
                                                    {"list", std::vector<std::string>{"x", "y"}},
                                                    {"far", std::numeric_limits<double>::infinity()}}));
    EXPECT_EQ(object["text"], "a\"\\\n\x01\xC3\xA4");
    EXPECT_EQ(object["big"].get<std::int64_t>(), 9007199254740993);
    EXPECT_EQ(object["real"].get<double>(), 12345.678901234567);
    EXPECT_EQ(object["mass"], json::parse(R"({"value": 0.1, "unit": "kg"})"));
    EXPECT_EQ(object["yes"], true);
    EXPECT_EQ(object["day"], "2024-05-31");
    EXPECT_EQ(object["list"], json::parse(R"({"value": ["x", "y"]})"));
    EXPECT_EQ(object["far"], "inf");
}

TEST_F(GlbAttributesTest, ARepeatedNameHasAListOfItsValues)
{
    EXPECT_EQ(attributesText({{"b", std::string("1")}, {"a", std::string("x")}, {"b", std::int64_t(2)}}),
              R"({"a":"x","b":["1",2]})");
    EXPECT_EQ(attributesText({}), "{}");
}

TEST_F(GlbAttributesTest, TextThatIsNoUtf8IsReplaced)
{
    EXPECT_EQ(json::parse(attributesText({{"a", std::string("x\xFFy")}}))["a"], "x\xEF\xBF\xBDy");
}

TEST_F(GlbAttributesTest, ProductsStandOnceAndNodesReferToThem)
{
    const osg::RefPtr<osg::AttributeAttachment::Ptr> wheel(
        osg::AttributeAttachment::create({{"Product", std::string("wheel")}}));
    for (const char* name : {"left", "right", "spare"}) {
        const osg::NodePtr node = files::makeNode(name, geometry("", triangle()));
        add(node);
        osg::setAttributes(node, AttributeOwner::Product, wheel.get());
        osg::addAttributes(node, AttributeOwner::Occurrence, {{"Side", std::string(name)}});
    }
    // Another attachment that says the same, as another file may bring it.
    osg::setAttributes(root->getChild(2), AttributeOwner::Product,
                       osg::AttributeAttachment::create({{"Product", std::string("wheel")}}));
    const GlbFile file = written();
    EXPECT_EQ(file.json["extras"], json::parse(R"({"products": [{"Product": "wheel"}]})"));
    EXPECT_FALSE(file.json["nodes"][0].contains("extras"));
    EXPECT_EQ(file.json["nodes"][1]["extras"],
              json::parse(R"({"product": 0, "step": "left@wheel", "attributes": {"Side": "left"}})"));
    EXPECT_EQ(file.json["nodes"][3]["extras"],
              json::parse(R"({"product": 0, "step": "spare@wheel", "attributes": {"Side": "spare"}})"));
}

TEST_F(GlbAttributesTest, MaterialsHaveTheirOwn)
{
    const osg::GeometryPtr core = geometry("", triangle());
    add(files::makeNode("part", core));
    core->setMaterial(osg::SimpleMaterial::create());
    osg::addAttributes(core->getMaterial(), AttributeOwner::Product, {{"coat", 7.5, "um"}});
    EXPECT_EQ(written().json["materials"][0]["extras"],
              json::parse(R"({"attributes": {"coat": {"value": 7.5, "unit": "um"}}})"));
}

TEST_F(GlbAttributesTest, OtherExtrasStayBesideThem)
{
    using files::glb::withExtras;
    EXPECT_EQ(withExtras({{"name", "a"}, {"extras", {{"x", 1}}}}, R"("product":2)"),
              R"({"name":"a","extras":{"x":1,"product":2}})");
    EXPECT_EQ(withExtras(files::glb::Json::object(), R"("product":2)"), R"({"extras":{"product":2}})");
    EXPECT_EQ(withExtras({{"name", "a"}}, ""), R"({"name":"a"})");
}

} // namespace
