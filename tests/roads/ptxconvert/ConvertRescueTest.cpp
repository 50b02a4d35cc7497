// Conversions that the CAD kernel crashes go on without what it crashed on.

#include "files/scenefile/ConvertedTree.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/IgesText.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

using namespace ptxtest;
using osg::scenefile::converted::MissingPart;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace
{

constexpr int Crashed = 139; // by SIGSEGV

/// Makes the CAD kernel crash as KernelFaults.cpp tells.
class ConvertRescue : public testing::Test
{
protected:
    /// The loader takes a blank in the path for the end of it.
    void SetUp() override
    {
        ASSERT_FALSE(m_plain.path().contains(QLatin1Char(' ')));
        ASSERT_TRUE(QFile::link(QString::fromUtf8(KERNEL_FAULTS), faults()));
    }

    ~ConvertRescue() override
    {
        qunsetenv("LD_PRELOAD");
        qunsetenv("PTX_KERNEL_FAULTS");
    }

    void breakKernel(const char* words)
    {
        qputenv("LD_PRELOAD", QFile::encodeName(faults()));
        qputenv("PTX_KERNEL_FAULTS", words);
    }

    int convert(const std::string& name, const std::string& text, const std::vector<std::string>& options = {})
    {
        const int code = run.convertText(name, text, options);
        EXPECT_FALSE(QFile::exists(QString::fromStdString(run.output() + ".parts")));
        return code;
    }

    std::size_t attempts() const
    {
        std::size_t count = 1;
        const std::string log = run.log();
        for (std::size_t at = log.find("begins anew"); at != log.npos; at = log.find("begins anew", at + 1))
            ++count;
        return count;
    }

    std::vector<std::string> missingAt(const std::string& node)
    {
        std::vector<std::string> reasons;
        for (const std::string& tag : osg::tagsOf(nodeNamed(run.scene(), node)))
            if (const auto part = osg::scenefile::converted::missingPart(tag)) {
                EXPECT_EQ(part->file, run.folder().file("in.stp"));
                reasons.push_back(part->reason);
            }
        return reasons;
    }

    ConvertRun run;

private:
    QString faults() const { return m_plain.filePath(QStringLiteral("faults.so")); }

    QTemporaryDir m_plain;
};

/// The products "1", "2" and so on stand in "all"; each has as many boxes as its name says, with six faces each.
std::string boxesText(int products)
{
    StepText step;
    const StepProduct all = step.product("all");
    for (int number = 1; number <= products; ++number) {
        StepProduct product = step.product(std::to_string(number));
        for (int box = 0; box < number; ++box)
            step.box(product, {box * 2.0, 0, 0}, {box * 2.0 + 1, 1, 1});
        step.place(all, product, "place " + std::to_string(number), {0, number * 10.0, 0});
    }
    return step.text();
}

std::string withFaceNamed(const std::string& name, std::string text)
{
    const std::string face = "ADVANCED_FACE(''";
    const std::size_t at = text.find(face);
    return text.replace(at, face.size(), "ADVANCED_FACE('" + name + "'");
}

std::size_t trianglesAt(const osg::NodePtr& root, const std::string& node)
{
    return measure(nodeNamed(root, node)).triangles;
}

} // namespace

TEST_F(ConvertRescue, APartThatCrashesTheMeshingIsMissing)
{
    breakKernel("faces=12");
    ASSERT_EQ(convert("in.stp", boxesText(3)), 0) << run.log();
    EXPECT_EQ(attempts(), 2u);
    EXPECT_THAT(missingAt("place 2"), ElementsAre("part \"2\": the CAD kernel crashes on it"));
    EXPECT_THAT(missingAt("place 1"), IsEmpty());
    EXPECT_THAT(missingAt("place 3"), IsEmpty());
    EXPECT_THAT(geometries(run.scene()), SizeIs(2));
    EXPECT_EQ(run.standardError(), "");
}

TEST_F(ConvertRescue, LogAndProgressGoOn)
{
    breakKernel("faces=12");
    ASSERT_EQ(convert("in.stp", boxesText(3)), 0);
    const std::string log = run.log();
    EXPECT_THAT(log, HasSubstr("input  "));
    EXPECT_THAT(log, HasSubstr("\nthe conversion crashed (SIGSEGV, signal 11) in stage Tessellate; it begins anew "
                               "without what was at work\n"));
    EXPECT_THAT(log, HasSubstr("attempt 2\n"));
    EXPECT_THAT(log, Not(HasSubstr("Error")));
    EXPECT_LT(log.find("input  "), log.find("begins anew"));
    EXPECT_THAT(run.progress(), HasSubstr("Finished"));
}

TEST_F(ConvertRescue, ThreePartsOneAfterTheOtherAreMissing)
{
    breakKernel("faces=12 faces=18 faces=24");
    ASSERT_EQ(convert("in.stp", boxesText(5), {"--set", "threads=1"}), 0) << run.log();
    EXPECT_EQ(attempts(), 4u);
    for (const char* lost : {"place 2", "place 3", "place 4"})
        EXPECT_THAT(missingAt(lost), SizeIs(1)) << lost;
    EXPECT_THAT(geometries(run.scene()), SizeIs(2));
}

// The first of them may crash while others are still being translated, when it has no number yet.
TEST_F(ConvertRescue, PartsThatCrashTheHealingAreMissing)
{
    breakKernel("healed=12 healed=18 healed=24");
    for (const char* threads : {"threads=1", "threads=2"}) {
        ASSERT_EQ(convert("in.stp", boxesText(5), {"--set", threads}), 0) << run.log();
        for (const char* lost : {"place 2", "place 3", "place 4"})
            EXPECT_THAT(missingAt(lost), SizeIs(1)) << lost;
        EXPECT_THAT(geometries(run.scene()), SizeIs(2));
    }
}

