#include "tools/ptxconvert/OutputFile.h"

#include "standalone/scenefile/SceneFile.h"
#include "tools/ptxconvert/core/FileDescriptor.h"
#include "tools/ptxconvert/core/LastWords.h"

#include <QString>

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace ptx
{

namespace
{

Failure cannotWrite(const std::string& path, const std::string& why)
{
    return {ExitCode::OutputFailed, "cannot write " + path + ": " + why};
}

} // namespace

OutputFile::OutputFile(const std::string& path)
    : m_path(path), m_temporary(path + "." + std::to_string(::getpid()) + ".part")
{
}

Trouble OutputFile::prepare() const
{
    if (!FileDescriptor(::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666)))
        return cannotWrite(m_path, std::strerror(errno));
    return std::nullopt;
}

Trouble OutputFile::write(const osg::NodePtr& root) const
{
    const osg::SceneFileWriteResult result = osg::writeSceneFile(root, QString::fromStdString(m_temporary));
    if (result.error)
        return cannotWrite(m_path, result.error->message.toStdString());
    lastwords::outputStands();
    if (std::rename(m_temporary.c_str(), m_path.c_str()) != 0)
        return cannotWrite(m_path, std::strerror(errno));
    return std::nullopt;
}

void OutputFile::discard() const
{
    ::unlink(m_temporary.c_str());
}

} // namespace ptx
