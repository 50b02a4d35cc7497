#include "importer/plmxml/DocumentReport.h"

#include "tests/importer/plmxml/SameDocument.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using namespace importer::plmxml;

constexpr std::uint64_t Memory = 1 << 20;

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// With something in every member that goes over.
NormalisedDocument full()
{
    NormalisedDocument document;
    document.way = NormalisedDocument::Way::AsText;
    document.refusal = {Refusal::Why::TooLarge, text("Instance"), text("i\"ä"), 7, 20, 4e270};
    document.elements = {{text("/d/other.plmxml"), text("x")}};
    document.isRead = document.hasAllFacts = true;
    zn::DocumentStructure& facts = document.facts;
    facts.isNormalised = facts.isSelection = facts.hasNoUnits = facts.isCut = true;
    facts.treeFrom = text("flat");
    facts.view = text("view");
    facts.otherViews = QStringList{text("a"), QString(), text("ü")};
    facts.roots = 1;
    facts.occurrences = 2.5e7;
    facts.leaves = 3;
    facts.hiddenLeaves = 4;
    facts.leavesWithoutShape = 5;
    facts.shapePlaces = 6;
    facts.parts = 7;
    facts.depth = 8;
    facts.instances = 9;
    facts.userValues = 10;
    facts.materials = 11;
    facts.duplicateIds = 12;
    facts.conditions = 13;
    facts.internalShapes = 14;
    facts.placedTwice = 15;
    facts.badTransforms = 16;
    facts.badMaterialNumbers = 17;
    facts.languages = QStringList{text("de")};
    facts.danglingCount = 1;
    facts.dangling = {{text("Instance"), text("i"), text("partRef"), text("#p"), 5}};
    facts.unplacedCount = 2;
    facts.unplaced = {{text("o"), text("i j"), 3}, {text("q"), {}, 4}};
    facts.repeatedCount = 1;
    facts.repeated = {{text("r"), text("i"), 9}};
    facts.files = {
        {text("a\\b.jt"), text("a/b.jt"), text("JT"), text("/a/b.jt"), text("letter case"), 3, text("no"), 2}};
    facts.leftOutCounts = {{text("missing"), 3}, {text("no file"), 1}};
    facts.leftOut = {{text("CompoundRep"), text("c"), text("p"), text("x.jt"), text("JT"), text("missing"), 8}};
    Structure& structure = document.structure;
    structure.parts.resize(2);
    structure.parts[1].name = "part\n\xc3\xa4\xff";
    structure.parts[1].placements = {2, 0};
    structure.parts[1].tags = {"tag", ""};
    structure.parts[1].shapeNodes = 3;
    structure.placements.resize(3);
    structure.placements[0] = {.id = "i", .name = "one", .part = 1, .material = 0, .hasNode = false, .tags = {"t"}};
    structure.placements[1].visibility = Visibility::Hidden;
    structure.graphs = {{0, 1}, {}};
    structure.overrides.resize(1);
    structure.overrides[0].path = {0, 2};
    structure.overrides[0].name = "other";
    structure.overrides[0].isMoved = true;
    structure.overrides[0].material = 1;
    structure.overrides[0].visibility = Visibility::Shown;
    structure.overrides[0].tags = {"u"};
    structure.materialTags = {{"steel"}, {}};
    document.asked = {{text("/a/b.jt"), {text("a\\b.jt"), 2, true}}, {text("/c"), {text("c"), 3, false}}};
    return document;
}

TEST(DocumentReportTest, AllThatTheHostAsksForArrives)
{
    const auto arrived = documentOf(reportOf(full()), Memory);
    ASSERT_TRUE(arrived);
    expectSame(full(), *arrived);
}

TEST(DocumentReportTest, ADocumentThatWasNotReadArrives)
{
    const auto arrived = documentOf(reportOf({}), Memory);
    ASSERT_TRUE(arrived);
    expectSame({}, *arrived);
}

TEST(DocumentReportTest, EveryPieceOfAReportIsNone)
{
    const std::string whole = reportOf(full());
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(documentOf(whole.substr(0, size), Memory)) << size;
    EXPECT_FALSE(documentOf(whole + '\0', Memory));
}

TEST(DocumentReportTest, AReportOfAnotherLayoutIsNone)
{
    std::string bytes = reportOf(full());
    bytes[0] = static_cast<char>(bytes[0] + 1);
    EXPECT_FALSE(documentOf(bytes, Memory));
}

/// Each byte of a report in turn made the largest: no end of the process, and no index out of its list.
TEST(DocumentReportTest, DamagedReportsAreRefusedOrSound)
{
    const std::string whole = reportOf(full());
    std::size_t refused = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = '\xff';
        const auto document = documentOf(damaged, Memory);
        refused += document ? 0 : 1;
        if (document)
            PlaceWalk(document->structure).run([](const Place&) { return true; }, [](const Place&) {});
    }
    EXPECT_GT(refused, 300u);
}

TEST(DocumentReportTest, MoreMemoryThanAllowedIsRefused)
{
    NormalisedDocument document = full();
    document.structure.parts.resize(1000);
    const std::string bytes = reportOf(document);
    EXPECT_TRUE(documentOf(bytes, 1000 * sizeof(StructurePart) + 20'000));
    EXPECT_FALSE(documentOf(bytes, 1000 * sizeof(StructurePart)));
}

/// Counts far beyond the bytes.
TEST(DocumentReportTest, ACountWithoutItsValuesIsRefusedAtOnce)
{
    NormalisedDocument document;
    document.isRead = true;
    std::string bytes = reportOf(document);
    const std::uint32_t many = ~std::uint32_t(0);
    // The entries of `asked` stand last.
    std::memcpy(bytes.data() + bytes.size() - sizeof many, &many, sizeof many);
    EXPECT_FALSE(documentOf(bytes, ~std::uint64_t(0)));
}

/// Whether the document with one change is refused.
template <class Change>
bool isRefused(const Change& change)
{
    NormalisedDocument document = full();
    change(document);
    return !documentOf(reportOf(document), Memory);
}

TEST(DocumentReportTest, IndicesThatLeadOutOfTheirListsAreRefused)
{
    EXPECT_FALSE(isRefused([](NormalisedDocument&) {}));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.parts[0].placements = {3}; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.placements[2].part = 2; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.placements[2].material = 2; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.graphs[1] = {3}; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.graphs[1] = {Nothing}; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.overrides[0].path = {3}; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.overrides[0].material = 2; }));
}

TEST(DocumentReportTest, NumbersThatAreNoValuesAreRefused)
{
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.structure.placements[0].visibility = Visibility{3}; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.way = NormalisedDocument::Way{3}; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.refusal.why = Refusal::Why{6}; }));
    std::string bytes = reportOf(full());
    bytes.back() = 2; // whether the last file was refused
    EXPECT_FALSE(documentOf(bytes, Memory));
}

TEST(DocumentReportTest, CountsWithoutTheFirstOfWhatWasCountedAreRefused)
{
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.facts.unplaced.clear(); }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.facts.repeated.clear(); }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.facts.danglingCount = 0; }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.facts.leftOut.resize(zn::LeftOutShape::maxKept + 1); }));
    EXPECT_TRUE(isRefused([](NormalisedDocument& d) { d.isRead = false; })) << "a text of nothing";
}

} // namespace
