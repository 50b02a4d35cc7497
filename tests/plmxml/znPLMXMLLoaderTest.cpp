#include "plmxml/znPLMXMLLoader.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditAudit.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/cad/visualization/StructureText.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/ReferenceRecorder.h"

#include <utility>

struct PLMXMLLoaderTestAccess {
    static void createReference(osg::NodePtr& node, const std::string& fileName)
    {
        znPLMXMLLoader(std::string()).createReference(node, fileName);
    }
};

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class PLMXMLLoaderTest : public SessionTest
{
protected:
    void TearDown() override
    {
        tree = osg::NodePtr();
        SessionTest::TearDown();
    }

    /// A document whose `ProductDef` has this content; its path.
    std::string document(const std::string& content)
    {
        const std::string text = "<PLMXML><ProductDef id='pd'>" + content + "</ProductDef></PLMXML>";
        return write(QString::fromUtf8("wagen ü.plmxml"), QByteArray::fromStdString(text)).toStdString();
    }
    /// A root with one solid part for each location.
    std::string documentOfParts(const std::vector<std::string>& locations)
    {
        std::string roots, instances, parts;
        for (std::size_t i = 0; i < locations.size(); ++i) {
            const std::string n = std::to_string(i);
            roots += (i ? " i" : "i") + n;
            instances += "<Instance id='i" + n + "' name='I" + n + "' partRef='p" + n + "'/>";
            parts += "<Part id='p" + n + "' name='P" + n + "' type='solid'><Representation id='r" + n +
                     "' format='JT' location='" + locations[i] + "'/></Part>";
        }
        return document("<InstanceGraph rootRefs='" + roots + "'>" + instances + "</InstanceGraph>" + parts);
    }

    std::string folder() const { return m_folder.path().toStdString() + "/"; }

    bool load(znPLMXMLLoader& loader)
    {
        const bool loaded = loader.load();
        tree = loader.getNode();
        return loaded;
    }
    std::string treeText() const { return HB::Visualization::treeText(tree, folder()); }

    static std::vector<std::string> keysOf(const UnloadedParts& parts)
    {
        std::vector<std::string> keys;
        for (const auto& [key, nodes] : parts)
            keys.push_back(key);
        return keys;
    }
    static osg::ExtReferencePtr referenceOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::ExtReference>(node->getCore());
    }

    static int geometriesBelow(const osg::NodePtr& node)
    {
        int count = 0;
        osg::traverse(node, [&count](const osg::NodePtr& step) {
            count += osg::fcCast<osg::Geometry>(step->getCore()) ? 1 : 0;
            return osg::Action::Continue;
        });
        return count;
    }

    osg::RefPtr<osg::NodePtr> tree;
};

TEST_F(PLMXMLLoaderTest, AnEmptyNameIsRefusedWithoutAWord)
{
    znPLMXMLLoader loader("");
    EXPECT_FALSE(loader.load());
    EXPECT_FALSE(loader.getNode());
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(PLMXMLLoaderTest, WhatIsNoDocumentIsNamedInTheLog)
{
    const std::string other = write(QStringLiteral("other.plmxml"), "<Other/>").toStdString();
    const std::string missing = folder() + "missing.plmxml";
    for (const std::string& file : {other, missing}) {
        m_log.clear();
        znPLMXMLLoader loader(file);
        EXPECT_FALSE(loader.load());
        EXPECT_FALSE(loader.getNode());
        EXPECT_THAT(m_log, ElementsAre("Couldn't open '" + file + "'!"));
    }
}

TEST_F(PLMXMLLoaderTest, SwitchIsOffAtFirst)
{
    znPLMXMLLoader loader("a.plmxml");
    EXPECT_FALSE(loader.loadReferencedFiles());
    loader.setLoadReferencedFiles(true);
    EXPECT_TRUE(loader.loadReferencedFiles());
}

TEST_F(PLMXMLLoaderTest, ADocumentWithoutAProductIsAReferenceAlone)
{
    const std::string file = write(QStringLiteral("empty.plmxml"), "<PLMXML/>").toStdString();
    znPLMXMLLoader loader(file);
    EXPECT_TRUE(load(loader));
    EXPECT_EQ(tree->getNChildren(), 0u);
    EXPECT_EQ(referenceOf(tree)->getSourceFile()->getPath(), file);
    EXPECT_EQ(referenceOf(tree)->getState(), 2u);
}

TEST_F(PLMXMLLoaderTest, TheRootItselfRefersToTheDocument)
{
    const std::string file = documentOfParts({"a.jt"});
    znPLMXMLLoader loader(file);
    ASSERT_TRUE(load(loader));
    EXPECT_EQ(treeText(), "wagen ü [ExtReference] file wagen ü.plmxml state 2\n"
                          "  - [Transform3D]\n"
                          "    P0 [Transform3D]\n"
                          "      a [ExtReference] file a.jt state 0\n");
    EXPECT_FALSE(tree->getParent());
}

TEST_F(PLMXMLLoaderTest, OneFileIsOneKeyWhateverTheNumberOfItsPlaces)
{
    znPLMXMLLoader loader(documentOfParts({"parts/a%20b.jt", "parts/a b.jt", "c.jt"}));
    ASSERT_TRUE(load(loader));
    UnloadedParts parts = loader.getUnloadedParts();
    ASSERT_THAT(keysOf(parts), UnorderedElementsAre(folder() + "parts/a b.jt", folder() + "c.jt"));
    const std::vector<osg::NodePtr>& nodes = parts[folder() + "parts/a b.jt"];
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nameOf(nodes[0]->getParent()), "P0");
    EXPECT_EQ(nameOf(nodes[1]->getParent()), "P1");
    EXPECT_EQ(nodes[0]->getCore(), nodes[1]->getCore());
    EXPECT_EQ(nameOf(nodes[1]), "a%20b");
    EXPECT_EQ(referenceOf(nodes[0])->getSourceFile()->getPath(), folder() + "parts/a b.jt");
    EXPECT_EQ(referenceOf(nodes[0])->getSourceFile()->getRelativePath(), "parts/a%20b.jt");
}

