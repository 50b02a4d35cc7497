#include "host/znKernel/znFileIOHelper.h"

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "protocol/Formats.h"
#include "standalone/session/Session.h"
#include "standalone/znKernel/ImportSettingValues.h"
#include "standalone/znKernel/MixedAssemblies.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

#include <string>
#include <unordered_map>

using namespace znCADFileTypes;

namespace
{

std::string extensionOf(const QString& path)
{
    return protocol::extensionOf(QFileInfo(path).fileName().toStdString());
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
    zn::Session* session = zn::Session::current();
    if (session && session->state<zn::kernel::MixedAssemblies>().canContain)
        return session->state<zn::kernel::MixedAssemblies>().canContain(path);
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

QString znFileIOHelper::getFileNameFromFileInfo(const osg::NodePtr& node)
{
    const zn::TracedCall call("znFileIOHelper::getFileNameFromFileInfo", node);
    const auto info =
        node ? osg::fcCast<osg::FileInfo>(node->findAttachment(osg::FileInfo::_type.getGroupId())) : osg::FileInfoPtr();
    return info ? QString::fromStdString(info->getFileName()) : QString();
}

zndPtxSettings znFileIOHelper::getImportSettingsByFileName(const QString& path, bool interactive)
{
    const zn::TracedCall call("znFileIOHelper::getImportSettingsByFileName", path, interactive);
    return zn::kernel::ptxSettings(zn::Session::require().settings());
}

zndSceneImportSettings znFileIOHelper::getGlobalSceneImportSettings()
{
    const zn::TracedCall call("znFileIOHelper::getGlobalSceneImportSettings");
    return zn::kernel::sceneImportSettings(zn::Session::require().settings());
}
