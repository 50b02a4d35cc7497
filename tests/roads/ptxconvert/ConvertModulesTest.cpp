#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <filesystem>
#include <utility>

using namespace ptxtest;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

namespace
{

const char Triangle[] = "solid s\nfacet normal 0 0 1\nouter loop\nvertex 1 2 3\nvertex 5 2 3\nvertex 1 6 3\n"
                        "endloop\nendfacet\nendsolid s\n";

std::string boxText()
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {}, {1, 2, 3});
    return step.text();
}

struct Ended {
    int code = -1;
    std::string output;
    std::string errors;
};

Ended runWith(const QString& program, const QStringList& arguments, const QString& variable = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!variable.isEmpty())
        environment.insert(variable, QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(100000));
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

/// A copy of the program, with readers beside it as the test puts them there.
class MovedProgram
{
public:
    MovedProgram() : m_readers((fs::path(m_folder.file("bin")) / READERS_FROM_PROGRAM).lexically_normal())
    {
        fs::create_directory(m_folder.file("bin"));
        fs::create_directories(m_readers);
        fs::copy_file(ConvertRun::program().toStdString(), program());
        m_folder.write("a.stp", boxText());
        m_folder.write("a.stl", Triangle);
    }

    void putReader(const std::string& name, const fs::path& library) const
    {
        fs::copy_file(library, m_readers / name, fs::copy_options::overwrite_existing);
    }
    /// The first `share` of the real one.
    void putPartOfReader(const std::string& name, double share) const
    {
        putReader(name, fs::path(READERS) / name);
        const fs::path copy = m_readers / name;
        fs::resize_file(copy, static_cast<std::uintmax_t>(share * static_cast<double>(fs::file_size(copy))));
    }
    std::string pathOfReader(const std::string& name) const { return (m_readers / name).string(); }

    Ended run(const QStringList& arguments) const { return runWith(QString::fromStdString(program()), arguments); }
    Ended convert(const std::string& input) const { return run({file(input), file("a.osb")}); }
    Ended readForHost(const char* option) const
    {
        return run({QString::fromLatin1(option), file("a.stl"), file("a.osb")});
    }

    std::string log() const { return contentOf(m_folder.file("a.osb.log")); }
    bool hasOutput() const { return fs::exists(m_folder.file("a.osb")); }

private:
    std::string program() const { return m_folder.file("bin/ptxconvert"); }
    QString file(const std::string& name) const { return QString::fromStdString(m_folder.file(name)); }

    TempFolder m_folder;
    fs::path m_readers;
};

} // namespace

TEST(ConvertModules, TheProgramItselfIsLinkedToNoneOfTheCadKernel)
{
    const std::string libraries = runWith(ConvertRun::program(), {}, QStringLiteral("LD_TRACE_LOADED_OBJECTS")).output;
    EXPECT_THAT(libraries, HasSubstr("libQt5Core"));
    EXPECT_THAT(libraries, Not(HasSubstr("libTK")));
}

TEST(ConvertModules, EachReaderFindsAllThatItNeedsInTheProgram)
{
    const Ended versions = runWith(ConvertRun::program(), {QStringLiteral("--version")}, QStringLiteral("LD_BIND_NOW"));
    EXPECT_EQ(versions.code, 0) << versions.errors;
    for (const char* format : {"STEP", "IGES", "BREP"})
        EXPECT_THAT(versions.output, HasSubstr(std::string(format) + ": Open CASCADE 7."));
}

TEST(ConvertModules, OnlyFilesOfItsFormatsLoadTheKernel)
{
    ConvertRun stl;
    ASSERT_EQ(stl.convertText("a.stl", Triangle), 0);
    EXPECT_THAT(stl.log(), Not(HasSubstr("CAD kernel")));
    ConvertRun step;
    ASSERT_EQ(step.convertText("a.stp", boxText()), 0);
    EXPECT_THAT(step.log(), HasSubstr("CAD kernel 7."));
}

TEST(ConvertModules, AProgramWithoutItsReadersNamesTheMissingOneAndReadsTheRest)
{
    const MovedProgram moved;
    const Ended step = moved.convert("a.stp");
    EXPECT_EQ(step.code, 6);
    EXPECT_THAT(step.errors, HasSubstr(moved.pathOfReader("ptxstep.so") + " cannot be used: "));
    EXPECT_FALSE(moved.hasOutput());
    EXPECT_EQ(moved.readForHost("--read-document").code, 6);
    EXPECT_THAT(moved.log(), HasSubstr("ptxplmxml.so cannot be used: "));
    EXPECT_EQ(moved.readForHost("--read-mesh").code, 6);
    EXPECT_THAT(moved.log(), HasSubstr("ptxmesh.so cannot be used: "));
    EXPECT_THAT(moved.run({QStringLiteral("--version")}).output, HasSubstr("STEP: the reader "));
    EXPECT_EQ(moved.convert("a.stl").code, 0);
    EXPECT_TRUE(moved.hasOutput());
}

