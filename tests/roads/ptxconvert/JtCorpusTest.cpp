#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileReference.h"
#include "ptx/readers/FileContent.h"
#include "ptx/readers/jt/JtFile.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/ExpectedFigures.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <regex>

using namespace jttest;
using namespace ptxtest;
using testing::HasSubstr;
using testing::Not;

namespace
{

constexpr std::size_t FilesOfCorpus = 22;

/// Parts of the files that have a place but no mesh.
std::size_t emptyParts(const std::string& file)
{
    return file == "CoffeeMaker.jt" ? 2 : 0;
}

#define NEEDS_CORPUS()                                                                                                 \
    if (expectedFigures().empty())                                                                                     \
    GTEST_SKIP() << "ZN_CORPUS names no folder with real JT files"

std::vector<float> boxOf(const Measures& m)
{
    return {m.low.x, m.low.y, m.low.z, m.high.x, m.high.y, m.high.z};
}

/// Each side of the box to a hundred-thousandth of its size, which is what the figures are rounded to.
void expectBox(const std::vector<float>& box, const Figures& figures)
{
    ASSERT_EQ(figures.box.size(), 6u);
    double size = 0;
    for (std::size_t i = 0; i < 3; ++i)
        size = std::max<double>(size, figures.box[i + 3] - figures.box[i]);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(box[i], figures.box[i] * figures.millimetres, size * figures.millimetres * 1e-5 + 1e-5) << i;
}

ptx::jt::JtFile opened(const std::string& path)
{
    ptx::core::Outcome<std::string> content = ptx::readers::readContent(path);
    EXPECT_TRUE(content);
    ptx::core::Outcome<ptx::jt::JtFile> file = ptx::jt::openJtFile(path, std::move(content.value()));
    EXPECT_TRUE(file) << file.failure().message;
    return std::move(file.value());
}

std::size_t countKind(const ptx::jt::graph::SceneGraph& graph, ptx::jt::graph::ElementKind kind)
{
    return static_cast<std::size_t>(std::count_if(graph.nodes.begin(), graph.nodes.end(),
                                                  [&](const auto& node) { return node.second.kind == kind; }));
}

/// The number of places at which a part stands in the scene.
std::string occurrencesIn(const std::string& log)
{
    static const std::regex pattern(R"((\d+) occurrences of parts)");
    std::smatch match;
    EXPECT_TRUE(std::regex_search(log, match, pattern)) << log;
    return match[1];
}

} // namespace

TEST(JtCorpus, EveryFileHasItsVersionNodesInstancesAndReferences)
{
    NEEDS_CORPUS();
    ASSERT_EQ(expectedFigures().size(), FilesOfCorpus);
    for (const Figures& figures : expectedFigures()) {
        SCOPED_TRACE(figures.file);
        const ptx::jt::JtFile file = opened(corpusFolder() + figures.file);
        EXPECT_EQ(std::to_string(file.framing.major) + "." + std::to_string(file.framing.minor), figures.version);
        EXPECT_EQ(file.graph.nodes.size(), figures.nodes);
        EXPECT_EQ(countKind(file.graph, ptx::jt::graph::ElementKind::Instance), figures.instanceNodes);
        EXPECT_THAT(file.graph.warnings, testing::IsEmpty());
        std::vector<std::string> names;
        for (const auto& [id, node] : file.graph.nodes)
            if (ptx::jt::isExternal(file.graph, id, node))
                names.push_back(node.file);
        EXPECT_THAT(names, testing::UnorderedElementsAreArray(figures.externalFiles));
    }
}

TEST(JtCorpus, EveryFileConvertsToItsTrianglesAndItsBox)
{
    NEEDS_CORPUS();
    for (const Figures& figures : expectedFigures()) {
        SCOPED_TRACE(figures.file);
        ConvertRun run;
        ASSERT_EQ(run.convert(corpusFolder() + figures.file), 0) << run.log();
        EXPECT_THAT(run.log(), Not(HasSubstr("Warning"))) << run.log();
        const Measures measures = measure(run.scene());
        EXPECT_EQ(measures.triangles, figures.triangles);
        expectBox(boxOf(measures), figures);
        EXPECT_THAT(run.log(), HasSubstr(", " + std::to_string(figures.partOccurrences - emptyParts(figures.file)) +
                                         " occurrences of parts"));
    }
}

TEST(JtCorpus, OneDesignInSeveralVersionsGivesTheSameScene)
{
    NEEDS_CORPUS();
    const std::vector<std::vector<std::string>> designs = {
        {"butterflyvalve_v8.0.jt", "butterflyvalve_v9.5.jt", "butterflyvalve_v10.0.jt"},
        {"example_block_jt8.1.jt", "example_block_jt9.5.jt", "example_block_jt10.3.jt"}};
    for (const std::vector<std::string>& files : designs) {
        ConvertRun first;
        ASSERT_EQ(first.convert(corpusFolder() + files[0]), 0) << first.log();
        const Measures expected = measure(first.scene());
        for (const std::string& file : files) {
            SCOPED_TRACE(file);
            ConvertRun run;
            ASSERT_EQ(run.convert(corpusFolder() + file), 0) << run.log();
            const Measures measures = measure(run.scene());
            EXPECT_EQ(measures.triangles, expected.triangles);
            EXPECT_EQ(geometries(run.scene()).size(), geometries(first.scene()).size());
            EXPECT_EQ(occurrencesIn(run.log()), occurrencesIn(first.log()));
            EXPECT_NEAR(measures.volume, expected.volume, expected.volume * 1e-3);
            EXPECT_THAT(boxOf(measures), testing::Pointwise(testing::FloatNear(1e-2f), boxOf(expected)));
        }
    }
}

