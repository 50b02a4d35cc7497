#include "ptx/conversion/OutputFile.h"

#include "files/OutputFile.h"
#include "files/scenefile/SceneFile.h"
#include "ptx/core/FileDescriptor.h"
#include "ptx/core/ProcessEnd.h"

#include <QString>

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace ptx::conversion
{

namespace
{

core::Failure cannotWrite(const std::string& path, const std::string& why)
{
    return {core::ExitCode::OutputFailed, "cannot write " + path + ": " + why};
}

} // namespace

OutputFile::OutputFile(const std::string& path)
    : m_path(path),
      m_unfinished(QFile::encodeName(files::OutputFile::unfinishedPath(QString::fromStdString(path))).toStdString())
{
}

core::Trouble OutputFile::prepare() const
{
    if (std::filesystem::is_directory(m_path))
        return cannotWrite(m_path, "it is a folder");
    if (!core::FileDescriptor(::open(m_unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)))
        return cannotWrite(m_path, std::strerror(errno));
    ::unlink(m_unfinished.c_str());
    return std::nullopt;
}

core::Trouble OutputFile::write(const osg::NodePtr& root) const
{
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(
        root, QString::fromStdString(m_path), {.lasting = files::OutputFile::Lasting::No});
    if (!result)
        return cannotWrite(m_path, result.error().message.toStdString());
    core::processend::outputStands();
    return std::nullopt;
}

} // namespace ptx::conversion
