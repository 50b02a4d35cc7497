#include "protocol/Options.h"

#include <gtest/gtest.h>

using namespace protocol;

TEST(Options, AreThoseOfTheConvertersCommandLine)
{
    EXPECT_STREQ(option::ExternalParts, "--external-parts");
    EXPECT_STREQ(option::Set, "--set");
    EXPECT_STREQ(option::References, "--references");
    EXPECT_STREQ(option::ReferencesBelow, "--references-below");
    EXPECT_STREQ(option::AllowReferences, "--allow-references");
    EXPECT_STREQ(option::Sandbox, "--sandbox");
    EXPECT_STREQ(option::HelpSettings, "--help-settings");
    EXPECT_STREQ(option::Version, "--version");
    EXPECT_STREQ(option::Help, "--help");
}

TEST(Options, AreThoseOfTheTessellatorsCommandLine)
{
    EXPECT_STREQ(tessellationoption::Deviation, "--deviation");
    EXPECT_STREQ(tessellationoption::Angle, "--angle");
    EXPECT_STREQ(tessellationoption::MaxEdgeLength, "--max-edge-length");
    EXPECT_STREQ(tessellationoption::Stitch, "--stitch");
}

TEST(Options, SettingsThatHostsChangeKeepTheirNames)
{
    EXPECT_STREQ(setting::Threads, "threads");
    EXPECT_STREQ(setting::TimeLimit, "limit.time");
    EXPECT_STREQ(setting::TimeLimitPerMegabyte, "limit.time-per-mb");
    EXPECT_STREQ(setting::MemoryLimit, "limit.memory");
    EXPECT_STREQ(setting::MemoryLimitPerMegabyte, "limit.memory-per-mb");
    EXPECT_STREQ(setting::MeshLevel, "mesh.level");
    EXPECT_STREQ(setting::Pmi, "convert.pmi");
    EXPECT_STREQ(setting::AutomaticViews, "convert.automatic-views");
    EXPECT_STREQ(setting::SurfaceUv, "convert.uv");
    EXPECT_STREQ(setting::KeepBrep, "keep-brep");
    EXPECT_STREQ(setting::ExactMeasures, "exact-measures");
}
