// What is counted of a structure, without going to each of its places.

#include "tests/importer/plmxml/NormaliserTest.h"

#include <QElapsedTimer>

using testing::StartsWith;

namespace
{

class SurveyTest : public NormaliserTest
{
protected:
    static std::string document(const std::string& roots, const std::string& content, const std::string& view = {})
    {
        return "<ProductDef><InstanceGraph rootRefs='" + roots + "'/>\n" + content + "<ProductView>" + view +
               "</ProductView></ProductDef>";
    }

    /// Each part places the next one twice.
    static std::string doubled(int levels)
    {
        std::string content;
        for (int i = 0; i < levels; ++i) {
            const std::string n = std::to_string(i);
            content += "<Part id='p" + n + "' instanceRefs='a" + n + " b" + n + "'/>\n";
            for (const char* side : {"a", "b"})
                content += "<Instance id='" + (side + n) + "' partRef='#p" + std::to_string(i + 1) + "'/>\n";
        }
        return content + "<Part id='p" + std::to_string(levels) +
               "'><Representation format='JT' location='x.jt'/></Part>";
    }

    /// What a walk over all places finds to be hidden leaves.
    double hiddenByWalk() const
    {
        using namespace importer::plmxml;
        const Structure& structure = m_result.structure;
        double hidden = 0;
        std::vector<Visibility> above;
        PlaceWalk(structure).run(
            [&](const Place& place) {
                const StructurePlacement& placement = structure.placements[place.placement];
                Visibility own = placement.visibility;
                if (place.override && place.override->visibility != Visibility::AsAbove)
                    own = place.override->visibility;
                above.resize(place.depth);
                above.push_back(own != Visibility::AsAbove ? own : place.depth > 0 ? above.back() : Visibility::Shown);
                const bool isLeaf = placement.part == Nothing || structure.parts[placement.part].placements.empty();
                hidden += isLeaf && above.back() == Visibility::Hidden ? 1 : 0;
                return true;
            },
            [](const Place&) {});
        return hidden;
    }
};

TEST_F(SurveyTest, SharedPartsCountAtEachPlace)
{
    make("x.jt");
    normalise(document("a0 b0 a0", doubled(3)));
    EXPECT_EQ(m_result.facts.roots, 3u);
    EXPECT_EQ(m_result.facts.occurrences, 3 * (1 + 2 + 4));
    EXPECT_EQ(m_result.facts.leaves, 3 * 4);
    EXPECT_EQ(m_result.facts.depth, 3u);
    EXPECT_EQ(m_result.facts.shapePlaces, 3 * 4);
    EXPECT_EQ(m_result.facts.leavesWithoutShape, 0);
    EXPECT_EQ(m_result.facts.files.front().places, 3 * 4);
    EXPECT_FALSE(m_result.facts.isCut);
}

TEST_F(SurveyTest, HiddenLeavesAreThoseThatAWalkFinds)
{
    const std::string once = "<Occurrence instanceRefs='#a0' visible='false'/>"
                             "<Occurrence instanceRefs='#a0 #b1' visible='true'/>"
                             "<Occurrence instanceRefs='#a0 #b1 #a2' visible='false'/>"
                             "<Occurrence instanceRefs='#b0 #b1 #b2 #b3' visible='false'/>"
                             "<Occurrence instanceRefs='#a0 #a1' name='Nothing said'/>";
    normalise(document("a0 b0", doubled(4), once));
    EXPECT_EQ(m_result.facts.hiddenLeaves, 4 + 2 + 1);
    EXPECT_EQ(m_result.facts.hiddenLeaves, hiddenByWalk());
    normalise(document("a0 a0 b0", doubled(4), once));
    EXPECT_EQ(m_result.facts.hiddenLeaves, 2 * (4 + 2) + 1) << "an instance that is listed twice is one path";
    EXPECT_EQ(m_result.facts.hiddenLeaves, hiddenByWalk());
}

TEST_F(SurveyTest, ARingIsRefusedWithElementAndLine)
{
    EXPECT_EQ(normalise(document("a", "<Instance id='a' partRef='#p'/>\n<Part id='p' instanceRefs='b'/>\n"
                                      "<Instance id='b' partRef='#q'/>\n<Part id='q' instanceRefs='x c'/>\n"
                                      "<Instance id='x'/>\n<ProductInstance id='c' partRef='#p'/>"))
                  .way,
              Way::Refuse);
    EXPECT_EQ(reason(), QStringLiteral("the structure contains itself: ProductInstance \"c\" in line 7 leads "
                                       "back to a part that is around it"));
    EXPECT_TRUE(m_result.facts.isCut);
}

TEST_F(SurveyTest, APartThatStandsTwiceIsNoRing)
{
    normalise(document("a b", "<Instance id='a' partRef='#p'/><Instance id='b' partRef='#q'/><Part id='p' "
                              "instanceRefs='b b'/><Part id='q'/>"));
    EXPECT_NE(m_result.way, Way::Refuse);
    EXPECT_EQ(m_result.facts.occurrences, 4);
}

TEST_F(SurveyTest, DoublingLevelsAreRefusedAtOnceWithElementAndLine)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(normalise(document("a0", doubled(900))).way, Way::Refuse);
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(reason(), QStringLiteral("the structure has more than 20000000 places; Instance \"b899\" in line "
                                       "2701 places a part that is at 4.23e+270 of them"));
    EXPECT_EQ(normalise(document("a0", doubled(24))).way, Way::AsText) << "just below";
    EXPECT_EQ(m_result.facts.occurrences, (1 << 24) - 1);
    EXPECT_EQ(normalise(document("a0", doubled(25))).way, Way::Refuse) << "just above";
    EXPECT_THAT(reason().toStdString(), StartsWith("the structure has more than 20000000 places; Instance "
                                                   "\"b24\" in line 76 places a part that is at 16777216 "));
}

