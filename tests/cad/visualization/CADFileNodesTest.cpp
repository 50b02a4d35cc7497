#include "cad/visualization/CADProductStructure.h"

#include "cad/xml/CADPart.h"
#include "cad/xml/CADRepresentation.h"
#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditAudit.h"
#include "standalone/znKernel/MessageModules.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/cad/visualization/TableStructure.h"
#include "tests/standalone/session/SessionTest.h"

#include <tinyxml.h>

#include <memory>
#include <stdexcept>

namespace HB::Visualization
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Path = std::string;

class FileNodesTest : public SessionTest
{
protected:
    FileNodesTest() { m_structure.loadDocument("/models/y.plmxml"); }

    void TearDown() override
    {
        m_owned.reset();
        SessionTest::TearDown();
    }

    /// The structure of a document in the test's own folder.
    void useFolder() { m_structure.loadDocument(path(QStringLiteral("doc.plmxml")).toStdString()); }

    Path inFolder(const char* name) const { return path(QString::fromUtf8(name)).toStdString(); }

    /// A representation with this location, which goes with the test.
    XML::CAD::CADRepresentation* representation(const char* location)
    {
        auto* element = new XML::CAD::CADRepresentation(&m_part);
        TiXmlElement xml("Representation");
        xml.SetAttribute("location", location);
        xml.SetAttribute("format", "JT");
        element->load(xml);
        return element;
    }
    Path locationOf(const char* location, CADLoadState state = CADLoadState::FilePending)
    {
        m_structure.add(0, representation(location)).setState(state);
        return m_structure.getNodeLocation(m_structure.getNodeCount() - 1);
    }
    Path fileNameOf(const char* location)
    {
        m_structure.add(0, representation(location)).setState(CADLoadState::FilePending);
        return m_structure.getNodeFileName(m_structure.getNodeCount() - 1);
    }
    osg::RefPtr<osg::NodePtr> create(const Path& location, const Path& format = "JT")
    {
        return m_structure.createFileNode(location, format);
    }
    static osg::ExtReferencePtr referenceOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::ExtReference>(node->getCore());
    }
    static Path pathOf(const osg::FileReferencePtr& file) { return file ? file->getPath() : "none"; }

    XML::CAD::CADPart m_part{static_cast<XML::CAD::CADBase*>(nullptr)};
    std::unique_ptr<TableStructure> m_owned = std::make_unique<TableStructure>();
    TableStructure& m_structure = *m_owned;
};

TEST_F(FileNodesTest, LocationIsToldWhileTheFileIsPending)
{
    EXPECT_EQ(locationOf("a%20b.jt"), "a%20b.jt");
    for (const auto state : {CADLoadState::Idle, CADLoadState::IdleLoadRequested, CADLoadState::Realized,
                             CADLoadState::RealizedUnloadRequested, CADLoadState::FilePendingLoadRequested,
                             CADLoadState::FileLoaded, CADLoadState::FileLoadedUnloadRequested})
        EXPECT_EQ(locationOf("a.jt", state), "");
}

TEST_F(FileNodesTest, FileNameIsResolvedAndDecodedAsAWhole)
{
    EXPECT_EQ(fileNameOf("a%20b.jt"), "/models/a b.jt");
    EXPECT_EQ(fileNameOf("/x/%C3%A4.jt"), "/x/\xC3\xA4.jt");
    EXPECT_EQ(fileNameOf("\xC3\xA4.jt"), "/models/\xC3\xA4.jt");
    EXPECT_EQ(fileNameOf(""), "");
    m_structure.loadDocument("/my%20models/y.plmxml");
    EXPECT_EQ(fileNameOf("a.jt"), "/my models/a.jt");
}

TEST_F(FileNodesTest, FileNameIsEmptyWithoutALocation)
{
    m_structure.add(0, representation("a.jt"));
    EXPECT_EQ(m_structure.getNodeFileName(0), "");
}

TEST_F(FileNodesTest, RelativePathsAreThoseOfTheDocumentsFolder)
{
    EXPECT_EQ(m_structure.resolvePath("a.jt"), "/models/a.jt");
    EXPECT_EQ(m_structure.resolvePath("./a.jt"), "/models/a.jt");
    EXPECT_EQ(m_structure.resolvePath(".\\a.jt"), "/models/a.jt");
    EXPECT_EQ(m_structure.resolvePath("sub/a.jt"), "/models/sub/a.jt");
    EXPECT_EQ(m_structure.resolvePath(""), "/models/");
}

TEST_F(FileNodesTest, TwoCharactersGoWhateverTheSecondIs)
{
    EXPECT_EQ(m_structure.resolvePath(".hidden.jt"), "/models/idden.jt");
    EXPECT_EQ(m_structure.resolvePath("../x.jt"), "/models//x.jt");
    EXPECT_EQ(m_structure.resolvePath("/ax.jt"), "/models/x.jt");
    EXPECT_EQ(m_structure.resolvePath("\\ax.jt"), "/models/x.jt");
    EXPECT_EQ(m_structure.resolvePath(".."), "/models/");
}

