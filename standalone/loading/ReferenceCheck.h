#pragma once

#include "files/References.h"
#include "host/OSGSystem/Node.h"

namespace zn
{
class Session;
} // namespace zn

namespace zn::loading
{

/// What the running import was asked for; empty without one. A state of the session.
struct ImportedFile {
    QString path; ///< absolute
};

/// Which files a file may name, by the settings of `session`.
files::references::Policy referencePolicy(Session& session);

/// Which documents the running import of `session` reads; all without one.
files::DocumentRules documentRules(Session& session);

/// Why the document `path` may not be read within the running import; nothing when it may, and without one. What lies
/// in the session's own folder was put there by the import itself.
std::optional<files::references::Refusal> refusalOfDocument(Session& session, const QString& path);

/// Takes the names of part files that may not be read out of the references below `root`, the tree of a scene file that
/// a converter made: what comes back from it is not trusted. The nodes tell of each as of a part that is missing.
void dropRefusedReferences(Session& session, const osg::NodePtr& root);

} // namespace zn::loading
