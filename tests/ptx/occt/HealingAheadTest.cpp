#include "ptx/occt/HealingAhead.h"

#include "ptx/occt/Healing.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <BRepBuilderAPI_Copy.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Wire.hxx>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <sstream>
#include <vector>

namespace
{

using ptx::occt::heal;
using ptx::occt::HealingAhead;
using ptx::occt::meshing::ShapeBody;

TopoDS_Shape cylinder(double radius)
{
    return BRepPrimAPI_MakeCylinder(radius, 5).Solid();
}

TopoDS_Shape compoundOf(const std::vector<TopoDS_Shape>& shapes)
{
    TopoDS_Compound compound;
    BRep_Builder().MakeCompound(compound);
    for (const TopoDS_Shape& shape : shapes)
        BRep_Builder().Add(compound, shape);
    return compound;
}

TopoDS_Shape shellOf(const std::vector<TopoDS_Shape>& faces)
{
    TopoDS_Shell shell;
    BRep_Builder().MakeShell(shell);
    for (const TopoDS_Shape& face : faces)
        BRep_Builder().Add(shell, face);
    return shell;
}

std::string textOf(const TopoDS_Shape& shape)
{
    std::ostringstream text;
    BRepTools::Write(shape, text);
    return text.str();
}

/// Shares nothing with `shape`, and has nothing of other faces.
TopoDS_Shape copyOf(const TopoDS_Shape& shape)
{
    return BRepBuilderAPI_Copy(shape).Shape();
}

/// A square whose edges do not follow each other, which the healing makes another face of.
TopoDS_Shape loose(double size)
{
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(size, size, size).Shape();
    const TopoDS_Face face = TopoDS::Face(TopExp_Explorer(box, TopAbs_FACE).Current());
    std::vector<TopoDS_Shape> edges;
    for (TopExp_Explorer edge(face, TopAbs_EDGE); edge.More(); edge.Next())
        edges.push_back(edge.Current());
    std::swap(edges.at(1), edges.at(2));
    const BRep_Builder builder;
    TopoDS_Wire wire;
    builder.MakeWire(wire);
    for (const TopoDS_Shape& edge : edges)
        builder.Add(wire, edge);
    TopoDS_Shape result = face.EmptyCopied();
    builder.Add(result, wire);
    return copyOf(result);
}

ShapeBody bodyOf(const TopoDS_Shape& shape)
{
    ShapeBody body;
    body.shape = shape;
    body.name = "part";
    return body;
}

class HealingAheadTest : public testing::Test
{
protected:
    /// Ready for `threads` threads, as in the attempt with this number.
    HealingAhead& ahead(int threads, int attempt = 0)
    {
        EXPECT_FALSE(m_settings.assign("threads=" + std::to_string(threads)));
        m_rescue.emplace(m_folder.file("parts"), attempt);
        m_job.emplace(ptx::model::Job{"in.stp", 0, false, m_settings, *m_limits, m_progress, m_log, *m_rescue});
        return m_ahead.emplace(*m_job);
    }

    void SetUp() override { m_limits.emplace(m_settings, 0); }

    bool take(ShapeBody& body) { return m_ahead->take(body, trouble); }

    /// Waits until the healing of the first part is under way or over, so that taking it does not mean to leave it out.
    void awaitFirst() const
    {
        constexpr std::size_t Ahead = 2;
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        for (std::string marks; marks.size() <= Ahead && std::chrono::steady_clock::now() < end;
             std::this_thread::sleep_for(std::chrono::milliseconds(1)))
            marks = ptxtest::contentOf(m_folder.file("parts"));
    }

    ptx::core::Settings m_settings;
    ptx::core::Trouble trouble;

private:
    ptxtest::TempFolder m_folder;
    ptx::core::Progress m_progress;
    ptx::core::Log m_log{m_folder.file("log")};
    std::optional<ptx::core::Limits> m_limits;
    std::optional<ptx::core::Rescue> m_rescue;
    std::optional<ptx::model::Job> m_job;
    std::optional<HealingAhead> m_ahead;
};

} // namespace

TEST_F(HealingAheadTest, ThePartIsTheOneThatHealingLaterGives)
{
    const TopoDS_Shape raw = loose(2);
    ShapeBody later = bodyOf(copyOf(raw));
    heal(later, false);
    ShapeBody part = bodyOf(raw);
    ahead(2).add(raw);
    awaitFirst();
    ASSERT_TRUE(take(part));
    EXPECT_FALSE(trouble);
    EXPECT_FALSE(part.shape.IsPartner(raw));
    EXPECT_EQ(part.mayBeInsideOut, later.mayBeInsideOut);
    EXPECT_EQ(textOf(part.shape), textOf(later.shape));
}

TEST_F(HealingAheadTest, MarksFollowTheFaces)
{
    const TopoDS_Shape raw = loose(2);
    ShapeBody part = bodyOf(raw);
    TopExp_Explorer face(raw, TopAbs_FACE);
    part.marks.Bind(face.Current(), {7});
    ahead(2).add(raw);
    awaitFirst();
    ASSERT_TRUE(take(part));
    ASSERT_EQ(part.marks.Size(), 1);
    decltype(part.marks)::Iterator mark(part.marks);
    EXPECT_EQ(mark.Value().appearance, 7);
    EXPECT_FALSE(mark.Key().IsPartner(face.Current()));
    EXPECT_TRUE(mark.Key().IsPartner(TopExp_Explorer(part.shape, TopAbs_FACE).Current()));
}

