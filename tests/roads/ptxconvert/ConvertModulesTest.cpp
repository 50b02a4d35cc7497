#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <filesystem>

using namespace ptxtest;
using testing::HasSubstr;
using testing::Not;

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
    ConvertRun run;
    const std::string moved = run.folder().file("bin") + "/ptxconvert";
    std::filesystem::create_directory(run.folder().file("bin"));
    std::filesystem::copy_file(ConvertRun::program().toStdString(), moved);
    run.folder().write("a.stp", boxText());
    run.folder().write("a.stl", Triangle);
    const auto convert = [&](const std::string& input) {
        return runWith(QString::fromStdString(moved),
                       {QString::fromStdString(run.folder().file(input)), QString::fromStdString(run.output())});
    };
    const Ended step = convert("a.stp");
    EXPECT_EQ(step.code, 6);
    EXPECT_THAT(step.errors, HasSubstr("ptxstep.so cannot be used: "));
    EXPECT_FALSE(std::filesystem::exists(run.output()));
    EXPECT_EQ(convert("a.stl").code, 0);
    EXPECT_TRUE(std::filesystem::exists(run.output()));
    const Ended document = runWith(QString::fromStdString(moved), {QStringLiteral("--read-document"),
                                                                   QString::fromStdString(run.folder().file("a.stp")),
                                                                   QString::fromStdString(run.output())});
    EXPECT_EQ(document.code, 6);
    EXPECT_THAT(contentOf(run.output() + ".log"), HasSubstr("ptxplmxml.so cannot be used: "));
    const Ended versions = runWith(QString::fromStdString(moved), {QStringLiteral("--version")});
    EXPECT_THAT(versions.output, HasSubstr("STEP: the reader "));
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
    EXPECT_TRUE(std::filesystem::exists(run.folder().file("text.notes")));
    EXPECT_EQ(read({QStringLiteral("facts=2")}).code, 2);
    EXPECT_THAT(contentOf(run.folder().file("text.log")), HasSubstr("\"facts=2\" is no option of reading"));
    for (const char* word : {"limit.time=x", "--sandbox", "unit=1"})
        EXPECT_EQ(read({QString::fromLatin1(word)}).code, 2) << word;
}
