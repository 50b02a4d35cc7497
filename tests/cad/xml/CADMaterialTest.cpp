#include "cad/xml/CADMaterial.h"

#include "cad/xml/CADUserData.h"
#include "tests/cad/xml/DecimalComma.h"
#include "tests/cad/xml/ModelFixture.h"

namespace HB::XML::CAD
{

class CADMaterialTest : public ModelTest
{
protected:
    CADMaterial& loadMaterial(const std::string& attributes, const std::string& content = "")
    {
        return loadInProductDef<CADMaterial>("<Material " + attributes + ">" + content + "</Material>");
    }
};

TEST_F(CADMaterialTest, DefaultsWithoutAttributes)
{
    const auto& material = loadMaterial("");
    EXPECT_EQ(material.getAmbient(), (Floats{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(material.getDiffuse(), (Floats{0.5F, 0.5F, 0.5F}));
    EXPECT_EQ(material.getSpecular(), (Floats{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(material.getEmissive(), (Floats{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(material.getShininess(), 0.0F);
    EXPECT_EQ(material.getAlpha(), 1.0F);
    EXPECT_EQ(material.getMaterialName(), "");
    EXPECT_EQ(material.getName(), "");
}

TEST_F(CADMaterialTest, AttributesAreRead)
{
    const auto& material = loadMaterial("id='m3' ambient='0.1 0.2 0.3' diffuse='0.4 0.6 0.7' specular='0.8 0.9 1'"
                                        " emissive='0.15 0.25 0.35' shininess='64' alpha='0.75'");
    EXPECT_EQ(material.getId(), "m3");
    EXPECT_EQ(material.getAmbient(), (Floats{0.1F, 0.2F, 0.3F}));
    EXPECT_EQ(material.getDiffuse(), (Floats{0.4F, 0.6F, 0.7F}));
    EXPECT_EQ(material.getSpecular(), (Floats{0.8F, 0.9F, 1.0F}));
    EXPECT_EQ(material.getEmissive(), (Floats{0.15F, 0.25F, 0.35F}));
    EXPECT_EQ(material.getShininess(), 64.0F);
    EXPECT_EQ(material.getAlpha(), 0.75F);
}

TEST_F(CADMaterialTest, SpecularAndEmissiveDoNotFollowAmbient)
{
    const auto& material = loadMaterial("ambient='0.1 0.2 0.3'");
    EXPECT_EQ(material.getSpecular(), (Floats{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(material.getEmissive(), (Floats{0.0F, 0.0F, 0.0F}));
}

TEST_F(CADMaterialTest, NameIsTakenTwice)
{
    const auto& material = loadMaterial("name='Steel'");
    EXPECT_EQ(material.getName(), "Steel");
    EXPECT_EQ(material.getMaterialName(), "Steel");
}

TEST_F(CADMaterialTest, ListsKeepTheirLength)
{
    const auto& material = loadMaterial("ambient='0.1 0.2' diffuse='0.1 0.2 0.3 0.4' specular='0.5'");
    EXPECT_EQ(material.getAmbient(), (Floats{0.1F, 0.2F}));
    EXPECT_EQ(material.getDiffuse(), (Floats{0.1F, 0.2F, 0.3F, 0.4F}));
    EXPECT_EQ(material.getSpecular(), Floats{0.5F});
}

TEST_F(CADMaterialTest, TrailingBlankDoublesTheLastNumber)
{
    EXPECT_EQ(loadMaterial("ambient='0.1 0.2 0.3 '").getAmbient(), (Floats{0.1F, 0.2F, 0.3F, 0.3F}));
}

TEST_F(CADMaterialTest, EmptyListHasOneElement)
{
    EXPECT_EQ(loadMaterial("diffuse=''").getDiffuse(), Floats{0.0F});
    EXPECT_EQ(loadMaterial("diffuse='  '").getDiffuse().size(), 1U);
}

TEST_F(CADMaterialTest, FirstNumbersOfAlphaAndShininessAreTaken)
{
    const auto& material = loadMaterial("alpha='0.25 0.75' shininess=' 12.5 3 '");
    EXPECT_EQ(material.getAlpha(), 0.25F);
    EXPECT_EQ(material.getShininess(), 12.5F);
}

TEST_F(CADMaterialTest, WordInAnyListFailsTheLoad)
{
    for (const char* attribute : {"ambient", "diffuse", "specular", "emissive", "alpha", "shininess"}) {
        for (const char* text : {"word", "0.5 word", "1e50 1"}) {
            const auto file = write("material.plmxml", std::string("<PLMXML><ProductDef><Material ") + attribute +
                                                           "='" + text + "'/></ProductDef></PLMXML>");
            EXPECT_EQ(outcomeOf(m_document, file).type, "std::bad_alloc") << attribute << " " << text;
        }
    }
}

TEST_F(CADMaterialTest, DecimalCommaOfTheProgramChangesNothing)
{
    const DecimalComma locale;
    const auto& material = loadMaterial("ambient='0.125 1.5 1000.25'");
    EXPECT_EQ(material.getAmbient(), (Floats{0.125F, 1.5F, 1000.25F}));
}

TEST_F(CADMaterialTest, OnlyUserDataChildrenAreRead)
{
    const auto& material = loadMaterial("", "<Material id='inner'/><UserData id='u'/><Transform>1</Transform>");
    EXPECT_EQ(ModelTestAccess::children(material).size(), 1U);
    EXPECT_EQ(material.getUserData()->getId(), "u");
    EXPECT_EQ(m_document.findMaterial("inner"), nullptr);
}

TEST_F(CADMaterialTest, ListsAreGivenAsCopies)
{
    const auto& material = loadMaterial("ambient='0.1 0.2 0.3'");
    material.getAmbient().clear();
    EXPECT_EQ(material.getAmbient(), (Floats{0.1F, 0.2F, 0.3F}));
}

} // namespace HB::XML::CAD
