#include "importer/plmxml/FileFormats.h"

#include <gtest/gtest.h>

using namespace importer::plmxml;

namespace
{

int rank(const char* name, const char* format = "", const QStringList& preferred = {})
{
    return FileFormats(preferred).rankOf(QString::fromUtf8(name), QString::fromUtf8(format));
}

TEST(FileFormatsTest, ReadableFilesComeBeforeOthers)
{
    EXPECT_LT(rank("a.jt"), rank("a.stp"));
    EXPECT_LT(rank("a.STP"), rank("a.iges"));
    EXPECT_LT(rank("a.igs"), rank("a.obj"));
    EXPECT_LT(rank("a.wrl", "VRML"), rank("a.stl"));
    EXPECT_LT(rank("a.stl"), FileFormats::OtherConverter);
    EXPECT_EQ(rank("a.prt", "prt"), FileFormats::OtherConverter);
    EXPECT_EQ(rank("a.vfz"), FileFormats::NoReader);
}

TEST(FileFormatsTest, PreviewsAndTextsAreNoShapes)
{
    EXPECT_EQ(rank("a.qaf", "qaf"), FileFormats::NoShape);
    EXPECT_EQ(rank("a.pdf"), FileFormats::NoShape);
    EXPECT_EQ(rank("", "JT"), FileFormats::NoReader);
}

TEST(FileFormatsTest, PreferredOnesComeFirstInTheirOrder)
{
    const QStringList preferred = {QStringLiteral("STEP"), QStringLiteral("stl")};
    EXPECT_LT(rank("a.stp", "", preferred), rank("a.stl", "", preferred));
    EXPECT_LT(rank("a.stl", "", preferred), rank("a.jt", "", preferred));
    EXPECT_EQ(rank("a.jt", "", preferred), rank("a.jt"));
}

} // namespace