TEST_F(SurveyTest, AsManyPlacesAsAreAskedForAreAllowed)
{
    normalise(document("a0", doubled(10))); // makes the file, too
    ASSERT_EQ(m_result.facts.occurrences, 1023);
    importer::plmxml::NormaliserOptions options;
    options.mostPlaces = 1023;
    EXPECT_NE(importer::plmxml::normalise(path("car.plmxml"), options).way, Way::Refuse);
    options.mostPlaces = 1022;
    const auto refused = importer::plmxml::normalise(path("car.plmxml"), options);
    EXPECT_EQ(refused.way, Way::Refuse);
    EXPECT_THAT(describe(refused.refusal).toStdString(), StartsWith("the structure has more than 1022 places; "));
}

TEST_F(SurveyTest, DoublingLevelsAreRefusedWhereNobodyAsksForFactsToo)
{
    make("car.plmxml", QByteArray::fromStdString("<PLMXML><ProductDef><InstanceGraph rootRefs='a0'>" + [] {
             std::string instances, parts;
             for (int i = 0; i < 40; ++i) {
                 const std::string n = std::to_string(i);
                 for (const char* side : {"a", "b"})
                     instances += "<Instance id='" + (side + n) + "' partRef='#p" + std::to_string(i + 1) + "'/>";
                 parts += "<Part id='p" + n + "' instanceRefs='a" + n + " b" + n + "'/>";
             }
             return instances + "</InstanceGraph>" + parts;
         }() + "<Part id='p40'><Representation format='JT' location='x.jt'/></Part></ProductDef></PLMXML>"));
    EXPECT_EQ(importer::plmxml::normalise(path("car.plmxml"), {}).way, Way::Refuse);
}

TEST_F(SurveyTest, ChainsAreRefusedBeyondTheDeepestLevelWithElementAndLine)
{
    const auto chain = [](int count) {
        std::string content;
        for (int i = 0; i < count; ++i) {
            const std::string n = std::to_string(i);
            content += "<Instance id='a" + n + "' partRef='#p" + n + "'/><Part id='p" + n + "' instanceRefs='" +
                       (i + 1 < count ? "a" + std::to_string(i + 1) : "") + "'/>\n";
        }
        return document("a0", content);
    };
    EXPECT_NE(normalise(chain(1000)).way, Way::Refuse);
    EXPECT_EQ(m_result.facts.depth, 1000u);
    EXPECT_EQ(normalise(chain(1001)).way, Way::Refuse);
    EXPECT_EQ(reason(), QStringLiteral("the structure is deeper than 1000 levels at Instance \"a1000\" in line 1002"));
}

} // namespace
