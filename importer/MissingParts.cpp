#include "importer/MissingParts.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "standalone/scenefile/ConvertedTree.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <map>
#include <set>

std::vector<znMissingPart> partsLeftOut(const osg::NodePtr& root)
{
    std::vector<znMissingPart> parts;
    std::set<std::string> seen;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        for (const std::string& tag : osg::tagsOf(node)) {
            const auto part = osg::converted::missingPart(tag);
            if (part && seen.insert(tag).second)
                parts.push_back({QString::fromStdString(part->file), QString::fromStdString(part->reason)});
        }
        return osg::Action::Continue;
    });
    return parts;
}

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("MissingParts", text);
}

/// The path that an unread reference names; empty for any other node.
std::string unreadFile(const osg::NodePtr& node)
{
    const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
    if (!reference || reference->getState() == 2)
        return {};
    const osg::FileReferencePtr file =
        reference->getSourceFile() ? reference->getSourceFile() : reference->getSmartFile();
    return file ? file->getPath() : std::string();
}

/// The name of the node that a reference hangs below.
QString ownerOf(const osg::NodePtr& node)
{
    const char* name = osg::getName(node->getParent());
    return QString::fromUtf8(name ? name : "");
}

QString reasonFor(const QString& file, const std::vector<znMissingPart>& failed)
{
    for (const znMissingPart& part : failed)
        if (part.file == file)
            return part.reason;
    return QFileInfo::exists(file) ? tr("the file could not be read") : tr("there is no such file");
}

} // namespace

std::vector<znMissingPart> unreadParts(const osg::NodePtr& root, const std::vector<znMissingPart>& failed)
{
    std::vector<QString> files;
    std::map<QString, QStringList> owners;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const QString file = QString::fromStdString(unreadFile(node));
        if (file.isEmpty())
            return osg::Action::Continue;
        if (owners.find(file) == owners.end())
            files.push_back(file);
        owners[file].append(ownerOf(node));
        return osg::Action::Continue;
    });
    std::vector<znMissingPart> parts;
    for (const QString& file : files) {
        const QString users = owners[file].join(QStringLiteral(", "));
        parts.push_back({file, tr("%1 (used by %2)").arg(reasonFor(file, failed), users)});
    }
    return parts;
}
