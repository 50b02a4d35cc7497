// Documents of other programs, from the folder that the environment variable ZN_CORPUS names.

#include "cad/xml/CADDocument.h"

#include "tests/cad/xml/ModelFixture.h"

#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace HB::XML::CAD
{

class CorpusTest : public ModelTest
{
protected:
    void SetUp() override
    {
        const char* corpus = std::getenv("ZN_CORPUS");
        m_corpus = std::filesystem::path(corpus ? corpus : "") / "plmxml";
        if (!corpus || !std::filesystem::is_directory(m_corpus))
            GTEST_SKIP() << "no folder plmxml in the folder that ZN_CORPUS names";
    }

    LoadOutcome loadOriginal(const char* file) { return outcomeOf(m_document, (m_corpus / file).string()); }

    /// Loads a document with all that its root element holds put between two texts.
    void loadInside(const char* file, const std::string& before, const std::string& behind)
    {
        std::ostringstream original;
        original << std::ifstream(m_corpus / file, std::ios::binary).rdbuf();
        auto text = original.str();
        text.insert(text.find('>', text.find("<PLMXML")) + 1, before);
        text.insert(text.rfind("</PLMXML>"), behind);
        load(text);
    }

    /// Nothing in any table: the model reads nothing outside of a `ProductDef`.
    void expectEmpty() const
    {
        EXPECT_EQ(m_document.getProductDefCount(), 0U);
        EXPECT_TRUE(ModelTestAccess::instances(m_document).empty());
        EXPECT_TRUE(ModelTestAccess::parts(m_document).empty());
        EXPECT_TRUE(ModelTestAccess::occurrences(m_document).empty());
        EXPECT_EQ(m_document.getActiveProductView(), nullptr);
    }

    std::filesystem::path m_corpus;
};

TEST_F(CorpusTest, PartsAndInstancesWithoutProductDefLoadAsNothing)
{
    ASSERT_EQ(loadOriginal("parts_instances_2017.xml"), loaded);
    expectEmpty();
}

TEST_F(CorpusTest, BillOfMaterialsWithoutProductDefLoadsAsNothing)
{
    ASSERT_EQ(loadOriginal("pdm_bom_export_2025.plmxml"), loaded);
    expectEmpty();
}

TEST_F(CorpusTest, VariantsWithoutProductDefLoadAsNothing)
{
    ASSERT_EQ(loadOriginal("variants_occurrences.plmxml"), loaded);
    expectEmpty();
}

TEST_F(CorpusTest, ViewOfTheBillOfMaterialsIsReadInsideAProductDef)
{
    loadInside("pdm_bom_export_2025.plmxml", "<ProductDef>", "</ProductDef>");
    const auto* view = m_document.getActiveProductView();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->getId(), "id4");
    EXPECT_EQ(ModelTestAccess::rootRefs(*view), std::vector<std::string>{"id6"});
    EXPECT_EQ(ModelTestAccess::occurrences(m_document).size(), 13U);
    EXPECT_EQ(ModelTestAccess::transforms(m_document).size(), 13U);

    const auto* root = m_document.findOccurrence("id6");
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(*root),
              (std::vector<std::string>{"id10", "id39", "id124", "id185", "id245", "id298"}));
    EXPECT_EQ(root->getTransformRef(), "id5");
    EXPECT_EQ(m_document.findTransform("id5")->getTransformValues(),
              (std::vector<float>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    const auto values = m_document.findOccurrence("id10")->getUserData()->getUserValues();
    ASSERT_EQ(values.size(), 4U);
    EXPECT_EQ(values[3]->getName(), "Quantity");
    EXPECT_EQ(values[3]->getValue(), "10");
}

TEST_F(CorpusTest, PartsAndInstancesAreReadInsideAGraph)
{
    loadInside("parts_instances_2017.xml", "<ProductDef><InstanceGraph>", "</InstanceGraph></ProductDef>");
    EXPECT_EQ(ModelTestAccess::instances(m_document).size(), 8U);
    EXPECT_EQ(ModelTestAccess::parts(m_document).size(), 8U);
    const auto* part = m_document.findPart(m_document.findInstance("inst2")->getPartRef());
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->getName(), "A2");
    ASSERT_EQ(part->getUserData()->getUserValues().size(), 4U);
    EXPECT_EQ(part->getUserData()->getUserValues()[0]->getValue(), "Nomenclature2");
}

TEST_F(CorpusTest, SchemaOfTheFormatHasAnotherRoot)
{
    EXPECT_EQ(loadOriginal("PLMXMLSchema.xsd"), plainException);
    expectEmpty();
}

} // namespace HB::XML::CAD
