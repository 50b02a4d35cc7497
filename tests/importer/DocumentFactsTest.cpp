#include "importer/DocumentFacts.h"

#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class DocumentFactsTest : public SessionTest
{
protected:
    std::optional<importer::DocumentFacts> factsOf(const QByteArray& product)
    {
        return importer::readDocumentFacts(
            write(QStringLiteral("car.plmxml"),
                  "<PLMXML>\n<ProductDef id='pd'>\n" + product + "\n</ProductDef>\n</PLMXML>\n"));
    }

    static std::vector<std::string> linesOf(const importer::DocumentFacts& facts)
    {
        std::vector<std::string> lines;
        for (const importer::DanglingReference& reference : facts.dangling)
            lines.push_back(QStringLiteral("%1: %2 %3 %4 %5")
                                .arg(reference.line)
                                .arg(reference.element, reference.id, reference.attribute, reference.target)
                                .toStdString());
        return lines;
    }
};

TEST_F(DocumentFactsTest, ElementsThatAnImportTakesAreCounted)
{
    const auto facts = factsOf(
        "<InstanceGraph rootRefs='i j'><Instance id='i' partRef='p'/><ProductInstance id='j' partRef='q'/>"
        "<Instance id='k' partRef='p'/><Part id='q'/></InstanceGraph>"
        "<Part id='p' type='solid'><Representation id='r' location='a%20b.stp'/><Material id='m'/></Part>"
        "<ProductRevisionView id='s'><Representation location='./a b.stp'>"
        "<CompoundRep location='c.stp'/></Representation></ProductRevisionView>"
        "<ProductView><Occurrence id='o'><Occurrence id='n'><Material/></Occurrence></Occurrence></ProductView>");
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->instances, 3u);
    EXPECT_EQ(facts->parts, 3u);
    EXPECT_EQ(facts->files, 2u);
    EXPECT_EQ(facts->occurrences, 2u);
    EXPECT_EQ(facts->materials, 2u);
    EXPECT_EQ(facts->danglingCount, 0u);
}

TEST_F(DocumentFactsTest, ElementsInWrongPlacesAreNotCounted)
{
    const auto facts = factsOf("<Instance id='i' partRef='nowhere'/><InstanceGraph><Representation location='a.stp'/>"
                               "<Other><Part id='p'/></Other></InstanceGraph><x:Part id='q'/>"
                               "<Part id='s'><Occurrence/><Instance id='j'/></Part>");
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->instances, 0u);
    EXPECT_EQ(facts->parts, 1u);
    EXPECT_EQ(facts->files, 0u);
    EXPECT_EQ(facts->occurrences, 1u);
    EXPECT_EQ(facts->danglingCount, 0u);
}

TEST_F(DocumentFactsTest, ReferencesThatLeadNowhereAreNamedWithTheirLines)
{
    const auto facts = factsOf("<InstanceGraph rootRefs='i #r1 p'>\n"
                               "<Instance id='i' partRef='other.plmxml#p' materialRef='#m1' transformRef='t1'/>\n"
                               "</InstanceGraph>\n"
                               "<Part id='p' instanceRefs='i i1' representationRefs='s1'>\n"
                               "<Representation id='s' transformRef='#t2'/></Part>\n"
                               "<ProductView id='v' rootRefs='o o1'>\n"
                               "<Occurrence id='o' instanceRefs='i i2' occurrenceRefs='o2' materialRef='m2'/>\n"
                               "</ProductView>");
    ASSERT_TRUE(facts);
    EXPECT_THAT(linesOf(*facts), ElementsAre("3: InstanceGraph  rootRefs #r1", "4: Instance i partRef other.plmxml#p",
                                             "4: Instance i materialRef #m1", "4: Instance i transformRef t1",
                                             "6: Part p instanceRefs i1", "6: Part p representationRefs s1",
                                             "7: Representation s transformRef #t2", "8: ProductView v rootRefs o1",
                                             "9: Occurrence o materialRef m2", "9: Occurrence o instanceRefs i2",
                                             "9: Occurrence o occurrenceRefs o2"));
    EXPECT_EQ(facts->danglingCount, 11u);
}

/// An element that stands inside counts instead of the attribute, which is not followed then.
TEST_F(DocumentFactsTest, ReferencesThatAnImportDoesNotFollowAreNotNamed)
{
    const auto facts = factsOf("<InstanceGraph rootRefs='r1' rootInstanceRef='i'>"
                               "<Instance id='i' partRef='p' transformRef='t1'><Transform>1</Transform></Instance>"
                               "</InstanceGraph><Part id='p' materialRef='m1' partRefs='p1'>"
                               "<Occurrence materialRef='m2'><Material/></Occurrence></Part>");
    ASSERT_TRUE(facts);
    EXPECT_THAT(linesOf(*facts), IsEmpty());
    EXPECT_EQ(facts->danglingCount, 0u);
}

TEST_F(DocumentFactsTest, AnElementIsCalledByTheNameAndTheIdThatTheDocumentGivesIt)
{
    const auto facts = factsOf("<InstanceGraph><ProductInstance partRef='p1'/></InstanceGraph>\n"
                               "<ProductRevisionView id='v' instanceRefs='i1'/>");
    ASSERT_TRUE(facts);
    EXPECT_THAT(linesOf(*facts),
                ElementsAre("3: ProductInstance  partRef p1", "4: ProductRevisionView v instanceRefs i1"));
}

TEST_F(DocumentFactsTest, ALongListOfReferencesIsCountedWholeAndNamedInPart)
{
    const auto facts = factsOf("<Part id='p' instanceRefs='" + QByteArray("x ").repeated(1500) + "'/>");
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->danglingCount, 1500u);
    EXPECT_EQ(facts->dangling.size(), importer::DocumentFacts::maxDangling);
}

TEST_F(DocumentFactsTest, ADocumentWithoutAProductHasNothing)
{
    const auto facts = importer::readDocumentFacts(write(QStringLiteral("car.plmxml"), "<PLMXML/>"));
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->instances + facts->parts + facts->files, 0u);
}

TEST_F(DocumentFactsTest, ADocumentThatCannotBeReadHasNoFacts)
{
    EXPECT_FALSE(importer::readDocumentFacts(write(QStringLiteral("car.plmxml"), "<Other/>")));
    EXPECT_FALSE(importer::readDocumentFacts(path(QStringLiteral("none.plmxml"))));
    EXPECT_FALSE(
        factsOf("<Transform>x y</Transform><Part><Representation><Transform>x</Transform></Representation></Part>"));
}

} // namespace