TEST_F(FileNodesTest, ALoneDotOrSeparatorThrows)
{
    EXPECT_THROW(m_structure.resolvePath("."), std::out_of_range);
    EXPECT_THROW(m_structure.resolvePath("/"), std::out_of_range);
    EXPECT_THROW(m_structure.resolvePath("\\"), std::out_of_range);
    EXPECT_THROW(fileNameOf("."), std::out_of_range);
}

TEST_F(FileNodesTest, ADocumentWithoutFolderResolvesToTheNameItself)
{
    m_structure.loadDocument("y.plmxml");
    EXPECT_EQ(m_structure.resolvePath("a.jt"), "a.jt");
    m_structure.loadDocument("C:\\models\\y.plmxml");
    EXPECT_EQ(m_structure.resolvePath("a.jt"), "C:\\models\\a.jt");
}

TEST_F(FileNodesTest, StoredNodesAreFoundByTheirFullPathAndCounted)
{
    const osg::RefPtr<osg::NodePtr> first(osg::makeNodeFor(osg::Group::create()));
    const osg::RefPtr<osg::NodePtr> second(osg::makeNodeFor(osg::Group::create()));
    EXPECT_FALSE(m_structure.findFileNode("a.jt"));
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), IsEmpty());
    m_structure.storeFileNode("./a.jt", first);
    EXPECT_EQ(first->getRefCount(), 2U);
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), ElementsAre(Pair("/models/a.jt", 1U)));
    EXPECT_TRUE(m_structure.findFileNode("/models/a.jt") == first.get());
    EXPECT_TRUE(m_structure.findFileNode("a.jt") == first.get());
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), ElementsAre(Pair("/models/a.jt", 3U)));
    m_structure.storeFileNode("a.jt", second);
    EXPECT_EQ(second->getRefCount(), 1U);
    EXPECT_TRUE(m_structure.findFileNode("a.jt") == first.get());
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), ElementsAre(Pair("/models/a.jt", 4U)));
}

TEST_F(FileNodesTest, AnEmptyLocationGivesNoNode)
{
    EXPECT_FALSE(create(""));
}

TEST_F(FileNodesTest, TheNodeRefersToTheFileAndBearsItsName)
{
    m_structure.setLoadFiles(false);
    const auto node = create("sub/pump%20v2.final.jt");
    EXPECT_EQ(nameOf(node), "pump v2.final");
    ASSERT_TRUE(referenceOf(node));
    EXPECT_EQ(pathOf(referenceOf(node)->getSourceFile()), "/models/sub/pump v2.final.jt");
    EXPECT_EQ(referenceOf(node)->getSourceFile()->getRelativePath(), "");
    EXPECT_EQ(pathOf(referenceOf(node)->getSmartFile()), "none");
    EXPECT_EQ(referenceOf(node)->getState(), 0U);
    EXPECT_EQ(node->getNChildren(), 0U);
}

TEST_F(FileNodesTest, OnlyQlbFilesAreSmartInAnyCase)
{
    m_structure.setLoadFiles(false);
    for (const char* name : {"a.qlb", "b.QLB", "c.Qlb"}) {
        const auto node = create(name);
        EXPECT_EQ(pathOf(referenceOf(node)->getSmartFile()), Path("/models/") + name);
        EXPECT_EQ(pathOf(referenceOf(node)->getSourceFile()), "none");
    }
    for (const char* name : {"a.osb", "b.OSB", "qlb", "c.qlb2"}) {
        const auto node = create(name);
        EXPECT_EQ(pathOf(referenceOf(node)->getSmartFile()), "none") << name;
        EXPECT_EQ(pathOf(referenceOf(node)->getSourceFile()), Path("/models/") + name);
    }
}

TEST_F(FileNodesTest, TheExtensionIsThatOfTheLocationBeforeItIsDecoded)
{
    m_structure.setLoadFiles(false);
    const auto node = create("a%2Eqlb");
    EXPECT_EQ(pathOf(referenceOf(node)->getSourceFile()), "/models/a.qlb");
    EXPECT_EQ(pathOf(referenceOf(node)->getSmartFile()), "none");
}

TEST_F(FileNodesTest, WithoutLoadingEveryFurtherUseIsACloneThatSharesTheCore)
{
    m_structure.setLoadFiles(false);
    const auto first = create("a%20b.jt");
    const auto second = create("./a b.jt", "WRL");
    EXPECT_FALSE(first.get() == second.get());
    EXPECT_TRUE(first->getCore() == second->getCore());
    EXPECT_EQ(nameOf(second), "a b");
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), ElementsAre(Pair("/models/a b.jt", 2U)));
}

TEST_F(FileNodesTest, WithoutLoadingACsbFileIsNotStored)
{
    m_structure.setLoadFiles(false);
    const auto first = create("a.csb", "CSB");
    const auto second = create("a.csb", "CSB");
    EXPECT_FALSE(first->getCore() == second->getCore());
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), IsEmpty());
}