TEST(ConvertModules, AReaderOfAnotherVersionIsNotCalled)
{
    const MovedProgram moved;
    moved.putReader("ptxstep.so", OTHER_BUILD);
    const Ended step = moved.convert("a.stp");
    EXPECT_EQ(step.code, 6);
    EXPECT_THAT(step.errors,
                HasSubstr(moved.pathOfReader("ptxstep.so") +
                          " cannot be used: it belongs to version 0.0.9, the program is version " ZN_VERSION));
    EXPECT_FALSE(moved.hasOutput());
    EXPECT_EQ(moved.convert("a.stl").code, 0);
}

TEST(ConvertModules, AReaderOfAnotherBuildIsNotCalled)
{
    const MovedProgram moved;
    moved.putReader("ptxmesh.so", OTHER_BUILD);
    moved.putReader("ptxplmxml.so", OTHER_BUILD);
    for (const auto& [option, reader] : {std::pair("--read-mesh", "ptxmesh.so"), {"--read-document", "ptxplmxml.so"}}) {
        EXPECT_EQ(moved.readForHost(option).code, 6) << option;
        EXPECT_THAT(moved.log(), HasSubstr(moved.pathOfReader(reader) +
                                           " cannot be used: it comes from another build than the program"));
        EXPECT_FALSE(moved.hasOutput());
    }
}

TEST(ConvertModules, AFileThatIsNoReaderIsNamed)
{
    const MovedProgram moved;
    const TempFolder folder;
    for (const char* content :
         {"", "no library, but a text that is longer than the beginning of one would be, by far\n"}) {
        moved.putReader("ptxstep.so", folder.write("text", content));
        const Ended step = moved.convert("a.stp");
        EXPECT_EQ(step.code, 6) << content;
        EXPECT_THAT(step.errors, HasSubstr(moved.pathOfReader("ptxstep.so") + " cannot be used: "));
        EXPECT_THAT(step.errors, Not(HasSubstr("cut short"))) << "it is nothing that could be whole";
    }
    moved.putReader("ptxiges.so", OTHER_BUILD);
    EXPECT_THAT(moved.run({QStringLiteral("--version")}).output,
                HasSubstr("IGES: the reader " + moved.pathOfReader("ptxiges.so") + " cannot be used: "))
        << "it is a library, but of other readers";
}

TEST(ConvertModules, AReaderThatIsCutShortIsNamedAndNotLoaded)
{
    const MovedProgram moved;
    for (const double share : {0.01, 0.5, 0.999}) {
        moved.putPartOfReader("ptxstep.so", share);
        const Ended step = moved.convert("a.stp");
        EXPECT_EQ(step.code, 6) << share;
        EXPECT_THAT(step.errors,
                    HasSubstr(moved.pathOfReader("ptxstep.so") + " cannot be used: the file is cut short"));
    }
    moved.putPartOfReader("ptxstep.so", 1);
    EXPECT_EQ(moved.convert("a.stp").code, 0);
}

TEST(ConvertModules, AReadForAHostTakesItsOwnWordsAlone)
{
    ConvertRun run;
    run.folder().write("a.plmxml", "<PLMXML><Instance partRef='#p'/><Part id='p'/></PLMXML>");
    const auto read = [&run](const QStringList& words) {
        return runWith(ConvertRun::program(), QStringList{QStringLiteral("--read-document"),
                                                          QString::fromStdString(run.folder().file("a.plmxml")),
                                                          QString::fromStdString(run.folder().file("text"))} +
                                                  words);
    };
    EXPECT_EQ(read({QStringLiteral("facts=1"), QStringLiteral("limit.time=100")}).code, 0);
    EXPECT_THAT(contentOf(run.folder().file("text")), HasSubstr("<InstanceGraph"));
    EXPECT_TRUE(fs::exists(run.folder().file("text.notes")));
    EXPECT_EQ(read({QStringLiteral("facts=2")}).code, 2);
    EXPECT_THAT(contentOf(run.folder().file("text.log")), HasSubstr("\"facts=2\" is no option of reading"));
    for (const char* word : {"limit.time=x", "--sandbox", "unit=1"})
        EXPECT_EQ(read({QString::fromLatin1(word)}).code, 2) << word;
}
