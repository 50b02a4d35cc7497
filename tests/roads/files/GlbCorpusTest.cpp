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

INSTANTIATE_TEST_SUITE_P(Folders, GlbCorpusTest, testing::Values("obj", "gltf"),
                         [](const auto& test) { return test.param; });

} // namespace
