#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/core/Outcome.h"

#include <string>

namespace ptx::conversion
{

/// The output, which appears under its name complete or not at all: the scene file is written under another name in the
/// same folder first.
class OutputFile
{
public:
    explicit OutputFile(const std::string& path);

    /// Where the scene file stands until it is complete; what a killed process has to remove.
    const std::string& unfinishedPath() const { return m_unfinished; }
    /// Makes sure that the folder takes files, before the work is done rather than after.
    core::Trouble prepare() const;
    /// Writes `root`. After that a request to stop is ignored.
    core::Trouble write(const osg::NodePtr& root) const;

private:
    std::string m_path;
    std::string m_unfinished;
};

} // namespace ptx::conversion
