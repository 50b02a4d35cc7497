#pragma once

#include "importer/ImportResult.h"

#include <chrono>

namespace importer
{

/// Listens to the steps of an optimisation: counts the tree between them and measures each without the counting.
/// A step that is left by an exception keeps the counts from before it as those after it.
class TreeStepRecorder
{
public:
    /// Appends to `steps`, which must live as long as the job that is listened to.
    TreeStepRecorder(const osg::NodePtr& root, std::vector<zn::TreeStep>& steps) : m_root(root), m_steps(&steps) {}

    /// A step of this name begins; null when the last one has ended.
    void operator()(const char* step);

private:
    using Clock = std::chrono::steady_clock;

    osg::RefPtr<osg::NodePtr> m_root;
    std::vector<zn::TreeStep>* m_steps;
    Clock::time_point m_begin;
};

} // namespace importer
