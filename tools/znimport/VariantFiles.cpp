#include "tools/znimport/VariantFiles.h"

#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/VariantSets.h"
#include "tools/znimport/KeptLook.h"
#include "tools/znimport/VariantFileNames.h"
#include "tools/znimport/VariantSelection.h"

#include <QDir>

namespace znimport
{

WrittenOutputs writeVariantFiles(const CommandLine& line, zn::StandaloneSession& session,
                                 const std::function<WrittenOutputs(const QString& file)>& write)
{
    WrittenOutputs result;
    const QDir folder(line.variantFilesFolder);
    if (!folder.mkpath(QStringLiteral("."))) {
        result.error = QStringLiteral("%1: the folder cannot be made").arg(folder.path());
        return result;
    }
    const QStringList sets = zn::variantSetNames(session);
    if (sets.isEmpty())
        result.warnings << QStringLiteral("there are no variant sets to write files of");
    const QStringList names = variantFileNames(sets);
    for (int i = 0; i < sets.size() && !result.error; ++i) {
        const KeptLook look(session);
        result.warnings << chooseVariantSet(session, sets[i]).warnings;
        const WrittenOutputs written = write(folder.filePath(names[i] + QStringLiteral(".glb")));
        result.error = written.error;
        result.warnings << written.warnings;
        result.files << written.files;
    }
    return result;
}

} // namespace znimport