TEST_F(PLMXMLLoaderTest, SmartFilesAreToldByTheirExtensionInAnyCase)
{
    znPLMXMLLoader loader(documentOfParts({"a.osb", "b.QLB", "c.Osb", "d.osbx", "e.jt"}));
    ASSERT_TRUE(load(loader));
    UnloadedParts parts = loader.getUnloadedParts();
    for (const char* name : {"a.osb", "b.QLB", "c.Osb"}) {
        const osg::ExtReferencePtr core = referenceOf(parts[folder() + name].front());
        ASSERT_TRUE(core->getSmartFile()) << name;
        EXPECT_EQ(core->getSmartFile()->getPath(), folder() + name);
        EXPECT_FALSE(core->getSourceFile()) << name;
    }
    for (const char* name : {"d.osbx", "e.jt"}) {
        const osg::ExtReferencePtr core = referenceOf(parts[folder() + name].front());
        EXPECT_TRUE(core->getSourceFile()) << name;
        EXPECT_FALSE(core->getSmartFile()) << name;
    }
}

TEST_F(PLMXMLLoaderTest, PartFilesThatExistAreReadOnRequest)
{
    writeTriangle(QStringLiteral("a.obj"));
    const std::string file = documentOfParts({"a.obj"});
    znPLMXMLLoader loader(file);
    loader.setLoadReferencedFiles(true);
    ASSERT_TRUE(load(loader));
    EXPECT_THAT(loader.getUnloadedParts(), IsEmpty());
    const osg::NodePtr part = tree->getChild(0)->getChild(0);
    EXPECT_EQ(nameOf(part), "P0");
    EXPECT_EQ(geometriesBelow(part), 1);
}

TEST_F(PLMXMLLoaderTest, PartFilesThatAreMissingOnRequestBecomeReferencesOutsideTheTable)
{
    znPLMXMLLoader loader(documentOfParts({"none.jt"}));
    loader.setLoadReferencedFiles(true);
    ASSERT_TRUE(load(loader));
    EXPECT_THAT(loader.getUnloadedParts(), IsEmpty());
    const osg::NodePtr part = tree->getChild(0)->getChild(0);
    ASSERT_EQ(part->getNChildren(), 1u);
    EXPECT_EQ(referenceOf(part->getChild(0))->getSourceFile()->getPath(), folder() + "none.jt");
}

TEST_F(PLMXMLLoaderTest, ARepresentationWithoutALocationIsNoReference)
{
    znPLMXMLLoader loader(documentOfParts({""}));
    ASSERT_TRUE(load(loader));
    EXPECT_THAT(loader.getUnloadedParts(), IsEmpty());
    EXPECT_EQ(tree->getChild(0)->getChild(0)->getNChildren(), 0u);
}

TEST_F(PLMXMLLoaderTest, ReferencesThatLeadNowhereAreNoFailure)
{
    znPLMXMLLoader loader(
        document("<InstanceGraph rootRefs='x i'><Instance id='i' name='I' partRef='y' transformRef='z'/>"
                 "</InstanceGraph>"));
    ASSERT_TRUE(load(loader));
    EXPECT_EQ(childNames(tree->getChild(0)), std::vector<std::string>{"I"});
}

