#include "tests/ptx/readers/jt/ReadRun.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace jttest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace
{

/// Types of segments.
constexpr int BrepType = 2;
constexpr int PmiType = 3;

/// A file whose root leads to one partition for each of `files`, the k-th moved by k + 1 along x.
FileWriter assemblyOf(const std::vector<std::string>& files, const std::string& unit = "Millimeters")
{
    FileWriter writer;
    Ids partitions;
    for (std::size_t i = 0; i < files.size(); ++i)
        partitions.push_back(static_cast<Id>(10 + i));
    writer.partition(0, partitions, "assembly.jt");
    writer.property(0, "JT_PROP_MEASUREMENT_UNITS", unit);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const Id id = partitions[i];
        writer.partition(id, {}, files[i], {{id + 100}});
        writer.move(id + 100, static_cast<double>(i) + 1, 0, 0);
        writer.property(id, "JT_PROP_NAME", "place " + std::to_string(i));
    }
    return writer;
}

/// A file with one part, a triangle of this size.
FileWriter partOf(float size, const std::string& unit = "Millimeters")
{
    FileWriter writer;
    writer.partition(0, {1}, "part.jt");
    writer.property(0, "JT_PROP_MEASUREMENT_UNITS", unit);
    writer.part(1, {2});
    writer.triangle(2, size);
    return writer;
}

class JtPartFiles : public testing::Test, protected ReadRun
{
protected:
    ptx::model::Model readAssembly(const std::vector<std::string>& files) { return read(assemblyOf(files)); }

    const ptx::model::Product& place(const ptx::model::Model& model, std::size_t index) const
    {
        return model.products.at(model.roots.at(index).product);
    }

    std::string missing(const std::string& file, const std::string& reason) const
    {
        return "ptx::missing=" + reason + "\n" + folder().file(file);
    }
};

} // namespace

TEST_F(JtPartFiles, PartsOfOtherFilesHangAtTheirPlacesAndAreReadOnce)
{
    write(partOf(5), "bolt.jt");
    std::filesystem::create_directory(folder().file("Sub"));
    write(partOf(6), "Sub/nut.jt");
    const ptx::model::Model model = readAssembly({"bolt.jt", "sub\\NUT.jt", "./bolt.jt"});
    ASSERT_EQ(model.roots.size(), 3u);
    EXPECT_EQ(model.bodies.size(), 2u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(model.roots[i].placement[12], static_cast<float>(i + 1));
        EXPECT_EQ(place(model, i).name, "place " + std::to_string(i));
        ASSERT_EQ(place(model, i).children.size(), 1u);
    }
    EXPECT_EQ(legOf(model, place(model, 0).children[0].product), 5);
    EXPECT_EQ(legOf(model, place(model, 1).children[0].product), 6);
    EXPECT_EQ(place(model, 2).children[0].product, place(model, 0).children[0].product);
    EXPECT_EQ(model.products[place(model, 1).children[0].product].name, "nut");
    EXPECT_FALSE(hasWarnings());
}

TEST_F(JtPartFiles, MissingAndDamagedFilesAreLeftOutWithTheirReason)
{
    write(partOf(5), "bolt.jt");
    folder().write("text.jt", "no JT file");
    folder().write("short.jt", partOf(5).file().substr(0, 100));
    const ptx::model::Model model = readAssembly({"gone.jt", "bolt.jt", "text.jt", "short.jt"});
    EXPECT_THAT(place(model, 0).tags, ElementsAre(missing("gone.jt", "there is no such file")));
    EXPECT_THAT(place(model, 1).tags, IsEmpty());
    EXPECT_THAT(place(model, 2).tags, ElementsAre(StartsWith("ptx::missing=the JT file is damaged at 0: ")));
    EXPECT_THAT(place(model, 3).tags, ElementsAre(StartsWith("ptx::missing=the JT file is damaged at ")));
    EXPECT_THAT(log(), HasSubstr("of \"place 0\" is left out: there is no such file"));
}

TEST_F(JtPartFiles, PicturesOfMaterialsAreCounted)
{
    FileWriter bolt = partOf(5);
    bolt.texture(90);
    bolt.texture(91);
    const ptx::model::Model model = read(bolt);
    EXPECT_THAT(place(model, 0).tags,
                ElementsAre("ptx::left-out=2 pictures of materials\n" + folder().file("input.jt")));
    EXPECT_THAT(log(), HasSubstr("2 pictures of materials are not read"));
}

TEST_F(JtPartFiles, EachFileTellsHowMuchPmiOfItIsLeftOut)
{
    FileWriter bolt = partOf(5);
    bolt.emptySegment(PmiType);
    bolt.emptySegment(PmiType);
    bolt.emptySegment(BrepType);
    write(bolt, "bolt.jt");
    write(partOf(6), "nut.jt");
    FileWriter assembly = assemblyOf({"bolt.jt", "nut.jt"});
    assembly.emptySegment(PmiType);
    const ptx::model::Model model = read(assembly);
    EXPECT_THAT(place(model, 0).tags, ElementsAre("ptx::left-out=1 segments of PMI\n" + folder().file("input.jt")));
    EXPECT_THAT(model.products[place(model, 0).children[0].product].tags,
                ElementsAre("ptx::left-out=2 segments of PMI\n" + folder().file("bolt.jt")));
    EXPECT_THAT(model.products[place(model, 1).children[0].product].tags, IsEmpty());
    EXPECT_THAT(log(), HasSubstr("2 segments of PMI are not read"));
}

