#include "loader/UnloadedPartFiles.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znJobProcessing/znParallelJobManager.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znImportOptions.h"
#include "host/znOpenSGExt/ExtReference.h"

namespace parts
{

namespace
{

/// The path that an empty reference node waits for; an empty text for any other node.
std::string awaitedPath(const osg::Node& node)
{
    const auto reference = osg::fcCast<osg::ExtReference>(node.getCore());
    if (!reference || node.getNChildren() != 0)
        return std::string();
    const osg::FileReferencePtr source = reference->getSourceFile();
    return source ? source->getPath() : std::string();
}

} // namespace

bool wantsPartFiles(const QString& originalFile)
{
    // With fewer than two processes the converter has inlined the parts.
    if (!znFileIOHelper::isAssemblyFile(originalFile) || znParallelJobManager::the()->getMaxNumProcesses() < 2)
        return false;
    const auto type = znFileIOHelper::getFileTypeByFileName(originalFile);
    return znImportOptions(znCADFileTypes::fileTypeName(type), false, true).getImportReferencedFiles();
}

UnloadedParts unloadedPartsOf(const osg::NodePtr& root)
{
    UnloadedParts parts;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (!node)
            return osg::Action::Skip;
        if (node == root)
            return osg::Action::Continue;
        if (const std::string path = awaitedPath(*node); !path.empty())
            parts[path].push_back(node);
        return osg::Action::Continue;
    });
    return parts;
}

} // namespace parts
