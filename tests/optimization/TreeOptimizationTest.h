#pragma once

#include "optimization/znPtxTreeOptimizationJob.h"
#include "scene/Tags.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"
#include "tests/support/QtPrinters.h"

#include <memory>
#include <string>
#include <vector>

/// Optimisations of small trees, with the calls that they make into the host.
class TreeOptimizationTest : public TreeTest
{
protected:
    void TearDown() override
    {
        job.reset();
        tree = osg::NodePtr();
        TreeTest::TearDown();
    }

    void set(const char* name, const char* value)
    {
        EXPECT_FALSE(m_session.settings().set(QString::fromLatin1(name), QString::fromLatin1(value))) << name;
    }

    /// Runs the job for the tree under this file name; notes its signals and calls.
    znCADFileTypes::JobState run(const char* fileName, const osg::NodePtr& parent = {})
    {
        job = std::make_unique<znPtxTreeOptimizationJob>(QString::fromUtf8(fileName), tree.get(), parent);
        return runJob();
    }
    znCADFileTypes::JobState runJob()
    {
        calls.clear();
        QObject::connect(job.get(), &znAbstractJob::started, job.get(), [this] { calls.push_back("started"); });
        QObject::connect(job.get(), &znAbstractProcessingJob::processingFinished, job.get(),
                         [this] { calls.push_back("processingFinished"); });
        const zn::CallTrace trace([this](const std::string& call) { calls.push_back(call); });
        job->run();
        return job->getState();
    }

    /// The names of the calls, without their arguments and without those in `leftOut`.
    std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (const std::string& call : calls)
            result.push_back(call.substr(0, call.find('(')));
        return result;
    }
    bool wasCalled(const std::string& name) const
    {
        const std::vector<std::string> all = names();
        return std::find(all.begin(), all.end(), name) != all.end();
    }
    /// The calls of this operation with their arguments.
    std::vector<std::string> callsOf(const std::string& name) const
    {
        std::vector<std::string> result;
        for (const std::string& call : calls)
            if (call.compare(0, name.size() + 1, name + "(") == 0)
                result.push_back(call);
        return result;
    }
    std::string treeText() const { return "node " + std::to_string(tree->getContainerId()) + " 'Tree'"; }

    static osg::NodePtr makeTree()
    {
        const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
        osg::setName(node, "Tree");
        add(node, geometry(), "Part");
        return node;
    }

    osg::NodePtr scene() const { return m_session.sceneRoot(); }

    osg::RefPtr<osg::NodePtr> tree{makeTree()};
    std::unique_ptr<znPtxTreeOptimizationJob> job;
    std::vector<std::string> calls;
};
