// Small documents and the scenes that they make, each with its text beside it.

#include "host/znKernel/znScenegraph.h"
#include "tests/cad/visualization/PLMXMLStructureTest.h"

#include <QDirIterator>
#include <QFileInfo>

namespace HB::Visualization
{

namespace
{

class GoldenDumpTest : public PLMXMLStructureTest, public testing::WithParamInterface<std::string>
{
protected:
    static QString file(const std::string& name, const char* extension)
    {
        return QStringLiteral(ZN_GOLDEN_FOLDER "/") + QString::fromStdString(name) + QLatin1String(extension);
    }
    static std::string contentOf(const QString& path)
    {
        QFile opened(path);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << path.toStdString();
        return opened.readAll().toStdString();
    }
};

std::vector<std::string> documents()
{
    std::vector<std::string> names;
    for (QDirIterator found(QStringLiteral(ZN_GOLDEN_FOLDER), {QStringLiteral("*.plmxml")}); found.hasNext();)
        names.push_back(QFileInfo(found.next()).completeBaseName().toStdString());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST_P(GoldenDumpTest, TreeRecordsAndMaterialsAreThoseOfTheText)
{
    m_structure->setLoadFiles(false);
    ASSERT_TRUE(m_structure->loadDocument(file(GetParam(), ".plmxml").toStdString()));
    m_tree = m_structure->createScene();
    std::string text = "tree\n" + tree() + "\nrecords\n" + records() + "\nmaterials\n" + materials();
    for (std::uint32_t id = 0; id < m_structure->getNodeCount(); ++id)
        m_structure->realizeNode(id);
    text += "\nrealized tree\n" + treeText(m_tree, ZN_GOLDEN_FOLDER "/") + "\nrealized records\n" + records();
    EXPECT_EQ(text, contentOf(file(GetParam(), ".txt")));
}

INSTANTIATE_TEST_SUITE_P(Documents, GoldenDumpTest, testing::ValuesIn(documents()),
                         [](const auto& document) { return document.param; });

TEST(GoldenDumps, AreThere)
{
    EXPECT_GE(documents().size(), 6U);
}

} // namespace HB::Visualization
