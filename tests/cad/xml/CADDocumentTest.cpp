#include "cad/xml/CADDocument.h"

#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADRepresentation.h"
#include "cad/xml/CADTransform.h"
#include "tests/cad/xml/ModelFixture.h"

#include <tinyxml.h>

#include <sys/stat.h>

namespace HB::XML::CAD
{

using CADDocumentTest = ModelTest;

TEST_F(CADDocumentTest, IsConstructedEmpty)
{
    EXPECT_EQ(m_document.getProductDefCount(), 0U);
    EXPECT_EQ(m_document.getProductDef(0), nullptr);
    EXPECT_EQ(m_document.findInstance(""), nullptr);
    EXPECT_EQ(m_document.findPartById(""), nullptr);
    EXPECT_EQ(m_document.getActiveProductView(), nullptr);
    EXPECT_EQ(m_document.getOccurrenceCount(), 0U);
}

TEST_F(CADDocumentTest, ProductDefIsReadWithItsAttributes)
{
    load("<PLMXML xmlns='http://www.plmxml.org/Schemas/PLMXMLSchema' id='root' name='ignored'>"
         "<Header/><ProductDef id='pd7' name='Engine'/></PLMXML>");
    ASSERT_EQ(m_document.getProductDefCount(), 1U);
    EXPECT_EQ(m_document.getProductDef(0)->getId(), "pd7");
    EXPECT_EQ(m_document.getProductDef(0)->getName(), "Engine");
    EXPECT_EQ(m_document.getProductDef(0)->getDocument(), &m_document);
}

TEST_F(CADDocumentTest, ProductDefPastTheEndIsNull)
{
    loadProductDef("");
    EXPECT_NE(m_document.getProductDef(0), nullptr);
    EXPECT_EQ(m_document.getProductDef(1), nullptr);
    EXPECT_EQ(m_document.getProductDef(0xFFFFFFFFU), nullptr);
}

TEST_F(CADDocumentTest, FileWithoutProductDefLoads)
{
    load("<PLMXML><Part id='p'/><productdef/></PLMXML>");
    EXPECT_EQ(m_document.getProductDefCount(), 0U);
    EXPECT_EQ(m_document.findPart("p"), nullptr);
}

TEST_F(CADDocumentTest, ProductDefBelowOtherElementsIsNotRead)
{
    load("<PLMXML><Group><ProductDef id='pd'/></Group></PLMXML>");
    EXPECT_EQ(m_document.getProductDefCount(), 0U);
}

TEST_F(CADDocumentTest, OnlyTheFirstProductDefIsRead)
{
    load("<PLMXML><ProductDef id='first'><Part id='p1'/></ProductDef>"
         "<ProductDef id='second'><Part id='p2'/><Material id='m2'/></ProductDef></PLMXML>");
    ASSERT_EQ(m_document.getProductDefCount(), 1U);
    EXPECT_EQ(m_document.getProductDef(0)->getId(), "first");
    EXPECT_NE(m_document.findPart("p1"), nullptr);
    EXPECT_EQ(ModelTestAccess::parts(m_document).size(), 1U);
    EXPECT_TRUE(ModelTestAccess::materials(m_document).empty());
}

TEST_F(CADDocumentTest, RootMustBeNamedExactly)
{
    for (const char* root : {"plmxml", "PLMXml", "plm:PLMXML", "PLMXML2", "ProductDef"}) {
        const auto file = write("root.plmxml", std::string("<") + root + "><ProductDef/></" + root + ">");
        EXPECT_EQ(outcomeOf(m_document, file), plainException) << root;
    }
    EXPECT_EQ(m_document.getProductDefCount(), 0U);
}

TEST_F(CADDocumentTest, TextsWithoutARootElementAreWrongRoots)
{
    for (const char* text : {"<?xml version='1.0'?>", "<!-- nothing -->", "text", "<!DOCTYPE PLMXML>", "<?pi?>",
                             "<!DOCTYPE PLMXML [<!ELEMENT PLMXML ANY>]><PLMXML/>", "text <PLMXML/>"})
        EXPECT_EQ(outcomeOf(m_document, write("rootless.plmxml", text)), plainException) << text;
}

TEST_F(CADDocumentTest, FilesThatCannotBeReadFail)
{
    EXPECT_EQ(outcomeOf(m_document, (m_folder / "missing.plmxml").string()), plainException);
    EXPECT_EQ(outcomeOf(m_document, write("empty.plmxml", "")), plainException);
    EXPECT_EQ(outcomeOf(m_document, m_folder.string()), plainException);
    EXPECT_EQ(outcomeOf(m_document, ""), plainException);
}

TEST_F(CADDocumentTest, PipeIsRefusedWithoutWaitingForItsWriter)
{
    const auto pipe = (m_folder / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(outcomeOf(m_document, pipe), plainException);
}

TEST_F(CADDocumentTest, TextThatIsNotWellFormedFails)
{
    for (const char* text : {"<PLMXML>", "<PLMXML><ProductDef></PLMXML>", "<PLMXML a='1' a='2'/>", "<PLMXML a/>",
                             "<PLMXML><ProductDef>", "<PLMXML a='1/>", "<PLMXML/><", "<PLMXML/></PLMXML>"})
        EXPECT_EQ(outcomeOf(m_document, write("broken.plmxml", text)), plainException) << text;
}

TEST_F(CADDocumentTest, FileNamesMayHoldBlanksAndUmlauts)
{
    m_document.load(write("Zahnrad größer 1.plmxml", "<PLMXML><ProductDef id='Öl'/></PLMXML>"));
    EXPECT_EQ(m_document.getProductDef(0)->getId(), "Öl");
}

TEST_F(CADDocumentTest, ByteOrderMarkIsSkipped)
{
    load("\xEF\xBB\xBF<?xml version='1.0'?><PLMXML><ProductDef name='T\xC3\xBCr'/></PLMXML>");
    EXPECT_EQ(m_document.getProductDef(0)->getName(), "T\xC3\xBCr");
}

TEST_F(CADDocumentTest, EveryLineEndIsALineFeed)
{
    load("<?xml version='1.0'?>\r\n<PLMXML>\r<ProductDef name='a\r\nb\rc\r\r\nd\n\re'/></PLMXML>\r");
    EXPECT_EQ(m_document.getProductDef(0)->getName(), "a\nb\nc\n\nd\n\ne");
}

TEST_F(CADDocumentTest, EntitiesAreDecoded)
{
    loadProductDef("", "id='&lt;&#65;&#xe4;&gt;' name='&quot;&amp;&apos;'");
    EXPECT_EQ(m_document.getProductDef(0)->getId(), "<A\xC3\xA4>");
    EXPECT_EQ(m_document.getProductDef(0)->getName(), "\"&'");
}

TEST_F(CADDocumentTest, Latin1FileIsReadAsBytes)
{
    load("<?xml version='1.0' encoding='ISO-8859-1'?><PLMXML><ProductDef name='T\xFCr'/></PLMXML>");
    EXPECT_EQ(m_document.getProductDef(0)->getName(), "T\xFCr");
}

TEST_F(CADDocumentTest, LimitsAreTwoThousandLevelsAndOneThousandAttributes)
{
    EXPECT_EQ(m_document.getLimits().depth, 2000U);
    EXPECT_EQ(m_document.getLimits().attributes, 1000U);
}

TEST_F(CADDocumentTest, DepthLimitIsSettable)
{
    const auto file =
        write("deep.plmxml", "<PLMXML><ProductDef id='pd'><Part><Material/></Part></ProductDef></PLMXML>");
    m_document.setLimits({3, 1000});
    EXPECT_EQ(outcomeOf(m_document, file), plainException);
    m_document.setLimits({4, 1000});
    EXPECT_EQ(outcomeOf(m_document, file), loaded);
    EXPECT_EQ(m_document.getProductDef(0)->getId(), "pd");
}

TEST_F(CADDocumentTest, AttributeLimitIsSettable)
{
    const auto file = write("wide.plmxml", "<PLMXML><ProductDef a='1' b='2' id='pd'/></PLMXML>");
    m_document.setLimits({2000, 2});
    EXPECT_EQ(outcomeOf(m_document, file), plainException);
    m_document.setLimits({2000, 3});
    EXPECT_EQ(outcomeOf(m_document, file), loaded);
}

TEST_F(CADDocumentTest, OneThousandAttributesPassAndOneMoreDoesNot)
{
    const auto withAttributes = [](int count) {
        std::string text = "<PLMXML><ProductDef";
        for (int i = 0; i < count; ++i)
            text += " a" + std::to_string(i) + "='x'";
        return text + "/></PLMXML>";
    };
    EXPECT_EQ(outcomeOf(m_document, write("1000.plmxml", withAttributes(1000))), loaded);
    EXPECT_EQ(outcomeOf(m_document, write("1001.plmxml", withAttributes(1001))), plainException);
}

TEST_F(CADDocumentTest, BareAndLocalReferencesFindAndForeignOnesDoNot)
{
    loadProductDef("<InstanceGraph><Instance id='id7'/><Transform id='id7'/></InstanceGraph><Part id='id7'/>"
                   "<Representation id='id7'/><Material id='id7'/><Occurrence id='id7'/>");
    const auto expectFound = [this](auto find, const char* kind) {
        const auto* element = (m_document.*find)("id7");
        ASSERT_NE(element, nullptr) << kind;
        EXPECT_EQ(element->getId(), "id7") << kind;
        EXPECT_EQ((m_document.*find)("#id7"), element) << kind;
        EXPECT_EQ((m_document.*find)("a.plmxml#id7"), nullptr) << kind;
        EXPECT_EQ((m_document.*find)("id8"), nullptr) << kind;
        EXPECT_EQ((m_document.*find)("ID7"), nullptr) << kind;
        EXPECT_EQ((m_document.*find)("##id7"), nullptr) << kind;
        EXPECT_EQ((m_document.*find)(""), nullptr) << kind;
    };
    expectFound(&CADDocument::findInstance, "instance");
    expectFound(&CADDocument::findPart, "part");
    expectFound(&CADDocument::findTransform, "transform");
    expectFound(&CADDocument::findRepresentation, "representation");
    expectFound(&CADDocument::findMaterial, "material");
    expectFound(&CADDocument::findOccurrence, "occurrence");
}

TEST_F(CADDocumentTest, FindPartByIdTakesTheTextAsItStands)
{
    loadProductDef("<Part id='id7' name='Bolt'/>");
    ASSERT_NE(m_document.findPartById("id7"), nullptr);
    EXPECT_EQ(m_document.findPartById("id7")->getName(), "Bolt");
    EXPECT_NE(m_document.findPart("#id7"), nullptr);
    EXPECT_EQ(m_document.findPartById("#id7"), nullptr);
}

TEST_F(CADDocumentTest, IdWithAHashSignIsFoundByIdOnly)
{
    loadProductDef("<Part id='#id7'/><Part id='a#id8'/>");
    EXPECT_EQ(m_document.findPart("#id7"), nullptr);
    EXPECT_EQ(m_document.findPart("a#id8"), nullptr);
    EXPECT_NE(m_document.findPartById("#id7"), nullptr);
    EXPECT_NE(m_document.findPartById("a#id8"), nullptr);
}

TEST_F(CADDocumentTest, LoneHashSignFindsTheLastPartWithoutId)
{
    loadProductDef("<Part name='one'/><Part name='two'/><Part id='p' name='three'/>");
    ASSERT_NE(m_document.findPart("#"), nullptr);
    EXPECT_EQ(m_document.findPart("#")->getName(), "two");
    EXPECT_EQ(m_document.findPart("")->getName(), "two");
    EXPECT_EQ(m_document.findPartById("")->getName(), "two");
    EXPECT_EQ(m_document.findMaterial("#"), nullptr);
}

TEST_F(CADDocumentTest, RepeatedIdLeadsToTheLastAndKeepsBoth)
{
    loadProductDef("<Part id='p' name='one'/><Part id='q' name='two'/><Part id='p' name='three'/>");
    EXPECT_EQ(m_document.findPart("p")->getName(), "three");
    EXPECT_EQ(m_document.findPart("q")->getName(), "two");
    ASSERT_EQ(ModelTestAccess::parts(m_document).size(), 3U);
    EXPECT_EQ(ModelTestAccess::parts(m_document)[0]->getName(), "one");
    EXPECT_EQ(ModelTestAccess::children(*m_document.getProductDef(0)).size(), 3U);
}

TEST_F(CADDocumentTest, NullIsNotRegistered)
{
    m_document.addInstance(nullptr);
    m_document.addPart(nullptr);
    m_document.addTransform(nullptr);
    m_document.addRepresentation(nullptr);
    m_document.addUserList(nullptr);
    m_document.addMaterial(nullptr);
    m_document.addOccurrence(nullptr);
    m_document.addProductView(nullptr);
    EXPECT_TRUE(ModelTestAccess::instances(m_document).empty());
    EXPECT_TRUE(ModelTestAccess::parts(m_document).empty());
    EXPECT_TRUE(ModelTestAccess::transforms(m_document).empty());
    EXPECT_TRUE(ModelTestAccess::representations(m_document).empty());
    EXPECT_TRUE(ModelTestAccess::userLists(m_document).empty());
    EXPECT_TRUE(ModelTestAccess::materials(m_document).empty());
    EXPECT_TRUE(ModelTestAccess::occurrences(m_document).empty());
    EXPECT_EQ(m_document.getActiveProductView(), nullptr);
}

TEST_F(CADDocumentTest, ElementIsFoundUnderTheIdOfItsRegistration)
{
    CADPart part(nullptr);
    part.setId("before");
    m_document.addPart(&part);
    part.setId("behind");
    EXPECT_EQ(m_document.findPart("before"), &part);
    EXPECT_EQ(m_document.findPart("behind"), nullptr);
}

TEST_F(CADDocumentTest, IdsInAnyOrderAreFound)
{
    const Texts ids{"id9", "id10", "id8", "a", "z", "id99", "id1", "", "id100", "m"};
    std::string parts;
    for (const auto& id : ids)
        parts += "<Part id='" + id + "' name='name of " + id + "'/>";
    loadProductDef(parts);
    for (const auto& id : ids)
        EXPECT_EQ(m_document.findPartById(id)->getName(), "name of " + id);
}

TEST_F(CADDocumentTest, DescendantsRegisterBeforeTheirAncestors)
{
    loadProductDef("<Occurrence id='outer'><Occurrence id='middle'><Occurrence id='inner'/></Occurrence></Occurrence>"
                   "<Occurrence id='next'/>");
    Texts ids;
    for (const auto* occurrence : ModelTestAccess::occurrences(m_document))
        ids.push_back(occurrence->getId());
    EXPECT_EQ(ids, (Texts{"inner", "middle", "outer", "next"}));
}

TEST_F(CADDocumentTest, FirstActiveViewIsTheActiveOne)
{
    loadProductDef("<ProductView id='v1'/><ProductView id='v2' state='active'/><ProductView id='v3' state='active'/>");
    EXPECT_EQ(m_document.getActiveProductView()->getId(), "v2");
}

TEST_F(CADDocumentTest, WithoutActiveViewTheFirstIsUsed)
{
    loadProductDef("<ProductView id='v1'/><ProductView id='v2' state='inactive'/><ProductView id='v3'/>");
    EXPECT_EQ(m_document.getActiveProductView()->getId(), "v1");
}

TEST_F(CADDocumentTest, ViewThatRegistersLaterMayBecomeTheActiveOne)
{
    auto& productDef = loadProductDef("<ProductView id='v1'/>");
    EXPECT_EQ(m_document.getActiveProductView()->getId(), "v1");
    TiXmlElement element("ProductView");
    element.SetAttribute("id", "v2");
    element.SetAttribute("state", "active");
    productDef.createProductView(element);
    EXPECT_EQ(m_document.getActiveProductView()->getId(), "v2");
}

TEST_F(CADDocumentTest, BadTransformNumberFailsTheLoad)
{
    const auto withText = [this](const std::string& text) {
        return outcomeOf(m_document, write("numbers.plmxml", "<PLMXML><ProductDef><InstanceGraph><Transform>" + text +
                                                                 "</Transform></InstanceGraph></ProductDef></PLMXML>"));
    };
    EXPECT_EQ(withText("1 word 3"), (LoadOutcome{"std::invalid_argument", "invalid stod argument"}));
    EXPECT_EQ(withText("1 2 word"), (LoadOutcome{"std::invalid_argument", "invalid stof argument"}));
    EXPECT_EQ(withText("1e400 2"), (LoadOutcome{"std::out_of_range", "stod argument out of range"}));
    EXPECT_EQ(withText("1 1e39"), (LoadOutcome{"std::out_of_range", "stof argument out of range"}));
}

TEST_F(CADDocumentTest, EndlessMaterialNumbersFailTheLoad)
{
    const auto file =
        write("material.plmxml", "<PLMXML><ProductDef><Material ambient='0 0 word'/></ProductDef></PLMXML>");
    EXPECT_EQ(outcomeOf(m_document, file).type, "std::bad_alloc");
}

TEST_F(CADDocumentTest, FailedLoadKeepsItsTableEntriesAndNoProductDef)
{
    const auto file = write("half.plmxml", "<PLMXML><ProductDef><Part id='p' name='Bolt'><Material id='m'/></Part>"
                                           "<Occurrence><Transform>word</Transform></Occurrence>"
                                           "<Part id='never'/></ProductDef></PLMXML>");
    EXPECT_EQ(outcomeOf(m_document, file).text, "invalid stof argument");
    EXPECT_EQ(m_document.getProductDefCount(), 0U);
    ASSERT_NE(m_document.findPart("p"), nullptr);
    EXPECT_EQ(m_document.findPart("p")->getName(), "Bolt");
    EXPECT_NE(m_document.findMaterial("m"), nullptr);
    EXPECT_EQ(m_document.findPart("never"), nullptr);
    EXPECT_TRUE(ModelTestAccess::occurrences(m_document).empty());
}

TEST_F(CADDocumentTest, DestructorIsVirtual)
{
    struct Derived : CADDocument {
        explicit Derived(bool& gone) : isGone(gone) {}
        ~Derived() override { isGone = true; }
        bool& isGone;
    };
    bool gone = false;
    delete static_cast<CADDocument*>(new Derived(gone));
    EXPECT_TRUE(gone);
}

} // namespace HB::XML::CAD