TEST(JtCorpus, NodesBearNamesLayersAndAttributesOfTheFile)
{
    NEEDS_CORPUS();
    ConvertRun run;
    ASSERT_EQ(run.convert(corpusFolder() + "conrod.jt"), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "conrod"));
    EXPECT_TRUE(nodeNamed(run.scene(), "lever_SOLIDS"));
    EXPECT_THAT(osg::tagsOf(run.scene()), testing::Contains("ptx::unit=Millimeters"));
    EXPECT_THAT(osg::tagsOf(run.scene()), testing::Contains("ptx::format=JT"));
}

TEST(JtCorpus, ExternalPartsStayReferencesWhateverTheCaseOfTheirNames)
{
    NEEDS_CORPUS();
    ConvertRun run;
    ASSERT_EQ(run.convert(corpusFolder() + "fishing_reel.jt", {"--external-parts"}), 0) << run.log();
    EXPECT_THAT(run.log(), Not(HasSubstr("no such file")));
    std::vector<std::string> files;
    for (const std::string name : {"Part1", "Part4", "spool", "handle_2"})
        for (osg::NodePtr node : nodesNamed(run.scene(), name)) {
            // One without a transform of its own hangs below a node with its name.
            if (node->getNChildren() == 1)
                node = node->getChild(0);
            if (const auto reference = osg::fcCast<osg::ExtReference>(node->getCore()))
                files.push_back(std::filesystem::path(reference->getSourceFile()->getPath()).filename().string());
        }
    EXPECT_THAT(files, testing::UnorderedElementsAre("part1.jt", "part4.jt", "spool.jt", "handle_2.jt"));
}

TEST(JtCorpus, FileWithoutExternalPartsEndsWithFive)
{
    NEEDS_CORPUS();
    ConvertRun run;
    EXPECT_EQ(run.convert(corpusFolder() + "conrod.jt", {"--external-parts"}), 5);
}

TEST(JtCorpus, CoarserLevelOfDetailIsReadOnRequest)
{
    NEEDS_CORPUS();
    ConvertRun fine;
    ConvertRun coarse;
    ASSERT_EQ(fine.convert(corpusFolder() + "opening_protection_plate1_jt8.0.jt"), 0) << fine.log();
    ASSERT_EQ(coarse.convert(corpusFolder() + "opening_protection_plate1_jt8.0.jt", {"--set", "mesh.level=3"}), 0);
    EXPECT_EQ(measure(fine.scene()).triangles, 800u);
    EXPECT_LT(measure(coarse.scene()).triangles, 800u);
    EXPECT_GT(measure(coarse.scene()).triangles, 0u);
}

TEST(JtCorpus, ShapeWithAWrongCheckSumIsLeftOutAndToldWithItsPlace)
{
    NEEDS_CORPUS();
    std::string content = ptx::readers::readContent(corpusFolder() + "butterflyvalve_v9.5.jt").value();
    content.at(70530) = static_cast<char>(content.at(70530) ^ 0x10);
    ConvertRun run;
    ASSERT_EQ(run.convertText("damaged.jt", content), 0) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("Warning: a shape of \"valve_body_SOLID_SOLIDS\" is left out: shape 69: the check "
                                     "sum of the positions is wrong (at 99742)"));
    const osg::NodePtr body = nodeNamed(run.scene(), "valve_body_SOLID_SOLIDS");
    ASSERT_TRUE(body);
    EXPECT_EQ(measure(body).triangles, 0u);
    EXPECT_THAT(osg::tagsOf(body), testing::Contains(testing::StartsWith(osg::scenefile::converted::MissingPrefix)));
    EXPECT_GT(measure(run.scene()).triangles, 0u);
}

TEST(JtCorpus, SceneIsTheSameOnAnyNumberOfThreads)
{
    NEEDS_CORPUS();
    for (const std::string file : {"CoffeeMaker.jt", "opening_protection_plate1_jt8.0.jt"}) {
        ConvertRun alone;
        ConvertRun together;
        ASSERT_EQ(alone.convert(corpusFolder() + file, {"--set", "threads=1"}), 0) << alone.log();
        ASSERT_EQ(together.convert(corpusFolder() + file, {"--set", "threads=5"}), 0) << together.log();
        EXPECT_TRUE(ptx::readers::readContent(alone.output()).value() ==
                    ptx::readers::readContent(together.output()).value())
            << file;
    }
}