TEST_F(HealingAheadTest, ManyPartsAreEachTheirOwn)
{
    std::vector<TopoDS_Shape> parts;
    HealingAhead& healing = ahead(4);
    for (int i = 1; i <= 40; ++i)
        healing.add(parts.emplace_back(loose(i)));
    for (int i = 40; i >= 1; --i) {
        ShapeBody later = bodyOf(copyOf(loose(i)));
        heal(later, false);
        ShapeBody part = bodyOf(parts[static_cast<std::size_t>(i - 1)]);
        if (!take(part))
            heal(part, false);
        EXPECT_EQ(textOf(part.shape), textOf(later.shape)) << i;
    }
}

TEST_F(HealingAheadTest, WithOneThreadPartsAreLeftToWhoeverAsks)
{
    const TopoDS_Shape raw = cylinder(2);
    ShapeBody part = bodyOf(raw);
    ahead(1).add(raw);
    EXPECT_FALSE(take(part));
    EXPECT_TRUE(part.shape.IsEqual(raw));
}

TEST_F(HealingAheadTest, APartIsTakenOnce)
{
    const TopoDS_Shape raw = cylinder(2);
    ShapeBody part = bodyOf(raw);
    ShapeBody again = bodyOf(raw);
    ahead(2).add(raw);
    awaitFirst();
    EXPECT_TRUE(take(part));
    EXPECT_FALSE(take(again));
}

// What is healed first decides what the faces become, on any number of threads.
TEST_F(HealingAheadTest, TheFirstOfPartsThatShareFacesIsHealedBeforeTheSecondIsKnown)
{
    const TopoDS_Shape shared = loose(2);
    const TopoDS_Shape first = shellOf({shared, loose(3)});
    const TopoDS_Shape second = shellOf({shared, loose(4)});
    for (const int threads : {1, 2}) {
        HealingAhead& healing = ahead(threads);
        healing.add(first);
        healing.add(second);
        EXPECT_EQ(healing.count(), 1u);
        ShapeBody part = bodyOf(first);
        EXPECT_TRUE(take(part)) << threads;
        ShapeBody other = bodyOf(second);
        EXPECT_FALSE(take(other)) << threads;
    }
}

TEST_F(HealingAheadTest, OneThatMayBecomeSeveralPartsStaysOut)
{
    HealingAhead& healing = ahead(1);
    healing.add(compoundOf({cylinder(2), compoundOf({})}));
    healing.add(compoundOf({}));
    healing.add(TopoDS_Shape());
    EXPECT_EQ(healing.count(), 0u);
    healing.add(compoundOf({cylinder(2), cylinder(3)}));
    healing.add(TopExp_Explorer(cylinder(4), TopAbs_SHELL).Current());
    EXPECT_EQ(healing.count(), 2u);
}

TEST_F(HealingAheadTest, ASolidWithinAPartThatWasHealedIsLeftToWhoeverAsksAfterThat)
{
    const TopoDS_Shape solid = cylinder(2);
    const TopoDS_Shape whole = compoundOf({solid, cylinder(3)});
    ahead(1).add(whole);
    ShapeBody part = bodyOf(solid);
    EXPECT_FALSE(take(part));
    ShapeBody all = bodyOf(whole);
    EXPECT_TRUE(take(all)) << "it would be healed while the solid is at work";
}

TEST_F(HealingAheadTest, AnotherPlaceIsAnotherPart)
{
    const TopoDS_Shape raw = cylinder(2);
    gp_Trsf move;
    move.SetTranslation({1, 0, 0});
    ShapeBody part = bodyOf(raw.Moved(move));
    ahead(2).add(raw);
    awaitFirst();
    EXPECT_FALSE(take(part));
}

TEST_F(HealingAheadTest, WhatIsReadAgainIsForgotten)
{
    const TopoDS_Shape first = cylinder(2);
    const TopoDS_Shape second = cylinder(3);
    HealingAhead& healing = ahead(2);
    healing.add(first);
    const std::size_t before = healing.count();
    healing.add(second);
    healing.add(cylinder(4));
    awaitFirst();
    healing.dropSince(before);
    EXPECT_EQ(healing.count(), 1u);
    ShapeBody part = bodyOf(second);
    EXPECT_FALSE(take(part));
    healing.add(second);
    EXPECT_EQ(healing.count(), 2u) << "its faces are still known";
    ShapeBody kept = bodyOf(first);
    EXPECT_TRUE(take(kept));
}

TEST_F(HealingAheadTest, NothingIsHealedAheadAfterACrashOrAgainstTheSettings)
{
    HealingAhead& later = ahead(2, 1);
    later.add(cylinder(2));
    EXPECT_EQ(later.count(), 0u);
    EXPECT_FALSE(m_settings.assign("heal=0"));
    HealingAhead& off = ahead(2);
    off.add(cylinder(2));
    EXPECT_EQ(off.count(), 0u);
}
