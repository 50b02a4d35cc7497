#include "host/znKernel/znFileIOHelper.h"

#include "protocol/Formats.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

#include <string>
#include <unordered_map>

using namespace znCADFileTypes;

namespace
{

std::string extensionOf(const QString& path)
{
    return QFileInfo(path).suffix().toLower().toStdString();
}

/// From extension to format, for all extensions of the table. Two of them stand in two rows.
const std::unordered_map<std::string, FileType>& typesByExtension()
{
    static const auto types = [] {
        std::unordered_map<std::string, FileType> result;
        for (const auto& [type, row] : extensionTable())
            for (const std::string& extension : row.extensions)
                result.emplace(extension, type);
        result["prt"] = NX;
        result["asm"] = ProEngineer;
        return result;
    }();
    return types;
}

} // namespace

FileType znFileIOHelper::getFileTypeByFileName(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::getFileTypeByFileName", path);
    const auto found = typesByExtension().find(extensionOf(path));
    return found == typesByExtension().end() ? Undefined : found->second;
}

bool znFileIOHelper::isAssemblyFile(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::isAssemblyFile", path);
    return protocol::mayNamePartFiles(extensionOf(path));
}

bool znFileIOHelper::canContainMixedAssemblies(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::canContainMixedAssemblies", path);
    const znStandaloneSession* session = znStandaloneSession::current();
    if (session && session->kernel().canContainMixedAssemblies)
        return session->kernel().canContainMixedAssemblies(path);
    return mixedAssemblyTypes().contains(getFileTypeByFileName(path));
}

bool znFileIOHelper::isStylarFile(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::isStylarFile", path);
    return getFileTypeByFileName(path) == Stylar;
}

bool znFileIOHelper::isBrantelMechanorFile(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::isBrantelMechanorFile", path);
    return getFileTypeByFileName(path) == Mechanor;
}

bool znFileIOHelper::isPtxFile(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::isPtxFile", path);
    return protocol::isConverted(extensionOf(path));
}

bool znFileIOHelper::isPLMXMLFile(const QString& path)
{
    const zn::TracedCall call("znFileIOHelper::isPLMXMLFile", path);
    return getFileTypeByFileName(path) == PLMXML;
}
