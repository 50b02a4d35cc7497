#pragma once

#include "files/SceneReaders.h"
#include "host/OSGSystem/Cast.h"
#include "host/znKernel/znTypeConverter.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "import/znFileLoaderJob.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/LoadRecorder.h"
#include "tests/support/QtPrinters.h"

#include <QSignalSpy>

#include <memory>

/// The loader job whose work is done at once, without its timer.
class DirectFileLoaderJob final : public znFileLoaderJob
{
public:
    DirectFileLoaderJob(const QString& file, const zndNode& target) : znFileLoaderJob(file, target, nullptr) {}
    using znFileLoaderJob::process;
};

/// A scene of a part and a reference below the root, and files to load.
class FileLoaderTest : public SessionTest
{
protected:
    using Job = std::unique_ptr<DirectFileLoaderJob>;

    static zndNode wrapped(const osg::NodePtr& node) { return znTypeConverter::convertNode(node); }

    static Job makeJob(const QString& file, const zndNode& target)
    {
        return std::make_unique<DirectFileLoaderJob>(file, target);
    }
    /// A job that has done its work.
    static Job load(const QString& file, const zndNode& target)
    {
        Job job = makeJob(file, target);
        job->process();
        return job;
    }

    /// A new reference node below `parent`; null for none.
    static osg::NodePtr addReference(const osg::NodePtr& parent, const char* name)
    {
        const osg::NodePtr node = osg::makeNodeFor(osg::ExtReferenceBase::create());
        osg::setName(node, name);
        if (parent)
            parent->addChild(node);
        return node;
    }
    static void setSmartPath(const osg::NodePtr& reference, const QString& path)
    {
        zndReferenceNode(reference->getContainerId()).setSmartPath(path);
    }
    static osg::ExtReferencePtr referenceCore(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::ExtReference>(node->getCore());
    }

    LoadRecorder::Request lastLoad() const { return m_loads.latest(); }

    /// What the splice leaves behind: the node that it loaded below, and the emptied root of the file.
    void leavesSplicedNodes(const std::string& fileName)
    {
        leavesOnPurpose({"Node", "Node " + fileName, "Group", "Name"});
    }

    const LoadRecorder m_loads{m_session};
    const osg::NodePtr m_root = m_session.sceneRoot();
    const osg::NodePtr m_part = addGroup(m_root, "part");
    const QString m_file = writeTriangle(QString::fromUtf8("Größe 1.obj"));
    const QString m_missing = path(QStringLiteral("missing.obj"));
};
