#include "files/SceneReaders.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "importer/NestedDocuments.h"
#include "importer/SceneText.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "tests/roads/PlmxmlImport.h"

using namespace znCADFileTypes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class PlmxmlNestingTest : public PlmxmlImport
{
protected:
    /// A chain of `count` documents, each naming the next.
    QString chainOf(int count)
    {
        writeTriangle(QStringLiteral("plate.obj"));
        for (int i = count - 1; i >= 0; --i) {
            const std::string next = i + 1 < count ? "d" + std::to_string(i + 1) + ".plmxml" : "plate.obj";
            documentOf({next}, QStringLiteral("d%1.plmxml").arg(i));
        }
        return path(QStringLiteral("d0.plmxml"));
    }
};

TEST_F(PlmxmlNestingTest, APartFileThatIsADocumentEndsInTheTreeWithItsParts)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    writePart(QStringLiteral("nut.stp"), {"ring"});
    writeTriangle(QStringLiteral("plate.obj"));
    documentOf({"bolt.stp", "plate.obj"}, QStringLiteral("axle.plmxml"));
    const zn::ImportResult result = importParts({"axle.plmxml", "nut.stp"});
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_THAT(result.missing, IsEmpty());
    ASSERT_TRUE(result.node);
    // The reference to the inner document holds its graph, without the document's own level.
    const osg::NodePtr axle = partOf(result, 0)->getChild(0);
    EXPECT_EQ(nameOf(axle), "axle");
    EXPECT_EQ(referenceOf(axle)->getState(), 2u);
    ASSERT_EQ(axle->getNChildren(), 1u);
    EXPECT_THAT(childNames(axle->getChild(0)), ElementsAre("I0", "I1"));
    const osg::NodePtr bolt = axle->getChild(0)->getChild(0)->getChild(0)->getChild(0);
    EXPECT_THAT(childNames(bolt), ElementsAre("head"));
    EXPECT_THAT(childNames(partOf(result, 1)->getChild(0)), ElementsAre("ring"));
    // Two of the outer document, two of the inner one.
    EXPECT_EQ(m_counts.back(), (zn::PartCounts{4, 0, 4, 0}));
}

TEST_F(PlmxmlNestingTest, ANestedDocumentComesInAtAllItsPlaces)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    documentOf({"bolt.stp"}, QStringLiteral("axle.plmxml"));
    const zn::ImportResult result = importParts({"axle.plmxml", "axle.plmxml"});
    EXPECT_EQ(result.state, JobSucceeded);
    ASSERT_TRUE(result.node);
    for (unsigned i = 0; i < 2; ++i) {
        const osg::NodePtr axle = partOf(result, i)->getChild(0);
        ASSERT_EQ(axle->getNChildren(), 1u) << i;
        EXPECT_THAT(childNames(axle->getChild(0)->getChild(0)->getChild(0)->getChild(0)), ElementsAre("head"));
    }
}

TEST_F(PlmxmlNestingTest, WhatRepeatsInADocumentThatRepeatsComesInAtAllPlaces)
{
    writeTriangle(QStringLiteral("plate.obj"));
    documentOf({"plate.obj", "plate.obj"}, QStringLiteral("axle.plmxml"));
    const zn::ImportResult result = importParts({"axle.plmxml", "axle.plmxml", "axle.plmxml"});
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_EQ(zn::countScene(result.node).geometries, 1u);
    EXPECT_EQ(zn::countScene(result.node).placedGeometries, 6u);
}

/// The inner document's materials are put onto its parts, at all places, and the outer one's over these.
TEST_F(PlmxmlNestingTest, MaterialsOfInnerDocumentsAreAppliedBelowThoseOfTheOuter)
{
    const auto document = [this](const char* name, const char* part, const char* material) {
        return write(QString::fromUtf8(name),
                     QByteArray("<PLMXML><ProductDef><InstanceGraph rootRefs='a b'>"
                                "<Instance id='a' name='A' partRef='#p' materialRef='m'/>"
                                "<Instance id='b' name='B' partRef='#p'/></InstanceGraph>"
                                "<Part id='p' name='P' type='solid'><Representation format='X' location='") +
                         part + "'/></Part><Material id='m' name='" + material + "'/></ProductDef></PLMXML>");
    };
    writeTriangle(QStringLiteral("plate.obj"));
    document("axle.plmxml", "plate.obj", "Blue");
    const zn::ImportResult result = import(document("car.plmxml", "axle.plmxml", "Red"));
    EXPECT_EQ(result.state, JobSucceeded);
    ASSERT_TRUE(result.node);
    std::vector<std::string> drawn;
    osg::traverse(result.node, [&](const osg::NodePtr& node) {
        if (!osg::fcCast<osg::Geometry>(node->getCore()))
            return osg::Action::Continue;
        std::string groups;
        for (osg::NodePtr each = node->getParent(); each && each != result.node; each = each->getParent())
            if (osg::fcCast<osg::MaterialGroup>(each->getCore()))
                groups = nameOf(each) + " " + groups;
        drawn.push_back(groups);
        return osg::Action::Continue;
    });
    EXPECT_THAT(drawn, ElementsAre("Red Blue ", "Red ", "Blue ", ""));
}