TEST_F(ConvertRescue, TheFourthCrashEndsTheConversion)
{
    breakKernel("faces=12 faces=18 faces=24 faces=30");
    run.folder().write("out.osb", "of before");
    EXPECT_EQ(convert("in.stp", boxesText(5), {"--set", "threads=1"}), Crashed);
    EXPECT_EQ(attempts(), 4u);
    EXPECT_THAT(run.log(), HasSubstr("Error: the conversion crashed (SIGSEGV, signal 11) in stage Tessellate"));
    EXPECT_EQ(contentOf(run.output()), "of before");
}

TEST_F(ConvertRescue, ACopyOfOneConverterGoesOnToo)
{
    breakKernel("faces=12");
    const QString socket = QString::fromStdString(run.folder().file("server"));
    QProcess server;
    server.start(ConvertRun::program(), {QStringLiteral("--serve"), socket});
    for (int i = 0; i < 3000 && !QFile::exists(socket); ++i)
        server.waitForFinished(10);
    const QString input = QString::fromStdString(run.folder().write("in.stp", boxesText(3)));
    const QString launcher = QStringLiteral(PTX_LAUNCH);
    QProcess copy;
    copy.start(launcher, {socket, ConvertRun::program(), input, QString::fromStdString(run.output())});
    ASSERT_TRUE(copy.waitForFinished(100000));
    EXPECT_EQ(copy.exitCode(), 0) << run.log();
    EXPECT_EQ(server.state(), QProcess::Running);
    server.kill();
    server.waitForFinished();
    EXPECT_EQ(attempts(), 2u);
    EXPECT_THAT(missingAt("place 2"), SizeIs(1));
}

/// One of several conversions of a run is a copy that becomes the program anew, for its own file alone.
TEST_F(ConvertRescue, OneOfSeveralInputsGoesOnToo)
{
    breakKernel("faces=12");
    const std::string sound = run.folder().write("sound.stp", boxesText(1));
    const std::string input = run.folder().write("in.stp", boxesText(3));
    EXPECT_EQ(run.run({QStringLiteral("--set"), QStringLiteral("tessellation.angle=15"), QStringLiteral("-o"),
                       QString::fromStdString(run.folder().file("several")), QString::fromStdString(sound),
                       QString::fromStdString(input)}),
              0)
        << run.standardError();
    EXPECT_THAT(run.standardOutput(), HasSubstr("2 of 2 files converted\n"));
    const std::string log = contentOf(run.folder().file("several/in.osb.log"));
    EXPECT_THAT(log, HasSubstr("attempt 2\n"));
    EXPECT_THAT(log, HasSubstr("set tessellation.angle=15"));
    EXPECT_THAT(contentOf(run.folder().file("several/sound.osb.log")), Not(HasSubstr("begins anew")));
    ASSERT_EQ(run.convert(input, {"--set", "tessellation.angle=15"}), 0);
    EXPECT_EQ(contentOf(run.output()), contentOf(run.folder().file("several/in.osb")));
}

TEST_F(ConvertRescue, WithoutAnyPartLeftTheFileIsDamaged)
{
    breakKernel("faces=6");
    EXPECT_EQ(convert("in.stp", boxesText(1)), 7);
    EXPECT_THAT(run.standardError(), HasSubstr("the CAD kernel crashes on every part of the file"));
}

TEST_F(ConvertRescue, AFaceThatCrashesTheTranslationIsMissingFromItsPart)
{
    breakKernel("face=bad");
    ASSERT_EQ(convert("in.stp", withFaceNamed("bad", boxesText(2))), 0) << run.log();
    EXPECT_EQ(attempts(), 2u);
    ASSERT_THAT(missingAt("place 1"), SizeIs(1));
    EXPECT_THAT(missingAt("place 1")[0], testing::MatchesRegex("#[0-9]+ ADVANCED_FACE in line [0-9]+: the CAD kernel "
                                                               "crashes on it"));
    EXPECT_EQ(trianglesAt(run.scene(), "place 1"), 10u);
    EXPECT_EQ(trianglesAt(run.scene(), "place 2"), 24u);
}

TEST_F(ConvertRescue, TranslationAndMeshingMayCrash)
{
    breakKernel("face=bad faces=12");
    ASSERT_EQ(convert("in.stp", withFaceNamed("bad", boxesText(2))), 0) << run.log();
    EXPECT_EQ(attempts(), 3u);
    EXPECT_THAT(missingAt("place 1"), SizeIs(1));
    EXPECT_THAT(missingAt("place 2"), SizeIs(1));
}

TEST_F(ConvertRescue, BeforeAnyPartIsKnownACrashStaysOne)
{
    breakKernel("reading");
    EXPECT_EQ(convert("in.stp", boxesText(2)), Crashed);
    EXPECT_EQ(attempts(), 1u);
    EXPECT_THAT(run.standardError(), HasSubstr("crashed (SIGSEGV, signal 11) in stage ReadAndProcess"));
}

TEST_F(ConvertRescue, IgesEntitiesThatCrashAreMissing)
{
    IgesText iges;
    iges.patch({0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {10, 10, 0}, 2);
    iges.patch({20, 0, 0}, {30, 0, 0}, {20, 10, 0}, {30, 10, 0}, 3);
    breakKernel("color=2");
    ASSERT_EQ(convert("in.igs", iges.text()), 0) << run.log();
    EXPECT_EQ(attempts(), 2u);
    EXPECT_THAT(geometries(run.scene()), SizeIs(1));
    EXPECT_THAT(run.log(), HasSubstr("Warning: left out: D1 of type 128: the CAD kernel crashes on it"));
}
