#include "tests/files/ReaderTest.h"

#include <QDirIterator>
#include <QElapsedTimer>

#include <iostream>

namespace
{

/// Every real file of a folder imports, or fails with a message that names the file and a cause.
class FormatsCorpusTest : public SceneGraphTest, public testing::WithParamInterface<const char*>
{
protected:
    static QStringList filesBelow(const QString& folder)
    {
        QStringList files;
        const QStringList wanted = {QStringLiteral("*.obj"), QStringLiteral("*.gltf"), QStringLiteral("*.glb"),
                                    QStringLiteral("*.ply")};
        QDirIterator step(folder, wanted, QDir::Files, QDirIterator::Subdirectories);
        while (step.hasNext())
            files << step.next();
        files.sort();
        return files;
    }
};

struct Count {
    std::size_t nodes = 0;
    std::size_t triangles = 0;
    std::size_t lines = 0;
    std::size_t points = 0;
};

Count countOf(const osg::NodePtr& root)
{
    Count count;
    std::vector<osg::NodePtr> pending = {root};
    while (!pending.empty()) {
        const osg::NodePtr node = pending.back();
        pending.pop_back();
        ++count.nodes;
        if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore())) {
            const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
            count.triangles += mesh.triangles.size() / 3;
            count.lines += mesh.lines.size() / 2;
            count.points += mesh.points.size();
        }
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            pending.push_back(node->getChild(i));
    }
    return count;
}

void print(const QString& file, const files::ReadResult& result)
{
    std::cout << "| " << file.toStdString() << " | ";
    if (!result) {
        std::cout << "fails | | | " << result.error().toString().toStdString();
    } else {
        const Count count = countOf(result.value());
        std::cout << "imports | " << count.nodes << " | " << count.triangles << " | ";
    }
    for (const files::Note& warning : result.warnings)
        std::cout << warning.message.toStdString() << "; ";
    std::cout << "|\n";
}

TEST_P(FormatsCorpusTest, EveryFileImportsOrFailsWithItsNameAndACause)
{
    const QString corpus = QFile::decodeName(qgetenv("ZN_CORPUS"));
    const QDir folder(corpus + QStringLiteral("/") + QLatin1String(GetParam()));
    if (corpus.isEmpty() || !folder.exists())
        GTEST_SKIP() << "ZN_CORPUS has no folder " << GetParam();
    const QStringList files = filesBelow(folder.path());
    EXPECT_FALSE(files.isEmpty());
    for (const QString& file : files) {
        const files::ReadResult result = readScene(file);
        EXPECT_TRUE(!result || result.value()) << file.toStdString();
        print(folder.relativeFilePath(file), result);
        if (!result) {
            EXPECT_FALSE(result.error().file.isEmpty());
            EXPECT_FALSE(result.error().message.isEmpty());
        } else {
            const Count count = countOf(result.value());
            EXPECT_GT(count.triangles + count.lines + count.points, 0u) << file.toStdString();
            discard(result.value());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Folders, FormatsCorpusTest, testing::Values("obj", "gltf", "ply"),
                         [](const auto& test) { return test.param; });

} // namespace
