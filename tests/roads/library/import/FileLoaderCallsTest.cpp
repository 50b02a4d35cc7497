#include "host/OSGSystem/Geometry.h"
#include "scene/NodeProperties.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/import/FileLoaderTest.h"

using testing::ElementsAre;

namespace
{

/// What the loader job asks of its host, in order.
class FileLoaderCalls : public FileLoaderTest
{
protected:
    using Calls = std::vector<std::string>;

    static Calls callsOf(const Job& job)
    {
        Calls calls;
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(call); });
        job->process();
        return calls;
    }

    static std::string id(const osg::NodePtr& node) { return std::to_string(node->getContainerId()); }
    static std::string text(const osg::NodePtr& node) { return "node " + id(node) + " '" + nameOf(node) + "'"; }
    std::string file() const { return QStringLiteral("'%1'").arg(m_file).toStdString(); }
};

TEST_F(FileLoaderCalls, OfThePlainRoad)
{
    const std::string part = text(m_part);
    EXPECT_THAT(callsOf(makeJob(m_file, wrapped(m_part))),
                ElementsAre("znNodeUtils::getLock(" + part + ")", "znNodeUtils::hasLockedParent(" + part + ")",
                            "znNodeUtils::isUneditedAssetRoot(" + part + ")", "znScenegraph::isEmpty()",
                            "znFileIO::load([" + file() + "], " + part + ", false, false, true)",
                            "znFileIO::getLoadedGeometriesList()"));
}

TEST_F(FileLoaderCalls, OfAFailedPlainRoadDoNotAskForTheResult)
{
    const std::string part = text(m_part);
    EXPECT_THAT(callsOf(makeJob(m_missing, wrapped(m_part))),
                ElementsAre("znNodeUtils::getLock(" + part + ")", "znNodeUtils::hasLockedParent(" + part + ")",
                            "znNodeUtils::isUneditedAssetRoot(" + part + ")", "znScenegraph::isEmpty()",
                            "znFileIO::load(['" + m_missing.toStdString() + "'], " + part + ", false, false, true)"));
}

TEST_F(FileLoaderCalls, WithoutTargetAndSelectionGoOnWithANullNode)
{
    m_root->subChild(m_part);
    const Job job = makeJob(m_missing, zndNode());
    EXPECT_THAT(callsOf(job),
                ElementsAre("znScenegraph::getSelectedNode()", "znNodeUtils::getLock(null)",
                            "znNodeUtils::hasLockedParent(null)", "znNodeUtils::isUneditedAssetRoot(null)",
                            "znScenegraph::isEmpty()",
                            "znFileIO::load(['" + m_missing.toStdString() + "'], null, true, false, true)"));
}

TEST_F(FileLoaderCalls, FetchTheRootInPlaceOfALockedTarget)
{
    osg::setLocked(m_part, true);
    const Calls calls = callsOf(makeJob(m_file, wrapped(m_part)));
    EXPECT_THAT(calls, ElementsAre("znNodeUtils::getLock(" + text(m_part) + ")", "znScenegraph::getRoot()",
                                   "znScenegraph::getRoot()", "znScenegraph::isEmpty()",
                                   "znFileIO::load([" + file() + "], " + text(m_root) + ", false, false, true)",
                                   "znFileIO::getLoadedGeometriesList()"));
}

TEST_F(FileLoaderCalls, UseTheRootOnlyToCompareWhenItIsTheTarget)
{
    osg::setLocked(m_root, true);
    const Calls calls = callsOf(makeJob(m_file, wrapped(m_root)));
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "znScenegraph::getRoot()"), 1);
}

TEST_F(FileLoaderCalls, AskForNoLockOfATargetThatIsDrawn)
{
    const osg::NodePtr drawn = osg::makeNodeFor(osg::GeometryBase::create());
    m_part->addChild(drawn);
    EXPECT_THAT(callsOf(makeJob(m_file, wrapped(drawn))),
                ElementsAre("znScenegraph::getRoot()", "znScenegraph::getRoot()", "znScenegraph::isEmpty()",
                            "znFileIO::load([" + file() + "], " + text(m_root) + ", false, false, true)",
                            "znFileIO::getLoadedGeometriesList()"));
}

TEST_F(FileLoaderCalls, OfARefresh)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    setSmartPath(reference, m_file);
    const std::string node = text(reference), number = id(reference);
    EXPECT_THAT(callsOf(makeJob(m_file, wrapped(reference))),
                ElementsAre("znNodeUtils::getLock(" + node + ")", "znNodeUtils::hasLockedParent(" + node + ")",
                            "znNodeUtils::isUneditedAssetRoot(" + node + ")",
                            "zndReferenceNode::hasSmartReference(" + number + ")",
                            "zndReferenceNode::loadSmartReference(" + number + ")",
                            "zndNode::setName(" + number + ", 'Größe 1')",
                            "znTypeConverter::convertNode(" + number + ")"));
}

TEST_F(FileLoaderCalls, OfAFill)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesSplicedNodes("Größe 1");
    const std::string node = text(reference), number = id(reference);
    const Calls calls = callsOf(makeJob(m_file, wrapped(reference)));
    EXPECT_THAT(calls, ElementsAre("znNodeUtils::getLock(" + node + ")", "znNodeUtils::hasLockedParent(" + node + ")",
                                   "znNodeUtils::isUneditedAssetRoot(" + node + ")",
                                   "zndReferenceNode::hasSmartReference(" + number + ")", "znScenegraph::isEmpty()",
                                   "znFileIO::load([" + file() + "], node " + std::to_string(lastLoad().parentId) +
                                       ", false, false, false)"));
}

TEST_F(FileLoaderCalls, OfANewSmartReference)
{
    const std::string part = text(m_part), file = this->file();
    const Job job = makeJob(m_file, wrapped(m_part));
    job->setImportAsSmartReference(true);
    const Calls calls = callsOf(job);
    const std::string number = id(m_part->getChild(0));
    EXPECT_THAT(calls, ElementsAre("znNodeUtils::getLock(" + part + ")", "znNodeUtils::hasLockedParent(" + part + ")",
                                   "znNodeUtils::isUneditedAssetRoot(" + part + ")",
                                   "znTypeConverter::convertNode(" + part + ")",
                                   "znReferenceService::createReference(" + id(m_part) + ")",
                                   "zndReferenceNode::setSmartPath(" + number + ", " + file + ")",
                                   "zndReferenceNode::loadSmartReference(" + number + ")",
                                   "zndNode::setName(" + number + ", 'Größe 1')",
                                   "znTypeConverter::convertNode(" + number + ")"));
}

} // namespace
