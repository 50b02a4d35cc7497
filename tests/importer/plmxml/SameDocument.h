#pragma once

#include "importer/plmxml/Normaliser.h"
#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

#include <tuple>

namespace importer::plmxml
{

/// The members of an object that can be compared.
inline auto all(const zn::StructureFile& f)
{
    return std::tuple(f.written, f.path, f.format, f.found, f.foundBy, f.places, f.whyNot, f.line);
}

inline auto all(const zn::PassedOccurrence& o)
{
    return std::tuple(o.id, o.path, o.line);
}

inline auto all(const zn::LeftOutShape& s)
{
    return std::tuple(s.element, s.id, s.part, s.written, s.format, s.whyNot, s.line);
}

inline auto all(const DanglingReference& r)
{
    return std::tuple(r.element, r.id, r.attribute, r.target, r.line);
}

inline auto all(const DocumentElement& e)
{
    return std::tuple(e.document, e.id);
}

inline auto all(const AskedFile& a)
{
    return std::tuple(a.written, a.line, a.isRefused);
}

inline auto all(const StructurePart& p)
{
    return std::tuple(p.name, p.placements, p.tags, p.shapeNodes);
}

inline auto all(const StructurePlacement& p)
{
    return std::tuple(p.name, p.part, p.material, p.visibility, p.hasNode, p.tags);
}

inline auto all(const StructureOverride& o)
{
    return std::tuple(o.path, o.name, o.isMoved, o.material, o.visibility, o.tags);
}

inline auto all(const zn::DocumentStructure& f)
{
    return std::tuple(f.isNormalised, f.treeFrom, f.view, f.otherViews, f.roots, f.occurrences, f.leaves,
                      f.hiddenLeaves, f.leavesWithoutShape, f.shapePlaces, f.parts, f.depth, f.instances, f.userValues,
                      f.materials, f.duplicateIds, f.conditions, f.internalShapes, f.isSelection, f.placedTwice,
                      f.badTransforms, f.badMaterialNumbers, f.languages, f.hasNoUnits, f.isCut, f.danglingCount,
                      f.unplacedCount, f.repeatedCount, f.leftOutCounts);
}

template <class List>
void expectSameList(const List& a, const List& b, const char* what)
{
    ASSERT_EQ(a.size(), b.size()) << what;
    for (std::size_t i = 0; i < a.size(); ++i)
        EXPECT_TRUE(all(a[i]) == all(b[i])) << what << ' ' << i;
}

/// All that goes from one process to another, but the text.
inline void expectSame(const NormalisedDocument& a, const NormalisedDocument& b)
{
    EXPECT_EQ(a.way, b.way);
    EXPECT_EQ(a.refusal.why, b.refusal.why);
    EXPECT_EQ(describe(a.refusal), describe(b.refusal));
    EXPECT_EQ(a.isRead, b.isRead);
    EXPECT_EQ(a.hasAllFacts, b.hasAllFacts);
    expectSameList(a.elements, b.elements, "element");
    EXPECT_TRUE(all(a.facts) == all(b.facts));
    expectSameList(a.facts.dangling, b.facts.dangling, "dangling reference");
    expectSameList(a.facts.unplaced, b.facts.unplaced, "unplaced occurrence");
    expectSameList(a.facts.repeated, b.facts.repeated, "repeated occurrence");
    expectSameList(a.facts.files, b.facts.files, "file");
    expectSameList(a.facts.leftOut, b.facts.leftOut, "shape");
    expectSameList(a.structure.parts, b.structure.parts, "part");
    expectSameList(a.structure.placements, b.structure.placements, "placement");
    expectSameList(a.structure.overrides, b.structure.overrides, "override");
    EXPECT_EQ(a.structure.graphs, b.structure.graphs);
    EXPECT_EQ(a.structure.materialTags, b.structure.materialTags);
    ASSERT_EQ(a.asked.size(), b.asked.size());
    for (auto asked = a.asked.begin(); asked != a.asked.end(); ++asked)
        EXPECT_TRUE(all(*asked) == all(b.asked[asked.key()])) << asked.key().toStdString();
}

} // namespace importer::plmxml
