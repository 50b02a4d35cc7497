// Names, titles and values that a document has in several languages.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

class LanguageTextsTest : public NormaliserTest
{
protected:
    /// The name of an instance with these attributes, in a document with these and this text "t".
    std::string nameOf(const std::string& attributes, const std::string& text, const std::string& ofDocument = {})
    {
        make("car.plmxml", QByteArray::fromStdString("<PLMXML " + ofDocument + "><Instance id='i' nameRef='#t' " +
                                                     attributes + "/>" + text + "</PLMXML>"));
        m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true});
        return m_result.structure.placements.at(0).name;
    }
    static std::string text(const char* primary, const std::string& items)
    {
        return std::string("<Text id='t' ") + primary + ">" + items + "</Text>";
    }
    static std::string item(const char* language, const char* content)
    {
        return std::string("<Item language='") + language + "'>" + content + "</Item>";
    }
};

TEST_F(LanguageTextsTest, ANameMayStandInATextAlone)
{
    EXPECT_EQ(nameOf("", text("", item("fr", "roue"))), "roue");
    EXPECT_EQ(nameOf("name=''", text("", "<Item>wheel</Item>")), "wheel");
}

TEST_F(LanguageTextsTest, TheLanguageThatATextPrefersCounts)
{
    const std::string both = item("en", "wheel") + item("de", "Rad");
    EXPECT_EQ(nameOf("name='w'", text("primary='de'", both)), "Rad");
    EXPECT_EQ(nameOf("name='w'", text("primary='en'", both)), "wheel");
    EXPECT_EQ(nameOf("name='w'", text("primary='fr'", both)), "w") << "the attribute is in the preferred language";
}

TEST_F(LanguageTextsTest, OtherwiseThatOfTheDocumentDoes)
{
    const std::string both = item("en", "wheel") + item("de-AT", "Radl") + item("de-DE", "Rad");
    EXPECT_EQ(nameOf("name='w'", text("", both), "language='de-DE'"), "Rad");
    EXPECT_EQ(nameOf("name='w'", text("", both), "language='de_de'"), "Rad");
    EXPECT_EQ(nameOf("name='w'", text("primary='en'", both), "language='de-DE'"), "wheel");
    EXPECT_EQ(nameOf("name='w'", text("", both)), "wheel") << "English where none is named";
}

TEST_F(LanguageTextsTest, WithoutAttributeTheNearestItemCounts)
{
    const std::string items = item("fr", "roue") + item("de-AT", "Radl") + item("de-CH", "Raedli");
    EXPECT_EQ(nameOf("", text("primary='de-DE'", items)), "Radl");
    EXPECT_EQ(nameOf("", text("primary='it'", items)), "roue");
    EXPECT_EQ(nameOf("name='w'", text("primary='de-DE'", items)), "w");
}

TEST_F(LanguageTextsTest, EmptyItemsSayNothing)
{
    EXPECT_EQ(nameOf("name='w'", text("primary='de'", item("de", ""))), "w");
    EXPECT_EQ(nameOf("", text("", item("en", "") + item("de", "Rad"))), "Rad");
}

TEST_F(LanguageTextsTest, WhatIsNoTextIsDanglingOrPassedOver)
{
    EXPECT_EQ(nameOf("name='w'", "<Form id='t'><Item>x</Item></Form>"), "w");
    EXPECT_EQ(m_result.facts.danglingCount, 0u);
    EXPECT_EQ(nameOf("name='w'", ""), "w");
    ASSERT_EQ(m_result.facts.danglingCount, 1u);
    EXPECT_EQ(m_result.facts.dangling[0].attribute, QStringLiteral("nameRef"));
}

TEST_F(LanguageTextsTest, TheLanguagesAreTold)
{
    nameOf("", text("", item("fr", "a") + item("DE_at", "b")) + "<Text id='u'>" + item("fr", "c") + "</Text>");
    EXPECT_EQ(m_result.facts.languages, (QStringList{QStringLiteral("de-at"), QStringLiteral("fr")}));
}

TEST_F(LanguageTextsTest, ATextOfManyLanguagesThatManyReferToIsReadOnce)
{
    std::string items, instances;
    for (int i = 0; i < 30000; ++i) {
        items += item(("x" + std::to_string(i)).c_str(), "a");
        instances += "<Instance nameRef='t'/>";
    }
    normalise(instances + text("primary='de'", items));
    EXPECT_EQ(m_result.structure.placements.at(29999).name, "a");
    EXPECT_EQ(m_result.facts.languages.size(), 100);
}

TEST_F(LanguageTextsTest, TitlesValuesAndDescriptionsHaveTextsToo)
{
    const auto textOf = [](const char* id, const char* content) {
        return std::string("<Text id='") + id + "'><Item>" + content + "</Item></Text>";
    };
    normalise("<Instance id='i' partRef='p'/><Part id='p' nameRef='#a' revisionRef='#r'><UserData>"
              "<UserValue title='' titleRef='#b' valueRef='#c' value=''/>"
              "<UserValue title='list' value=''><UserList><Item value='1'/><Item value='' valueRef='#e'/></UserList>"
              "</UserValue></UserData></Part><ProductRevision id='r' descriptionTextRef='#d'/>" +
              textOf("a", "Wheel") + textOf("b", "Colour") + textOf("c", "red") + textOf("d", "Round") +
              textOf("e", "two"));
    EXPECT_EQ(m_result.structure.parts.at(0).name, "Wheel");
    EXPECT_THAT(
        m_result.structure.parts.at(0).tags,
        ElementsAre("ptx::attribute::Colour=red", "ptx::attribute::list=1, two", "ptx::attribute::Description=Round"));
}

TEST_F(LanguageTextsTest, OccurrencesMaterialsAndViewsAreCalledByTheirTexts)
{
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' name='A' materialRef='m' partRef='#p'/>"
              "</InstanceGraph><Part id='p' name='P' instanceRefs=''/><Material id='m' nameRef='#t'/>"
              "<ProductView nameRef='#t'><Occurrence instanceRefs='#a' nameRef='#t'/></ProductView></ProductDef>" +
              text("", "<Item>Red one</Item>"));
    EXPECT_THAT(places(), ElementsAre("Red one 0 0 0"));
    EXPECT_THAT(m_result.text, HasSubstr("<Material id=\"zn.m0\" name=\"Red one\"/>"));
    EXPECT_EQ(m_result.facts.view, QStringLiteral("Red one"));
}

TEST_F(LanguageTextsTest, ADocumentIsLeftAsItIsWhereTheNamesAreThoseOfTheAttributes)
{
    const auto wayOf = [this](const std::string& name) {
        return normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' nameRef='#t' " + name +
                         "/></InstanceGraph></ProductDef>" + text("", item("en", "wheel") + item("de", "Rad")))
            .way;
    };
    EXPECT_EQ(wayOf("name='wheel'"), Way::AsItStands);
    EXPECT_EQ(wayOf("name='other'"), Way::AsText);
    EXPECT_EQ(wayOf(""), Way::AsText);
}

} // namespace
