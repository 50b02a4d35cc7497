// The real program with a reader that wants out.

#include "ptx/box/Box.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <unistd.h>

#include <filesystem>

using namespace ptxtest;
using testing::HasSubstr;

namespace
{

namespace fs = std::filesystem;

/// A copy of the program, in whose folder of readers those for BREP files and product structures are others.
class ConvertHostile : public testing::Test
{
protected:
    ConvertHostile()
    {
        for (const char* name : {"bin", "input", "other", "out"})
            fs::create_directory(m_folder.file(name));
        const fs::path readers = (fs::path(m_folder.file("bin")) / READERS_FROM_PROGRAM).lexically_normal();
        fs::create_directories(readers);
        fs::copy_file(ConvertRun::program().toStdString(), m_folder.file("bin/ptxconvert"));
        for (const char* name : {"ptxbrep.so", "ptxplmxml.so"})
            fs::copy_file(HOSTILE_READER, readers / name);
        for (const char* name : {"input/secret", "input/first", "input/second", "other/secret", "out/secret"})
            m_folder.write(name, "secret");
        // The loader takes a blank in the path of what is preloaded for the end of it.
        EXPECT_TRUE(QFile::link(QStringLiteral(HOSTILE_READER), m_plain.filePath(QStringLiteral("hostile.so"))));
        m_folder.write("input/a.brep", "DBRep_DrawableShape\n\nCASCADE Topology V1, (c) Matra-Datavision\n");
        m_other.start(QStringLiteral("sleep"), {QStringLiteral("600")});
        m_other.waitForStarted();
    }
    ~ConvertHostile() override
    {
        m_other.kill();
        m_other.waitForFinished();
    }

    /// What the program says on its standard error stream before it ends with 7.
    std::string words(const QString& program, const QStringList& arguments, bool isPreloaded)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (isPreloaded)
            environment.insert(QStringLiteral("LD_PRELOAD"), m_plain.filePath(QStringLiteral("hostile.so")));
        environment.insert(QStringLiteral("PTX_HOSTILE"), QString::fromStdString(m_folder.path()));
        environment.insert(QStringLiteral("PTX_HOSTILE_PROCESS"), QString::number(m_other.processId()));
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(100000));
        EXPECT_EQ(process.exitCode(), 7);
        return process.readAllStandardError().toStdString();
    }

    QStringList arguments(const QString& sandbox, const char* input) const
    {
        return {QStringLiteral("--sandbox"), sandbox, QString::fromStdString(m_folder.file(input)),
                QString::fromStdString(m_folder.file("out/a.osb"))};
    }

    /// The reason that the conversion gives.
    std::string reason(const QString& sandbox)
    {
        const QString program = QString::fromStdString(m_folder.file("bin/ptxconvert"));
        return words(program, arguments(sandbox, "input/a.brep"), false);
    }

    /// What the reading of a product structure prints.
    std::string document(const QString& sandbox, const QStringList& rules)
    {
        QStringList arguments = {
            QStringLiteral("--read-document"), QString::fromStdString(m_folder.file("input/a.brep")),
            QString::fromStdString(m_folder.file("out/text")), QStringLiteral("--sandbox"), sandbox};
        return words(QString::fromStdString(m_folder.file("bin/ptxconvert")), arguments + rules, false);
    }

    /// What meshing anew prints, of exact surfaces that a conversion kept.
    std::string meshing(const QString& sandbox)
    {
        StepText step;
        StepProduct part = step.product("part");
        step.box(part, {0, 0, 0}, {30, 20, 10});
        ConvertRun kept;
        EXPECT_EQ(kept.convertText("a.stp", step.text(), {"--set", "keep-brep=1"}), 0) << kept.log();
        fs::copy_file(kept.output(), m_folder.file("input/a.osb"));
        return words(QStringLiteral(PTXTESSELLATE), arguments(sandbox, "input/a.osb"), true);
    }

    TempFolder m_folder;
    QTemporaryDir m_plain;
    QProcess m_other;
};

/// What is tried, with the end that it has in the box.
constexpr std::pair<const char*, const char*> Attempts[] = {
    {"read", "Permission denied"},
    {"read-list", "Permission denied"},
    {"read-process", "Permission denied"},
    {"write", "Permission denied"},
    {"write-input", "Permission denied"},
    {"make", "Permission denied"},
    {"remove", "Permission denied"},
    {"rights", "Operation not permitted"},
    {"link", "Operation not permitted"},
    {"connect", "Operation not permitted"},
    {"connect-local", "Operation not permitted"},
    {"execute", "Permission denied"},
    {"execute-own", "Permission denied"},
    {"signal", "Operation not permitted"},
    {"copy-signals", "Operation not permitted"},
    {"trace", "Operation not permitted"},
};

std::string allOf(const char* when, bool isLockedIn)
{
    std::string list = when;
    for (const auto& [what, end] : Attempts)
        list += std::string(" ") + what + '=' + (isLockedIn ? end : "done") + ';';
    return list;
}

} // namespace

TEST_F(ConvertHostile, AReaderThatWantsOutIsRefusedEachWay)
{
    if (ptx::box::fileRulesVersion() == 0)
        GTEST_SKIP() << "this kernel has no rules for files";
    const std::string reason = this->reason(QStringLiteral("require"));
    EXPECT_THAT(reason, HasSubstr(allOf("at load:", true) + allOf(" when called:", true)));
    EXPECT_EQ(contentOf(m_folder.file("other/secret")), "secret");
}

/// Or the list above tells nothing.
TEST_F(ConvertHostile, WithoutTheBoxItGetsOutEachWay)
{
    EXPECT_THAT(reason(QStringLiteral("off")), HasSubstr(allOf("at load:", false) + allOf(" when called:", false)));
}

TEST_F(ConvertHostile, MeshingAnewThatWantsOutIsRefusedEachWay)
{
    if (ptx::box::fileRulesVersion() == 0)
        GTEST_SKIP() << "this kernel has no rules for files";
    EXPECT_THAT(meshing(QStringLiteral("require")), HasSubstr(allOf("when called:", true)));
    EXPECT_EQ(contentOf(m_folder.file("other/secret")), "secret");
}

TEST_F(ConvertHostile, WithoutTheBoxMeshingAnewGetsOutEachWay)
{
    EXPECT_THAT(meshing(QStringLiteral("off")), HasSubstr(allOf("when called:", false)));
}

/// Part files may lie anywhere, but are looked for alone.
TEST_F(ConvertHostile, AReaderOfProductStructuresListsFoldersAndIsRefusedEachOtherWay)
{
    if (ptx::box::fileRulesVersion() == 0)
        GTEST_SKIP() << "this kernel has no rules for files";
    std::string list = allOf("when called:", true);
    const std::string listing = "read-list=";
    list.replace(list.find(listing), listing.size() + std::string("Permission denied").size(), listing + "done");
    EXPECT_THAT(document(QStringLiteral("require"), {}), HasSubstr(list));
    const QString top = QStringLiteral("references-below=") + QString::fromStdString(m_folder.file("input"));
    m_folder.write("input/first", "secret");
    m_folder.write("input/second", "secret");
    EXPECT_THAT(document(QStringLiteral("require"), {QStringLiteral("references=below"), top}),
                HasSubstr(allOf("when called:", true)));
}

TEST_F(ConvertHostile, WithoutTheBoxAReaderOfProductStructuresGetsOutEachWay)
{
    EXPECT_THAT(document(QStringLiteral("off"), {}), HasSubstr(allOf("when called:", false)));
}
