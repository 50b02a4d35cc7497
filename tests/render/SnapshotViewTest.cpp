#include "render/SnapshotView.h"

#include <gtest/gtest.h>

namespace render
{

TEST(SnapshotView, EachNameStandsForItsView)
{
    EXPECT_EQ(viewFromText(QStringLiteral("iso")).view, View::Iso);
    EXPECT_EQ(viewFromText(QStringLiteral("front")).view, View::Front);
    EXPECT_EQ(viewFromText(QStringLiteral("back")).view, View::Back);
    EXPECT_EQ(viewFromText(QStringLiteral("left")).view, View::Left);
    EXPECT_EQ(viewFromText(QStringLiteral("right")).view, View::Right);
    EXPECT_EQ(viewFromText(QStringLiteral("top")).view, View::Top);
    EXPECT_EQ(viewFromText(QStringLiteral("bottom")).view, View::Bottom);
    EXPECT_EQ(viewFromText(QStringLiteral("Top")).view, View::Top);
}

TEST(SnapshotView, AnUnknownNameIsAnErrorThatListsTheKnownOnes)
{
    const ViewChoice choice = viewFromText(QStringLiteral("above"));
    EXPECT_FALSE(choice.view);
    EXPECT_EQ(choice.error.toStdString(),
              "Unknown view \"above\". Known views are: iso, front, back, left, right, top, bottom");
    EXPECT_FALSE(viewFromText(QString()).view);
}

TEST(SnapshotView, AViewTellsItsName)
{
    EXPECT_EQ(viewName(View::Bottom), QStringLiteral("bottom"));
    EXPECT_EQ(viewName(View::Iso), QStringLiteral("iso"));
}

} // namespace render