TEST_F(PlmxmlNestingTest, WhatIsMissingInsideIsNamedWithItsWholePlace)
{
    write(QStringLiteral("bolt.stp"), "log \"Error: the moon is full\"\nexit 7");
    documentOf({"bolt.stp", "none.stp"}, QStringLiteral("axle.plmxml"));
    const zn::ImportResult result = importParts({"axle.plmxml"});
    EXPECT_EQ(result.state, JobPartial);
    const QStringList missing = missingTexts(result);
    ASSERT_EQ(missing.size(), 2);
    EXPECT_TRUE(missing[0].startsWith(QStringLiteral("bolt.stp: The file is damaged. the moon is full")));
    EXPECT_TRUE(missing[0].endsWith(QStringLiteral("[I0/P0/axle/I0/P0]"))) << missing[0].toStdString();
    EXPECT_EQ(missing[1], QStringLiteral("none.stp: there is no such file [I0/P0/axle/I1/P1]"));
}

TEST_F(PlmxmlNestingTest, WhatADocumentInsidePassesOverIsTold)
{
    const QString axle =
        write(QStringLiteral("axle.plmxml"), "<PLMXML><Instance id='a' name='A'/><Occurrence/></PLMXML>");
    const zn::ImportResult result = importParts({"axle.plmxml"});
    EXPECT_THAT(result.messages,
                testing::Contains(axle + QStringLiteral(": the document names no file with a shape; its structure has "
                                                        "1 places")));
}

TEST_F(PlmxmlNestingTest, AnUnreadableDocumentInsideIsNamedWithItsFault)
{
    write(QStringLiteral("axle.plmxml"), "<PLMXML>\n<ProductDef id='a");
    const zn::ImportResult result = importParts({"axle.plmxml"});
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(missingTexts(result),
              QStringList(QStringLiteral("axle.plmxml: the document is cut off (line 2, column 1) [I0/P0]")));
}

TEST_F(PlmxmlNestingTest, ADocumentThatNamesItselfIsRefused)
{
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("sub"))));
    const zn::ImportResult result = importParts({"sub/../car.plmxml"});
    EXPECT_EQ(result.state, JobPartial);
    ASSERT_TRUE(result.node);
    EXPECT_EQ(missingTexts(result),
              QStringList(QStringLiteral("car.plmxml: the document leads back to itself [I0/P0]")));
}

TEST_F(PlmxmlNestingTest, ACircleOfDocumentsIsRefusedWhereItCloses)
{
    documentOf({"car.plmxml"}, QStringLiteral("axle.plmxml"));
    const zn::ImportResult result = importParts({"axle.plmxml"});
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(missingTexts(result),
              QStringList(QStringLiteral("car.plmxml: the document leads back to itself [I0/P0/axle/I0/P0]")));
}

TEST_F(PlmxmlNestingTest, DocumentsNestAsDeepAsTheLimitAndNoDeeper)
{
    EXPECT_EQ(import(chainOf(importer::NestedDocuments::maxDepth)).state, JobSucceeded);
    const zn::ImportResult result = import(chainOf(importer::NestedDocuments::maxDepth + 1));
    EXPECT_EQ(result.state, JobPartial);
    ASSERT_EQ(result.missing.size(), 1u);
    EXPECT_EQ(result.missing[0].file, path(QStringLiteral("d16.plmxml")));
    EXPECT_EQ(result.missing[0].reason, QStringLiteral("more than 16 documents are nested"));
}

TEST_F(PlmxmlNestingTest, TheOuterDocumentIsTheCurrentOneAgainAfterAnInnerOne)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    documentOf({}, QStringLiteral("axle.plmxml"));
    std::string current;
    QObject::connect(&m_importer, &zn::Importer::partsChanged,
                     [&] { current = m_session.state<zn::kernel::UserInterfaceState>().textureBase; });
    importParts({"axle.plmxml", "bolt.stp"});
    EXPECT_EQ(current, path(QStringLiteral("car.plmxml")).toStdString());
    EXPECT_EQ(m_session.state<zn::kernel::UserInterfaceState>().textureBase, "");
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
}

TEST_F(PlmxmlNestingTest, CancelReachesTheConversionsOfAnInnerDocument)
{
    writePart(QStringLiteral("slow.stp"), {"head"},
              line("append", QStringLiteral("runs"), "run") + "progress 5 Merge\nwait 600000\n");
    documentOf({"slow.stp"}, QStringLiteral("axle.plmxml"));
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (!has(QStringLiteral("runs")))
            return;
        watch.stop(); // a cancel that comes again while the tree is optimised leaves nothing
        m_importer.cancel();
    });
    watch.start(1);
    const zn::ImportResult result = importParts({"axle.plmxml"});
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(result.missing.size(), 1u);
}

TEST_F(PlmxmlNestingTest, TheReaderGoesWithTheImport)
{
    EXPECT_EQ(m_session.state<files::SceneReaders>().find(QStringLiteral("plmxml")), nullptr);
    importParts({});
    EXPECT_EQ(m_session.state<files::SceneReaders>().find(QStringLiteral("plmxml")), nullptr);
}

} // namespace
