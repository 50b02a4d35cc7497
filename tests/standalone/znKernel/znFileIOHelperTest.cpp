#include "host/znKernel/znFileIOHelper.h"

#include "host/znOpenSGExt/FileInfo.h"
#include "standalone/znKernel/MixedAssemblies.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <set>

using namespace znCADFileTypes;

namespace
{

QString fileOf(const std::string& extension)
{
    return QStringLiteral("/teile/a.b/Gehäuse 1.") + QString::fromStdString(extension);
}

/// Every extension of the vocabulary.
std::set<std::string> allExtensions()
{
    std::set<std::string> result;
    for (const auto& [type, row] : extensionTable())
        result.insert(row.extensions.begin(), row.extensions.end());
    return result;
}

/// Those extensions for which `predicate` holds.
std::set<std::string> extensionsOf(bool (*predicate)(const QString&))
{
    std::set<std::string> result;
    for (const std::string& extension : allExtensions())
        if (predicate(fileOf(extension)))
            result.insert(extension);
    return result;
}

using Extensions = std::set<std::string>;

TEST(FileIOHelper, TheFormatFollowsFromTheExtension)
{
    for (const auto& [type, row] : extensionTable())
        for (const std::string& extension : row.extensions)
            if (extension != "prt" && extension != "asm") {
                EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(fileOf(extension)), type) << extension;
            }
}

TEST(FileIOHelper, ExtensionsOfTwoRowsHaveAFixedFormat)
{
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("a.prt")), NX);
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("a.asm")), ProEngineer);
}

TEST(FileIOHelper, TheCaseOfAnExtensionDoesNotMatter)
{
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("A.STEP")), Step);
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("a b/A.stpZ")), Step);
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("A.stp.gz")), Step);
    EXPECT_TRUE(znFileIOHelper::isPtxFile(QStringLiteral("A.stpz")));
    EXPECT_TRUE(znFileIOHelper::isAssemblyFile(QStringLiteral("A.step.zip")));
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("A.CATProduct")), CatiaV5);
    EXPECT_TRUE(znFileIOHelper::isAssemblyFile(QStringLiteral("A.CATProduct")));
}

TEST(FileIOHelper, OtherExtensionsAreUndefined)
{
    for (const char* name : {"a.txt", "a", "", "a.", "stp", "/a.stp/b", "a.stp.bak", "a.stp "})
        EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QString::fromUtf8(name)), Undefined) << name;
}

TEST(FileIOHelper, OnlyTheLastExtensionCounts)
{
    EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(QStringLiteral("a.osb.stp")), Step);
}

TEST(FileIOHelper, AssembliesAreTheElevenExtensions)
{
    EXPECT_EQ(extensionsOf(znFileIOHelper::isAssemblyFile),
              (Extensions{"catproduct", "model", "mdl", "session", "asm", "sldasm", "dgn", "jt", "stp", "step", "g"}));
}

TEST(FileIOHelper, MixedAssembliesAreThoseOfTwoFormats)
{
    EXPECT_EQ(extensionsOf(znFileIOHelper::canContainMixedAssemblies),
              (Extensions{"skp", "skb", "style", "x_t", "x_b"}));
}

TEST(FileIOHelper, SingleFormatsHavePredicates)
{
    EXPECT_EQ(extensionsOf(znFileIOHelper::isStylarFile), (Extensions{"styl"}));
    EXPECT_EQ(extensionsOf(znFileIOHelper::isBrantelMechanorFile), (Extensions{"mca", "mcp"}));
    EXPECT_EQ(extensionsOf(znFileIOHelper::isPLMXMLFile), (Extensions{"plmxml"}));
}

TEST(FileIOHelper, PtxFilesAreThoseOfTheConvertedFormats)
{
    Extensions native = {"c4d", "csb", "wdf", "xfb", "abc",    "nm",  "nb",   "obj",
                         "osb", "3dg", "py",  "qlb", "plmxml", "qle", "vrml", "wrl"};
    Extensions converted;
    for (const std::string& extension : allExtensions())
        if (!native.contains(extension))
            converted.insert(extension);
    EXPECT_EQ(extensionsOf(znFileIOHelper::isPtxFile), converted);
}

TEST(FileIOHelper, TheConvertersOwnFormatIsConvertedToo)
{
    for (const char* name : {"a.brep", "a.brp", "A.BRP"}) {
        const QString file = QString::fromUtf8(name);
        EXPECT_TRUE(znFileIOHelper::isPtxFile(file)) << name;
        EXPECT_EQ(znFileIOHelper::getFileTypeByFileName(file), Undefined) << name;
        EXPECT_FALSE(znFileIOHelper::isAssemblyFile(file)) << name;
        EXPECT_FALSE(znFileIOHelper::canContainMixedAssemblies(file)) << name;
    }
}

TEST(FileIOHelper, NoPredicateHoldsForAFileOfNoFormat)
{
    const QString file = QStringLiteral("readme.txt");
    EXPECT_FALSE(znFileIOHelper::isAssemblyFile(file));
    EXPECT_FALSE(znFileIOHelper::canContainMixedAssemblies(file));
    EXPECT_FALSE(znFileIOHelper::isStylarFile(file));
    EXPECT_FALSE(znFileIOHelper::isBrantelMechanorFile(file));
    EXPECT_FALSE(znFileIOHelper::isPtxFile(file));
    EXPECT_FALSE(znFileIOHelper::isPLMXMLFile(file));
}

using FileIOHelperInSession = SessionTest;

TEST_F(FileIOHelperInSession, MixedAssembliesCanBeDecidedOtherwise)
{
    std::vector<QString> asked;
    m_session.state<zn::kernel::MixedAssemblies>().canContain = [&](const QString& path) {
        asked.push_back(path);
        return path.endsWith(QStringLiteral(".styl"));
    };
    EXPECT_TRUE(znFileIOHelper::canContainMixedAssemblies(QStringLiteral("a.styl")));
    EXPECT_FALSE(znFileIOHelper::canContainMixedAssemblies(QStringLiteral("a.skp")));
    EXPECT_THAT(asked, testing::ElementsAre(QStringLiteral("a.styl"), QStringLiteral("a.skp")));
}

TEST_F(FileIOHelperInSession, TheFileInfoNamesTheFile)
{
    const osg::NodePtr root = m_session.sceneRoot();
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo(root), QString());
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo({}), QString());
    const osg::FileInfoPtr info = osg::FileInfoBase::create();
    info->setFileName("/cars/größe 轴.stp");
    root->addAttachment(info);
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo(root), QString::fromUtf8("/cars/größe 轴.stp"));
}

} // namespace