TEST_F(FileNodesTest, MissingFilesMakeSeparateNodesAndAreNotStored)
{
    useFolder();
    for (const char* format : {"JT", "CSB"}) {
        const auto first = create("gone.obj", format);
        const auto second = create("gone.obj", format);
        EXPECT_FALSE(first->getCore() == second->getCore());
        EXPECT_EQ(first->getNChildren(), 0U);
    }
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), IsEmpty());
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(FileNodesTest, AFileIsReadOnceAndClonedFromThenOn)
{
    useFolder();
    writeTriangle(QString::fromUtf8("Größe 1.obj"));
    const auto first = create("Gr%C3%B6%C3%9Fe%201.obj", "WRL");
    ASSERT_EQ(first->getNChildren(), 1U);
    EXPECT_EQ(referenceOf(first)->getState(), 2U);
    std::vector<std::string> calls;
    const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
    const auto second = create("Gr%C3%B6%C3%9Fe%201.obj", "WRL");
    EXPECT_THAT(calls, IsEmpty());
    ASSERT_EQ(second->getNChildren(), 1U);
    EXPECT_TRUE(first->getChild(0)->getCore() == second->getChild(0)->getCore());
    EXPECT_TRUE(first->getCore() == second->getCore());
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), ElementsAre(Pair(inFolder("Größe 1.obj"), 2U)));
}

TEST_F(FileNodesTest, TheHostIsAskedToReloadTheNode)
{
    useFolder();
    writeTriangle(QStringLiteral("part.obj"));
    std::vector<std::string> calls;
    const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
    const auto node = create("part.obj");
    EXPECT_THAT(calls, ElementsAre("znScenegraph::reloadFromFile(node " + std::to_string(node->getContainerId()) +
                                   " 'part', true, false, false)"));
}

TEST_F(FileNodesTest, AFileThatCannotBeReadCountsAsTheFilesNodeAllTheSame)
{
    useFolder();
    write(QStringLiteral("cut.gltf"), "{\"asset\":{\"version\":");
    const auto first = create("cut.gltf");
    EXPECT_EQ(first->getNChildren(), 0U);
    EXPECT_EQ(referenceOf(first)->getState(), 0U);
    EXPECT_EQ(m_log.size(), 1U);
    const auto second = create("cut.gltf");
    EXPECT_EQ(m_log.size(), 1U);
    EXPECT_TRUE(first->getCore() == second->getCore());
}

class CsbFileTest : public FileNodesTest
{
protected:
    CsbFileTest()
    {
        useFolder();
        write(QStringLiteral("a b.csb"), "content");
    }

    /// Lets a module of the host answer with this value.
    void answer(const boost::any& value)
    {
        m_session.state<zn::kernel::MessageModules>().modules.emplace_back([this, value](znMessage& message) {
            m_codes.push_back(message.getCode());
            QString file;
            EXPECT_TRUE(message.get("filename", file));
            m_files.push_back(file.toStdString());
            message.set("node", value, true);
            return true;
        });
    }

    std::vector<std::uint64_t> m_codes;
    std::vector<std::string> m_files;
};

TEST_F(CsbFileTest, TheHostReadsItByAMessage)
{
    const osg::NodePtr content = osg::makeNodeFor(osg::Group::create());
    osg::setName(content, "csb content");
    answer(content);
    const osg::EditAudit audit;
    const auto node = create("a%20b.csb", "CSB");
    EXPECT_THAT(m_codes, ElementsAre(0x20000U));
    EXPECT_THAT(m_files, ElementsAre(inFolder("a b.csb")));
    EXPECT_THAT(childNames(node), ElementsAre("csb content"));
    EXPECT_THAT(audit.brackets(),
                testing::Contains(osg::EditAudit::Record{node->getContainerId(), "Node", 0xFFFFFFFF}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
    const auto second = create("a%20b.csb", "CSB");
    EXPECT_EQ(m_codes.size(), 1U);
    EXPECT_TRUE(second->getChild(0)->getCore() == content->getCore());
}

TEST_F(CsbFileTest, AnEmptyAnswerIsNotStored)
{
    const auto first = create("a b.csb", "CSB");
    EXPECT_EQ(first->getNChildren(), 0U);
    answer(osg::NodePtr());
    const auto second = create("a b.csb", "CSB");
    EXPECT_EQ(m_codes.size(), 1U);
    EXPECT_FALSE(first->getCore() == second->getCore());
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), IsEmpty());
}

TEST_F(CsbFileTest, AnAnswerOfAnotherTypeIsComplainedAbout)
{
    answer(std::string("no node"));
    testing::internal::CaptureStderr();
    const auto node = create("a b.csb", "CSB");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::StartsWith("getFromMessage : Attribute 'node' has wrong type (is:'"));
    EXPECT_EQ(node->getNChildren(), 0U);
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(m_structure), IsEmpty());
}

TEST_F(CsbFileTest, OnlyTheExactWordAsksTheHost)
{
    answer(osg::NodePtr());
    create("a b.csb", "csb");
    EXPECT_THAT(m_codes, IsEmpty());
    EXPECT_EQ(m_log.size(), 1U);
}

} // namespace

} // namespace HB::Visualization