TEST_F(JtPartFiles, AFileThatNamesItselfOrLeadsBackIsLeftOutThere)
{
    write(assemblyOf({"right.jt", "bolt.jt"}), "left.jt");
    write(assemblyOf({"left.jt", "input.jt"}), "right.jt");
    write(partOf(5), "bolt.jt");
    const ptx::model::Model model = readAssembly({"input.jt", "left.jt"});
    const std::string circle = "it leads round in a circle";
    EXPECT_THAT(place(model, 0).tags, ElementsAre(missing("input.jt", circle)));
    const auto& left = place(model, 1).children;
    ASSERT_EQ(left.size(), 2u);
    const auto& right = model.products[left[0].product].children;
    ASSERT_EQ(right.size(), 2u);
    EXPECT_THAT(model.products[right[0].product].tags, ElementsAre(missing("left.jt", circle)));
    EXPECT_THAT(model.products[right[1].product].tags, ElementsAre(missing("input.jt", circle)));
    EXPECT_EQ(legOf(model, model.products[left[1].product].children.at(0).product), 5);
}

TEST_F(JtPartFiles, FilesMayNest64Deep)
{
    for (int i = 1; i < 70; ++i)
        write(assemblyOf({std::to_string(i + 1) + ".jt", "bolt.jt"}), std::to_string(i) + ".jt");
    write(partOf(5), "bolt.jt");
    const ptx::model::Model model = readAssembly({"1.jt"});
    std::size_t files = 1;
    const ptx::model::Product* product = &place(model, 0);
    for (; !product->children.empty(); product = &model.products[product->children[0].product])
        ++files;
    EXPECT_EQ(files, 64u);
    EXPECT_THAT(product->tags, ElementsAre(missing("64.jt", "assemblies in files are nested too deeply")));
}

TEST_F(JtPartFiles, APartFileIsReadInTheUnitOfItsAssembly)
{
    write(partOf(5, "Meters"), "bolt.jt");
    const ptx::model::Model model = read(assemblyOf({"bolt.jt"}, "Inches"));
    EXPECT_FLOAT_EQ(model.roots.at(0).placement[12], 25.4f);
    EXPECT_FLOAT_EQ(legOf(model, place(model, 0).children.at(0).product), 127);
    EXPECT_THAT(log(), HasSubstr("bolt.jt is in Meters, unlike the assembly; its placements have to make up"));
}

TEST_F(JtPartFiles, ReferencesAreKeptOnDemandWhetherTheFilesExistOrNot)
{
    write(partOf(5), "bolt.jt");
    const ptx::core::Outcome<ptx::model::Model> read = readFile(write(assemblyOf({"BOLT.jt", "gone.jt"})), {}, true);
    ASSERT_TRUE(read) << read.failure().message;
    const ptx::model::Model& model = read.value();
    ASSERT_EQ(model.references.size(), 2u);
    EXPECT_EQ(model.references[0].file, folder().file("bolt.jt"));
    EXPECT_EQ(model.references[0].written, "BOLT.jt");
    EXPECT_EQ(model.references[0].product, model.roots.at(0).product);
    EXPECT_EQ(model.references[1].file, folder().file("gone.jt"));
    EXPECT_THAT(place(model, 0).children, IsEmpty());
    EXPECT_THAT(log(), HasSubstr("gone.jt of \"place 1\": there is no such file"));
}

TEST_F(JtPartFiles, AReferenceThatLeadsBackIsKeptEmpty)
{
    write(assemblyOf({"input.jt"}), "left.jt");
    const ptx::core::Outcome<ptx::model::Model> read = readFile(write(assemblyOf({"left.jt", "input.jt"})), {}, true);
    ASSERT_TRUE(read) << read.failure().message;
    ASSERT_EQ(read.value().references.size(), 2u);
    EXPECT_EQ(read.value().references[0].file, "");
    EXPECT_EQ(read.value().references[1].file, "");
    EXPECT_THAT(place(read.value(), 0).tags, ElementsAre(missing("left.jt", "it leads back to this file")));
}

TEST_F(JtPartFiles, AFileThatNamesNoOtherEndsWithItsCode)
{
    const ptx::core::Outcome<ptx::model::Model> read = readFile(write(partOf(5)), {}, true);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.failure().code, ptx::core::ExitCode::NoExternalParts);
    EXPECT_FALSE(ptx::jt::format().refersToParts(folder().file("input.jt")));
    write(assemblyOf({"input.jt"}), "other.jt");
    EXPECT_TRUE(ptx::jt::format().refersToParts(folder().file("other.jt")));
}