TEST_F(PLMXMLLoaderTest, TransformsThatInstancesShareStaySharedWhenTheyAreConverted)
{
    znPLMXMLLoader loader(document(
        "<InstanceGraph rootRefs='i j k'><Instance id='i' name='I' transformRef='t'/><Instance id='j' name='J' "
        "transformRef='t'/><Instance id='k' name='K' transformRef='u'/>"
        "<Transform id='t' type='translate'>1 2 3</Transform><Transform id='u' type='translate'>1 2 3</Transform>"
        "</InstanceGraph>"));
    ASSERT_TRUE(load(loader));
    const osg::NodePtr graph = tree->getChild(0);
    const auto core = osg::fcCast<osg::Transform3D>(graph->getChild(0)->getCore());
    ASSERT_TRUE(core);
    EXPECT_EQ(core->getMatrix()[12], 1000);
    EXPECT_EQ(core->getMatrix()[13], 2000);
    EXPECT_EQ(core->getMatrix()[14], 3000);
    EXPECT_EQ(graph->getChild(1)->getCore(), graph->getChild(0)->getCore());
    EXPECT_NE(graph->getChild(2)->getCore(), graph->getChild(0)->getCore());
}

TEST_F(PLMXMLLoaderTest, AFailedLoadLeavesTheTreeOfTheOneBefore)
{
    znPLMXMLLoader loader(documentOfParts({"a.jt"}));
    ASSERT_TRUE(load(loader));
    const osg::NodePtr before = loader.getNode();
    write(QString::fromUtf8("wagen ü.plmxml"), "<PLMXML><ProductDef>");
    EXPECT_FALSE(loader.load());
    EXPECT_EQ(loader.getNode(), before);
    EXPECT_EQ(loader.getUnloadedParts().size(), 1u);
}

TEST_F(PLMXMLLoaderTest, ALocationOfOneDotPassesAsAnException)
{
    znPLMXMLLoader loader(documentOfParts({"."}));
    EXPECT_THROW(loader.load(), std::out_of_range);
    // The tree that was being built has nobody who could hold it.
    tree = loader.getNode();
}

TEST_F(PLMXMLLoaderTest, TheTableIsGivenAsACopy)
{
    znPLMXMLLoader loader(documentOfParts({"a.jt"}));
    ASSERT_TRUE(load(loader));
    UnloadedParts parts = loader.getUnloadedParts();
    parts.clear();
    EXPECT_EQ(loader.getUnloadedParts().size(), 1u);
}

TEST_F(PLMXMLLoaderTest, ASecondLoadKeepsTheEntriesOfTheFirst)
{
    znPLMXMLLoader loader(documentOfParts({"a.jt", "b.jt"}));
    ASSERT_TRUE(load(loader));
    const osg::RefPtr<osg::NodePtr> first = tree;
    documentOfParts({"a.jt"});
    ASSERT_TRUE(load(loader));
    UnloadedParts parts = loader.getUnloadedParts();
    EXPECT_THAT(keysOf(parts), UnorderedElementsAre(folder() + "a.jt", folder() + "b.jt"));
    const std::vector<osg::NodePtr>& nodes = parts[folder() + "a.jt"];
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_NE(nodes[0], nodes[1]);
    EXPECT_EQ(nodes[0]->getCore(), nodes[1]->getCore());
    EXPECT_NE(first.get(), tree.get());
}

