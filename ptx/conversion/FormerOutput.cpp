#include "ptx/conversion/FormerOutput.h"

#include "ptx/core/FileDescriptor.h"
#include "ptx/core/ProcessEnd.h"

#include <QCryptographicHash>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace ptx::conversion
{

namespace
{

namespace fs = std::filesystem;

std::string behindLink(const std::string& path)
{
    std::error_code error;
    const fs::path target = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : fs::path(path);
    return error ? path : target.string();
}

/// The name does not grow with that of the output, which may be as long as the system allows.
std::string asideOf(const fs::path& output)
{
    const QByteArray name = QByteArray::fromStdString(output.filename().string());
    const QByteArray hash = QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex().left(16);
    return (output.parent_path() / (".zn-" + hash.toStdString() + ".former")).string();
}

/// What is no file, may not be replaced or is read by this run stays in its place.
bool mayMove(const std::string& output, const std::string& input)
{
    std::error_code error;
    return fs::is_regular_file(output, error) && ::access(output.c_str(), W_OK) == 0 &&
           !fs::equivalent(output, input, error);
}

} // namespace

FormerOutput::FormerOutput(const std::string& output, const std::string& input) : m_output(behindLink(output))
{
    const std::string aside = asideOf(m_output);
    std::error_code error;
    const bool leftBehind = !fs::exists(m_output, error) && fs::is_regular_file(aside, error);
    if (leftBehind || mayMove(m_output, input))
        m_aside = aside;
}

FormerOutput::~FormerOutput()
{
    if (!m_isAway)
        return;
    std::rename(m_aside.c_str(), m_output.c_str());
    core::processend::putBack({}, {});
}

void FormerOutput::moveAside()
{
    if (m_aside.empty())
        return;
    core::processend::putBack(m_aside, m_output);
    std::rename(m_output.c_str(), m_aside.c_str());
    m_isAway = true;
}

void FormerOutput::drop()
{
    if (!m_isAway)
        return;
    m_isAway = false;
    core::processend::putBack({}, {});
    std::error_code error;
    // By what is open: in its box the process changes no rights by a name, which may be any file's.
    if (const core::FileDescriptor made(::open(m_output.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC)); made)
        ::fchmod(made.get(), static_cast<mode_t>(fs::status(m_aside, error).permissions()));
    fs::remove(m_aside, error);
}

} // namespace ptx::conversion
