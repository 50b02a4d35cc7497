#include "files/glb/GlbAttributes.h"

#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/AttributeLimits.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/gltf-validator/GltfTransform.h"
#include "tests/support/BuiltInReading.h"
#include "tests/support/HostileAttributes.h"

#include <algorithm>
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
                                                    {"place", std::vector<std::string>{"1", "2"}, "mm"},
                                                    {"round", 5.0},
                                                    {"far", std::numeric_limits<double>::infinity(), "m"}}));
    EXPECT_EQ(object["text"], "a\"\\\n\x01\xC3\xA4");
    EXPECT_EQ(object["big"].get<std::int64_t>(), 9007199254740993);
    EXPECT_EQ(object["real"].get<double>(), 12345.678901234567);
    EXPECT_EQ(object["mass"], json::parse(R"({"value": 0.1, "unit": "kg"})"));
    EXPECT_EQ(object["yes"], true);
    EXPECT_EQ(object["day"], json::parse(R"({"value": "2024-05-31", "type": "date"})"));
    EXPECT_EQ(object["list"], json::parse(R"({"value": ["x", "y"]})"));
    EXPECT_EQ(object["place"], json::parse(R"({"value": ["1", "2"], "unit": "mm"})"));
    EXPECT_TRUE(object["round"].is_number_float());
    EXPECT_EQ(object["far"], json::parse(R"({"value": "inf", "unit": "m", "type": "real"})"));
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

TEST_F(GlbAttributesTest, WhatWasWrittenIsReadAgain)
{
    const osg::AttributeList wheel = {{"Product", std::string("wheel \xC3\xA4\n\x01")},
                                      {"big", std::int64_t(9007199254740993)},
                                      {"b", std::string("1")},
                                      {"b", 1.0},
                                      {"b", std::vector<std::string>{"x", ""}},
                                      {"date", osg::AttributeDate{"2024-05-31"}},
                                      {"far", -std::numeric_limits<double>::infinity(), "m"},
                                      {"mass", 0.1, "kg"},
                                      {"no", false},
                                      {"place", std::vector<std::string>{"1", "2"}, "mm"},
                                      {"round", 5.0},
                                      {"size", std::string("M8"), "thread"}};
    const osg::AttributeList coat = {{"coat", 7.5, "um"}, {"colour", std::string("red")}};
    const osg::GeometryPtr core = geometry("", triangle(), osg::SimpleMaterial::create());
    osg::addAttributes(core->getMaterial(), AttributeOwner::Product, coat);
    for (const char* name : {"left", "right"}) {
        const osg::NodePtr node = add(files::makeNode(name, core));
        osg::addAttributes(node, AttributeOwner::Product, wheel);
        osg::addAttributes(node, AttributeOwner::Occurrence, {{"Designator", std::string(name)}});
    }
    (void)written();
    const files::ReadResult read = readScene(pathOf(QString::fromUtf8("Größe 大小.glb")));
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> again(read.value());
    // Below the node of the metres stands the root that was written.
    const osg::NodePtr top = again.get()->getChild(0)->getChild(0);
    osg::AttributeList byName = wheel;
    std::stable_sort(byName.begin(), byName.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    for (unsigned i = 0; i < 2; ++i) {
        const osg::NodePtr node = top->getChild(i);
        EXPECT_EQ(osg::attributesOf(node, AttributeOwner::Product), byName);
        EXPECT_EQ(osg::attributesOf(node, AttributeOwner::Occurrence),
                  (osg::AttributeList{{"Designator", std::string(i == 0 ? "left" : "right")}}));
        const auto geometry = osg::fcCast<osg::Geometry>(node->getCore());
        EXPECT_EQ(osg::attributesOf(geometry->getMaterial(), AttributeOwner::Product), coat);
    }
    EXPECT_EQ(osg::attributesOf(top, AttributeOwner::Occurrence), osg::AttributeList());
    EXPECT_EQ(osg::attributesOf(again.get()->getChild(0), AttributeOwner::Occurrence), osg::AttributeList());
}

/// Another program reads them, and what it writes of them is still ours to read.
TEST_F(GlbAttributesTest, TheyPassThroughGltfTransform)
{
    if (!gltftransform::isInstalled())
        GTEST_SKIP() << "glTF-Transform is not installed";
    const osg::AttributeList wheel = {{"Product", std::string("wheel \xC3\xA4")},
                                      {"Sizes", std::vector<std::string>{"a", "b"}},
                                      {"mass", 0.125, "kg"},
                                      {"parts", std::int64_t(9007199254740991)}};
    const osg::GeometryPtr core = geometry("", triangle(), osg::SimpleMaterial::create());
    osg::addAttributes(core->getMaterial(), AttributeOwner::Product, {{"coat", 7.5, "um"}});
    const osg::NodePtr node = add(files::makeNode("left", core));
    osg::addAttributes(node, AttributeOwner::Product, wheel);
    osg::addAttributes(node, AttributeOwner::Occurrence, {{"Designator", std::string("L1")}});
    (void)written();
    const QString again = pathOf(QStringLiteral("again.glb"));
    const json extras =
        json::parse(gltftransform::passOn(pathOf(QString::fromUtf8("Größe 大小.glb")), again).toStdString());
    EXPECT_EQ(extras["root"], json::parse(R"({"products": [{"Product": "wheel \u00e4", "Sizes": {"value": ["a", "b"]},
                                  "mass": {"value": 0.125, "unit": "kg"}, "parts": 9007199254740991}]})"));
    EXPECT_EQ(extras["nodes"][1]["name"], "left");
    EXPECT_EQ(extras["nodes"][1]["extras"],
              json::parse(R"({"attributes": {"Designator": "L1"}, "product": 0, "step": "L1@wheel \u00e4"})"));
    EXPECT_EQ(extras["materials"][0]["extras"],
              json::parse(R"({"attributes": {"coat": {"value": 7.5, "unit": "um"}}})"));
    const files::ReadResult read = readScene(again);
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> tree(read.value());
    const osg::NodePtr back = tree.get()->getChild(0)->getChild(0)->getChild(0);
    EXPECT_EQ(osg::attributesOf(back, AttributeOwner::Product), wheel);
    EXPECT_EQ(osg::attributesOf(back, AttributeOwner::Occurrence),
              (osg::AttributeList{{"Designator", std::string("L1")}}));
}