TEST_F(PLMXMLLoaderTest, CopiesShareTheTreeAndMovesEmptyTheSource)
{
    znPLMXMLLoader loader(documentOfParts({"a.jt"}));
    loader.setLoadReferencedFiles(false);
    ASSERT_TRUE(load(loader));
    loader.setLoadReferencedFiles(true);

    znPLMXMLLoader copy(loader);
    EXPECT_EQ(copy.getNode(), tree.get());
    EXPECT_EQ(copy.getUnloadedParts().size(), 1u);
    EXPECT_TRUE(copy.loadReferencedFiles());

    const znPLMXMLLoader moved(std::move(copy));
    EXPECT_EQ(moved.getUnloadedParts().size(), 1u);
    EXPECT_TRUE(moved.loadReferencedFiles());
    EXPECT_EQ(copy.getNode(), tree.get());
    EXPECT_TRUE(copy.loadReferencedFiles());
    EXPECT_THAT(copy.getUnloadedParts(), IsEmpty());
    EXPECT_FALSE(copy.load());
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(PLMXMLLoaderTest, AssignmentsDoTheSameAndBearTheirOwnObject)
{
    znPLMXMLLoader loader(documentOfParts({"a.jt"}));
    ASSERT_TRUE(load(loader));
    znPLMXMLLoader& itself = loader;
    loader = itself;
    EXPECT_EQ(loader.getUnloadedParts().size(), 1u);
    loader = std::move(itself);
    EXPECT_EQ(loader.getUnloadedParts().size(), 1u);

    znPLMXMLLoader copied("");
    copied = loader;
    EXPECT_EQ(copied.getUnloadedParts().size(), 1u);
    EXPECT_EQ(copied.getNode(), tree.get());

    znPLMXMLLoader moved("");
    moved.setLoadReferencedFiles(true);
    moved = std::move(copied);
    EXPECT_EQ(moved.getUnloadedParts().size(), 1u);
    EXPECT_FALSE(moved.loadReferencedFiles());
    EXPECT_EQ(copied.getNode(), tree.get());
    EXPECT_THAT(copied.getUnloadedParts(), IsEmpty());
}

TEST_F(PLMXMLLoaderTest, TheHostIsToldOfTheTree)
{
    const ReferenceRecorder recorder(m_session);
    znPLMXMLLoader loader(documentOfParts({"a.jt"}));
    ASSERT_TRUE(load(loader));
    const auto& notices = recorder.notifications();
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].rootId, tree->getContainerId());
    EXPECT_EQ(notices[0].code, 6);
    EXPECT_EQ(notices[0].argument, 0);
}

TEST_F(PLMXMLLoaderTest, TransformsAreConvertedParentsFirstBeforeTheHostIsTold)
{
    std::vector<std::string> calls;
    const std::string file = documentOfParts({"a.jt"});
    znPLMXMLLoader loader(file);
    {
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(call); });
        ASSERT_TRUE(load(loader));
    }
    const std::string name = "znNodeUtils::convertTransformToTransform3D";
    std::vector<std::string> expected;
    osg::traverse(tree.get(), [&](const osg::NodePtr& node) {
        expected.push_back(name + "(" + zn::tracetext::of(node) + ")");
        return osg::Action::Continue;
    });
    ASSERT_EQ(expected.size(), 4u);
    std::vector<std::string> conversions;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(conversions),
                 [&](const std::string& call) { return call.rfind(name, 0) == 0; });
    EXPECT_EQ(conversions, expected);
    EXPECT_EQ(calls.back().rfind("znReferenceInterface::notifyReferences(", 0), 0u);
}

TEST_F(PLMXMLLoaderTest, ARootThatMovesKeepsItsTransformBelowTheReference)
{
    const ReferenceRecorder recorder(m_session);
    const osg::TransformPtr core = osg::Transform::create();
    osg::Matrix matrix;
    matrix[12] = 7;
    core->setMatrix(matrix);
    osg::NodePtr root = osg::makeNodeFor(core);
    osg::setName(root, "moved");
    const osg::NodePtr before = root;
    PLMXMLLoaderTestAccess::createReference(root, "/a b/wagen ü.plmxml");
    tree = root;
    ASSERT_NE(root, before);
    EXPECT_EQ(nameOf(root), "wagen ü");
    EXPECT_EQ(referenceOf(root)->getSourceFile()->getPath(), "/a b/wagen ü.plmxml");
    EXPECT_EQ(referenceOf(root)->getState(), 2u);
    ASSERT_EQ(root->getNChildren(), 1u);
    EXPECT_EQ(root->getChild(0), before);
    EXPECT_EQ(before->getCore(), core);
    ASSERT_EQ(recorder.notifications().size(), 1u);
    EXPECT_EQ(recorder.notifications()[0].rootId, root->getContainerId());
}

TEST_F(PLMXMLLoaderTest, ARootWithoutATransformKeepsItsCoreBelowTheReference)
{
    osg::NodePtr root = osg::makeNodeFor(osg::Group::create());
    const osg::NodePtr before = root;
    PLMXMLLoaderTestAccess::createReference(root, "/a.plmxml");
    tree = root;
    ASSERT_EQ(root->getNChildren(), 1u);
    EXPECT_EQ(root->getChild(0), before);
    EXPECT_EQ(nameOf(root), "a");
}

TEST_F(PLMXMLLoaderTest, EveryChangeIsFramed)
{
    const std::string file = documentOfParts({"a.jt", "a.jt", "b.osb"});
    const osg::EditAudit audit;
    znPLMXMLLoader loader(file);
    ASSERT_TRUE(load(loader));
    for (const osg::EditAudit::Record& record : audit.unbracketed())
        ADD_FAILURE() << record.type << " " << record.mask;
    EXPECT_EQ(audit.openBrackets(), 0u);
    EXPECT_FALSE(audit.brackets().empty());
}

} // namespace
