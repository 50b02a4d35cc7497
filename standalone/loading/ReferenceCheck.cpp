#include "standalone/loading/ReferenceCheck.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditScope.h"
#include "standalone/session/Session.h"

#include <QDir>
#include <QFileInfo>

namespace zn::loading
{

namespace
{

using files::references::Policy;
using files::references::Rule;

Rule ruleOf(FileSettings::References setting)
{
    using References = FileSettings::References;
    return setting == References::Parts ? Rule::Parts : setting == References::Below ? Rule::Below : Rule::None;
}

void clearPath(const osg::FileReferencePtr& file)
{
    const osg::EditScope edit(file, osg::FileReference::PathFieldMask);
    file->setPath({});
}

void addMissing(const osg::NodePtr& node, const std::string& file, files::references::Refusal refusal)
{
    std::vector<std::string> tags = osg::tagsOf(node);
    tags.push_back(osg::scenefile::converted::missingTag({file, files::textOf(refusal).toStdString()}));
    osg::setTags(node, std::move(tags));
}

void check(const Policy& policy, const osg::NodePtr& node)
{
    const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
    if (!reference)
        return;
    for (const osg::FileReferencePtr& file : {reference->getSourceFile(), reference->getSmartFile()}) {
        const std::string path = file ? file->getPath() : std::string();
        if (path.empty())
            continue;
        if (const auto refusal = policy.refusal(files::references::Use::Document, path, policy.top)) {
            clearPath(file);
            addMissing(node, path, *refusal);
        }
    }
}

} // namespace

Policy referencePolicy(Session& session)
{
    const FileSettings& settings = session.settings().files;
    const QString imported = session.state<ImportedFile>().path;
    Policy policy;
    policy.rule = ruleOf(settings.references);
    if (!imported.isEmpty())
        policy.top = QFileInfo(imported).absolutePath().toStdString();
    for (const QString& folder : settings.referenceFolders.value().split(QDir::listSeparator(), Qt::SkipEmptyParts))
        policy.folders.push_back(QFileInfo(folder).absoluteFilePath().toStdString());
    return policy;
}

files::DocumentRules documentRules(Session& session)
{
    return {referencePolicy(session), session.state<ImportedFile>().path,
            QDir::cleanPath(QFileInfo(session.temporaryFolder()).absoluteFilePath())};
}

std::optional<files::references::Refusal> refusalOfDocument(Session& session, const QString& path)
{
    return documentRules(session).refusal(path);
}

void dropRefusedReferences(Session& session, const osg::NodePtr& root)
{
    if (!root || !osg::scenefile::converted::isConvertedTree(root) || session.state<ImportedFile>().path.isEmpty())
        return;
    const Policy policy = referencePolicy(session);
    if (policy.rule == Rule::Parts)
        return;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        // The root's own reference names the file that was converted.
        if (node && node != root)
            check(policy, node);
        return node ? osg::Action::Continue : osg::Action::Skip;
    });
}

} // namespace zn::loading
