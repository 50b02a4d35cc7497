// STEP files by gzip and in ZIP files.

#include "files/scenefile/ConvertedTree.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/PackedFiles.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::HasSubstr;
using testing::SizeIs;

namespace
{

std::string boxText()
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {0, 0, 0}, {1, 2, 3});
    return step.text();
}

/// An assembly of "inner", which lies in "box.stp".
std::string assemblyText()
{
    StepText step;
    const StepProduct top = step.product("top");
    const StepProduct inner = step.product("inner");
    step.keepIn(inner, "box.stp");
    step.place(top, inner, "use", {10, 0, 0});
    return step.text();
}

} // namespace

TEST(ConvertPacked, GivesTheSceneOfThePlainFile)
{
    const std::string text = boxText();
    ConvertRun plain;
    ASSERT_EQ(plain.convertText("box.stp", text), 0) << plain.log();
    for (const char* name : {"box.stpz", "box.STPZ", "box.stp.gz", "box.step.GZ"}) {
        ConvertRun run;
        ASSERT_EQ(run.convertText(name, packedfiles::gzipped(text)), 0) << name << run.log();
        EXPECT_EQ(measure(run.scene()).triangles, measure(plain.scene()).triangles) << name;
        EXPECT_THAT(run.log(), HasSubstr("format STEP, " + std::to_string(text.size()) + " bytes"));
    }
    for (const char* name : {"box.stpz", "box.stp.zip", "box.stp"}) {
        ConvertRun run;
        packedfiles::writeZip(run.folder().file(name), {{"box.stp", text}});
        ASSERT_EQ(run.convert(run.folder().file(name)), 0) << name << run.log();
        EXPECT_EQ(measure(run.scene()).triangles, 12u) << name;
    }
}

TEST(ConvertPacked, APlainFileUnderThePackedNameIsRead)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stpz", boxText()), 0) << run.log();
    EXPECT_EQ(measure(run.scene()).triangles, 12u);
}

TEST(ConvertPacked, PartsAreFoundPackedBesideTheAssembly)
{
    for (const char* name : {"box.stpZ", "box.stp.gz"}) {
        ConvertRun run;
        run.folder().write(name, packedfiles::gzipped(boxText()));
        ASSERT_EQ(run.convertText("top.stpz", packedfiles::gzipped(assemblyText())), 0) << name << run.log();
        EXPECT_EQ(measure(run.scene()).triangles, 12u) << name << run.log();
        EXPECT_EQ(measure(run.scene()).low.x, 10) << name;
    }
}

TEST(ConvertPacked, ADamagedRecordIsReadAsFarAsInThePlainFile)
{
    std::string text = boxText();
    text.replace(text.find("PLANE("), 6, "PLANE'(");
    ConvertRun plain, packed;
    const int code = plain.convertText("box.stp", text);
    EXPECT_EQ(packed.convertText("box.stpz", packedfiles::gzipped(text)), code) << packed.log();
}

TEST(ConvertPacked, WhatCannotBeUnpackedIsTold)
{
    const std::string gzip = packedfiles::gzipped(boxText());
    ConvertRun cut;
    EXPECT_EQ(cut.convertText("cut.stpz", gzip.substr(0, gzip.size() / 2)), 7);
    EXPECT_THAT(cut.log(), HasSubstr("Error: its gzip data are damaged or end too early"));
    ConvertRun two;
    packedfiles::writeZip(two.folder().file("two.stpz"), {{"a.stp", boxText()}, {"b.stp", boxText()}});
    EXPECT_EQ(two.convert(two.folder().file("two.stpz")), 7);
    EXPECT_THAT(two.log(), HasSubstr("Error: the ZIP file holds 2 STEP files"));
    ConvertRun other;
    EXPECT_EQ(other.convertText("other.stpz", packedfiles::gzipped("solid x\nendsolid x\n")), 7);
    EXPECT_THAT(other.log(), HasSubstr("the file is named as STEP"));
}
