#include "cad/xml/CADDocument.h"

#include "tests/cad/xml/ModelFixture.h"

namespace HB::XML::CAD
{

namespace
{

using Cause = CADFault::Cause;

class CADDocumentFault : public ModelTest
{
protected:
    /// Why a document with this text is refused; nothing when it is not.
    std::optional<CADFault> faultOf(const std::string& text, bool keepsPlaces = true)
    {
        CADDocument document;
        document.setKeepsPlaces(keepsPlaces);
        try {
            document.load(write("fault.plmxml", text));
        } catch (const std::exception&) {
            EXPECT_TRUE(document.getFault()) << text;
        }
        return document.getFault();
    }

    static std::string graph(const std::string& content)
    {
        return "<PLMXML><ProductDef>\n<InstanceGraph>" + content + "</InstanceGraph></ProductDef></PLMXML>";
    }
};

TEST_F(CADDocumentFault, NamesTheValueOfATransformAndItsPlace)
{
    const auto fault = faultOf(graph("<Instance>\n <Transform>1 0<!-- here -->0 x 1</Transform></Instance>"));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->cause, Cause::Transform);
    EXPECT_EQ(fault->value, 4u);
    EXPECT_EQ(fault->place.line, 3);
    EXPECT_EQ(fault->place.column, 29);
}

TEST_F(CADDocumentFault, NamesTheAttributeOfAMaterial)
{
    for (const char* attribute : {"ambient", "diffuse", "specular", "emissive", "shininess", "alpha"}) {
        const auto fault = faultOf("<PLMXML><ProductDef>\n\n  <Material " + std::string(attribute) +
                                   "='1 red 0'/></ProductDef></PLMXML>");
        ASSERT_TRUE(fault) << attribute;
        EXPECT_EQ(fault->cause, Cause::Material);
        EXPECT_EQ(fault->words, attribute);
        EXPECT_EQ(fault->place.line, 3);
        EXPECT_EQ(fault->place.column, 3);
    }
}

TEST_F(CADDocumentFault, TellsTheRootThatIsNone)
{
    const auto other = faultOf("\n<Other/>");
    ASSERT_TRUE(other);
    EXPECT_EQ(other->cause, Cause::Root);
    EXPECT_EQ(other->words, "Other");
    EXPECT_EQ(other->place.line, 2);
    const auto none = faultOf("<!-- nothing -->");
    ASSERT_TRUE(none);
    EXPECT_EQ(none->cause, Cause::Root);
    EXPECT_EQ(none->words, "");
}

TEST_F(CADDocumentFault, TellsWhatTheTextAndTheParserRefuse)
{
    const auto text = faultOf("<PLMXML>\n <ProductDef id='a");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->cause, Cause::Text);
    EXPECT_EQ(text->text, XMLFault::CutOff);
    EXPECT_EQ(text->place.line, 2);
    EXPECT_EQ(text->place.column, 2);
    const auto syntax = faultOf("<PLMXML>\n<a></b></PLMXML>");
    ASSERT_TRUE(syntax);
    EXPECT_EQ(syntax->cause, Cause::Syntax);
    EXPECT_NE(syntax->words, "");
    EXPECT_EQ(syntax->place.line, 2);
}

TEST_F(CADDocumentFault, OfAFileThatCannotBeReadIsToldWithoutAPlace)
{
    CADDocument document;
    EXPECT_THROW(document.load((m_folder / "none.plmxml").string()), std::exception);
    ASSERT_TRUE(document.getFault());
    EXPECT_EQ(document.getFault()->cause, Cause::Unreadable);
    EXPECT_EQ(document.getFault()->place.line, 0);
}

/// What the model skips cannot be at fault.
TEST_F(CADDocumentFault, IsNoneForWhatTheModelSkips)
{
    EXPECT_FALSE(faultOf("<PLMXML><ProductDef><Transform>x</Transform><Part><Transform>x</Transform></Part>"
                         "</ProductDef><ProductDef><Material alpha='x'/></ProductDef></PLMXML>"));
}

TEST_F(CADDocumentFault, IsKnownWithoutPlacesToo)
{
    const auto fault = faultOf(graph("<Transform>x</Transform>"), false);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->cause, Cause::Transform);
    EXPECT_EQ(fault->place.line, 0);
}

TEST_F(CADDocumentFault, OriginsAreKeptOnRequestInTheOrderOfTheText)
{
    const std::string file =
        write("origins.plmxml", graph("<ProductInstance id='i'><Transform>1</Transform></ProductInstance>"
                                      "\n<Part/><Other/>"));
    CADDocument plain;
    plain.load(file);
    EXPECT_TRUE(plain.getOrigins().empty());
    CADDocument document;
    document.setKeepsPlaces(true);
    document.load(file);
    std::vector<std::string> names;
    for (const CADOrigin& origin : document.getOrigins())
        names.push_back(origin.name + (origin.hasId ? "+" : "-") + std::to_string(origin.place.line));
    EXPECT_EQ(names, (std::vector<std::string>{"ProductDef-1", "InstanceGraph-2", "ProductInstance+2", "Transform-2",
                                               "Part-3"}));
    EXPECT_EQ(document.getOrigins()[2].element, document.findInstance("i"));
}

} // namespace

} // namespace HB::XML::CAD
