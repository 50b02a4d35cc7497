#pragma once

#include "host/OSGSystem/Node.h"
#include "tools/ptxconvert/core/Outcome.h"

#include <string>

namespace ptx
{

/// The output, which appears under its name complete or not at all.
class OutputFile
{
public:
    explicit OutputFile(const std::string& path);

    /// Where the output is written before it gets its name.
    const std::string& temporaryPath() const { return m_temporary; }
    /// Makes sure that the folder takes files, before the work is done rather than after.
    Trouble prepare() const;
    /// Writes `root` and gives the file its name. From then on a request to stop is ignored.
    Trouble write(const osg::NodePtr& root) const;
    /// Removes what is unfinished.
    void discard() const;

private:
    std::string m_path;
    std::string m_temporary;
};

} // namespace ptx
