#include "host/znUtils/znFile.h"

#include "standalone/znUtils/TemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace zn::utils
{

namespace
{

std::string& temporaryFolder()
{
    static std::string current;
    return current;
}

bool isSeparator(char letter)
{
    return letter == '/' || letter == '\\';
}

std::string fileName(const std::string& path)
{
    // Without a separator the sum wraps to 0.
    return path.substr(path.find_last_of("/\\") + 1);
}

/// The place of the dot before the extension, `npos` if the name has none.
std::size_t extensionDot(const std::string& name)
{
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? std::string::npos : dot;
}

} // namespace

void setTemporaryFolder(std::string folder)
{
    temporaryFolder() = std::move(folder);
}

} // namespace zn::utils

bool znFile::exists(const std::string& path, bool onlyFiles, bool onlyReadable)
{
    const QFileInfo info(QString::fromStdString(path));
    return info.exists() && (!onlyFiles || info.isFile()) && (!onlyReadable || info.isReadable());
}

void znFile::remove(const std::string& path)
{
    // Qt prints a warning about an empty name.
    if (!path.empty())
        QFile::remove(QString::fromStdString(path));
}

std::string znFile::getTmpDir()
{
    const std::string& folder = zn::utils::temporaryFolder();
    return folder.empty() ? QDir::tempPath().toStdString() : folder;
}

std::string znFile::convertSeparators(const std::string& path)
{
    std::string result;
    result.reserve(path.size());
    for (const char letter : path) {
        if (!zn::utils::isSeparator(letter))
            result += letter;
        else if (result.empty() || result.back() != '/')
            result += '/';
    }
    const std::size_t leading = std::min(path.find_first_not_of("/\\"), path.size());
    return leading == 2 ? '/' + result : result;
}

std::string znFile::getExtension(const std::string& path)
{
    const std::string name = zn::utils::fileName(path);
    const std::size_t dot = zn::utils::extensionDot(name);
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

std::string znFile::getBaseName(const std::string& path)
{
    const std::string name = zn::utils::fileName(path);
    return name.substr(0, zn::utils::extensionDot(name));
}
