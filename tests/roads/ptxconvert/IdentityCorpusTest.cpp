// Whatever way a file is converted, the scene file is the same, bit for bit.

#include "tests/roads/ptxconvert/ConvertRun.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

using namespace ptxtest;

namespace
{

constexpr std::uintmax_t mostBytes = 1'500'000; ///< of a file: larger ones take minutes
constexpr int patience = 600'000;               // ms

std::vector<std::string> filesBelow(const std::string& folder)
{
    std::vector<std::string> files;
    const char* corpus = std::getenv("ZN_CORPUS");
    std::error_code missing;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(std::filesystem::path(corpus ? corpus : "") / folder, missing))
        if (entry.is_regular_file() && entry.file_size() <= mostBytes)
            files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

/// A converter that has loaded its readers, and the program that has files converted by copies of it.
class Copies
{
public:
    Copies()
    {
        m_server.start(ConvertRun::program(), {QStringLiteral("--serve"), m_socket});
        QElapsedTimer clock;
        clock.start();
        while (!QFileInfo::exists(m_socket) && clock.elapsed() < patience)
            m_server.waitForFinished(10);
    }
    ~Copies()
    {
        m_server.kill();
        m_server.waitForFinished();
    }
    Copies(const Copies&) = delete;
    Copies& operator=(const Copies&) = delete;

    /// Nothing else is there to convert the file.
    int convert(const std::string& input, const std::string& output) const
    {
        QProcess process;
        process.start(QString::fromUtf8(PTXLAUNCH), {m_socket, QStringLiteral("/nowhere"),
                                                     QString::fromStdString(input), QString::fromStdString(output)});
        EXPECT_TRUE(process.waitForFinished(patience));
        return process.exitCode();
    }

private:
    QTemporaryDir m_folder;
    QString m_socket = m_folder.filePath(QStringLiteral("socket"));
    QProcess m_server;
};

class IdentityCorpus : public testing::TestWithParam<const char*>
{
};

TEST_P(IdentityCorpus, ThreadsAndCopiesChangeNoByte)
{
    const std::vector<std::string> files = filesBelow(GetParam());
    if (files.empty())
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam() << " in it";
    const Copies copies;
    int converted = 0;
    for (const std::string& file : files) {
        SCOPED_TRACE(file);
        ConvertRun run;
        const int code = run.convert(file, {"--set", "threads=1"});
        const std::string scene = code == 0 ? contentOf(run.output()) : std::string();
        converted += code == 0 ? 1 : 0;
        for (const char* threads : {"2", "4", "8"}) {
            ConvertRun other;
            EXPECT_EQ(other.convert(file, {"--set", std::string("threads=") + threads}), code);
            EXPECT_TRUE(code != 0 || contentOf(other.output()) == scene) << threads << " threads";
        }
        ConvertRun open;
        EXPECT_EQ(open.convert(file, {"--sandbox", "off"}), code);
        EXPECT_TRUE(code != 0 || contentOf(open.output()) == scene) << "without the box";
        EXPECT_EQ(copies.convert(file, run.folder().file("copy.osb")), code);
        EXPECT_TRUE(code != 0 || contentOf(run.folder().file("copy.osb")) == scene) << "a copy";
    }
    EXPECT_GT(converted, 0);
    RecordProperty("files", converted);
}

INSTANTIATE_TEST_SUITE_P(, IdentityCorpus, testing::Values("step", "iges", "jt", "stl", "brep"));

} // namespace