TEST_F(GlbAttributesTest, HostileAttributesAreReadWithinTheLimits)
{
    osg::addAttributes(add(files::makeNode("long", geometry("", triangle()))), AttributeOwner::Product,
                       hostileAttributes(10'000'000, 10));
    osg::addAttributes(add(files::makeNode("many", geometry("", triangle()))), AttributeOwner::Product,
                       hostileAttributes(10, 150'000));
    const json products = written().json["extras"]["products"];
    EXPECT_EQ(products[0].size(), 17u);
    EXPECT_EQ(products[1].size(), 150'007u);
    EXPECT_EQ(products[0]["marks"]["value"], "\",;=\\</script>%&{}[]");
    const files::ReadResult read = readScene(pathOf(QString::fromUtf8("Größe 大小.glb")));
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> again(read.value());
    const osg::NodePtr top = again.get()->getChild(0)->getChild(0);
    const osg::AttributeList cut = osg::attributesOf(top->getChild(0), AttributeOwner::Product);
    ASSERT_EQ(cut.size(), 18u);
    EXPECT_EQ(cut.back(), (osg::Attribute{"Attributes cut short", std::int64_t(3)}));
    for (const osg::Attribute& attribute : cut)
        EXPECT_LE(osg::textOf(attribute).size(), 2 * osg::MostTextBytes) << "a list of three texts";
    const osg::AttributeList many = osg::attributesOf(top->getChild(1), AttributeOwner::Product);
    ASSERT_EQ(many.size(), osg::MostAttributes + 1);
    EXPECT_EQ(many.back(), (osg::Attribute{"Attributes left out", std::int64_t(50'007)}));
}

TEST_F(GlbAttributesTest, OtherExtrasStayBesideThem)
{
    using files::glb::withExtras;
    EXPECT_EQ(withExtras({{"name", "a"}, {"extras", {{"x", 1}}}}, R"("product":2)"),
              R"({"name":"a","extras":{"x":1,"product":2}})");
    EXPECT_EQ(withExtras(files::glb::Json::object(), R"("product":2)"), R"({"extras":{"product":2}})");
    EXPECT_EQ(withExtras({{"extras", files::glb::Json::object()}}, R"("product":2)"), R"({"extras":{"product":2}})");
    EXPECT_EQ(withExtras({{"name", "a"}}, ""), R"({"name":"a"})");
}

} // namespace
