#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"

#include <QDirIterator>

namespace
{

/// Every real file that imports is written as a file without a single finding of the validator.
class GlbCorpusTest : public GlbTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(GlbCorpusTest, EveryImportedFileIsWrittenAsAValidOne)
{
    const QString corpus = QFile::decodeName(qgetenv("ZN_CORPUS"));
    const QString folder = corpus + QStringLiteral("/") + QLatin1String(GetParam());
    if (corpus.isEmpty() || !QFileInfo(folder).isDir())
        GTEST_SKIP() << "ZN_CORPUS has no folder " << GetParam();
    QDirIterator step(folder, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (step.hasNext()) {
        const files::ReadResult read = readScene(step.next());
        if (!read)
            continue;
        SCOPED_TRACE(step.fileName().toStdString());
        root = read.value();
        written();
        ++count;
    }
    EXPECT_GT(count, 0);
}

/// The same with levels of detail, in plain files and in small ones, with fewer triangles.
TEST_P(GlbCorpusTest, EveryImportedFileIsWrittenWithLevelsAsAValidOne)
{
    const QString folder = QFile::decodeName(qgetenv("ZN_CORPUS")) + QStringLiteral("/") + QLatin1String(GetParam());
    if (qEnvironmentVariableIsEmpty("ZN_CORPUS") || !QFileInfo(folder).isDir())
        GTEST_SKIP() << "ZN_CORPUS has no folder " << GetParam();
    QDirIterator step(folder, QDir::Files, QDirIterator::Subdirectories);
    int leveled = 0;
    while (step.hasNext()) {
        const files::ReadResult read = readScene(step.next());
        if (!read)
            continue;
        SCOPED_TRACE(step.fileName().toStdString());
        root = read.value();
        options.packing = {};
        options.levels = {0, {0.5, 0.1}, false};
        leveled +=
            written().json.value("extensionsUsed", nlohmann::json()).dump().find("MSFT_lod") != std::string::npos;
        options.packing = {true, 0.05, 8, true, true, true};
        options.levels.simplify = 0.05;
        written();
        for (const files::glb::WrittenLevel& level : result->levels)
            EXPECT_LE(level.triangles, result->trianglesBefore);
        EXPECT_LE(result->levels.empty() ? 0 : result->levels.front().error, 0.05);
    }
    EXPECT_GT(leveled, 0);
}

INSTANTIATE_TEST_SUITE_P(Folders, GlbCorpusTest, testing::Values("obj", "gltf"),
                         [](const auto& test) { return test.param; });

} // namespace
