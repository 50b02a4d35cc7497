#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class MaterialTableTest : public NormaliserTest
{
protected:
    /// The number of the material that each place has, depth first; those of overrides with a star, "-" for none.
    std::vector<std::string> materials() const
    {
        using namespace importer::plmxml;
        const auto text = [](std::uint32_t material) {
            return material == Nothing ? std::string("-") : std::to_string(material);
        };
        std::vector<std::string> texts;
        PlaceWalk(m_result.structure)
            .run(
                [&](const Place& place) {
                    const std::uint32_t over = place.override ? place.override->material : Nothing;
                    texts.push_back(over == Nothing ? text(m_result.structure.placements[place.placement].material)
                                                    : text(over) + "*");
                    return true;
                },
                [](const Place&) {});
        return texts;
    }
    static std::string tree(const std::string& occurrences)
    {
        return "<ProductView rootRefs='o'>" + occurrences +
               "</ProductView><ProductDef><InstanceGraph><Instance id='i' partRef='#p' materialRef='m0'/>"
               "</InstanceGraph></ProductDef><Part id='p'/><Part id='q' materialRef='#m1'/>"
               "<Material id='m0'/><Material id='m1'/><Material id='m2'/>";
    }
};

TEST_F(MaterialTableTest, OccurrencesOfATreeHaveMaterials)
{
    normalise(tree("<Occurrence id='o' partRef='#p' materialRef='m2' occurrenceRefs='a b'/>"
                   "<Occurrence id='a' instanceRefs='#i'/><Occurrence id='b' partRef='#q'/>"));
    EXPECT_THAT(materials(), ElementsAre("0*", "1", "2"));
    EXPECT_THAT(m_result.text, HasSubstr("<Occurrence instanceRefs=\" o\" materialRef=\"zn.m0\"></Occurrence>"));
}

TEST_F(MaterialTableTest, AMaterialMayStandInsideOrBeReferredTo)
{
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='#p' materialRef='m'/><Part id='p' "
              "instanceRefs='b c'><Material name='inside'/></Part><Instance id='b' partRef='#q' materialRef='m'/>"
              "<Instance id='c' partRef='#q'/><Part id='q'/></InstanceGraph><Material id='m'><UserData><UserValue "
              "title='RAL' value='3000'/></UserData></Material></ProductDef>");
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader takes no materials of parts";
    EXPECT_THAT(materials(), ElementsAre("0", "1", "-"));
    ASSERT_EQ(m_result.structure.materialTags.size(), 2u);
    EXPECT_THAT(m_result.structure.materialTags[0], IsEmpty());
    EXPECT_THAT(m_result.structure.materialTags[1], ElementsAre("ptx::attribute::RAL=3000"));
}

TEST_F(MaterialTableTest, APartAtTheTopHasItsOwn)
{
    normalise("<Part id='p' name='P' materialRef='m'/><Material id='m'/>");
    EXPECT_THAT(materials(), ElementsAre("0"));
    EXPECT_THAT(m_result.text, HasSubstr("materialRef=\"zn.m0\""));
}

} // namespace
