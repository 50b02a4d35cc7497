#include "importer/RunningImport.h"

#include "standalone/loading/ReferenceCheck.h"
#include "standalone/reading/ReaderProcess.h"
#include "standalone/session/Session.h"
#include "standalone/znKernel/LoadedGeometries.h"

#include <QFileInfo>

namespace importer
{

void beginImport(zn::Session& session, const QString& file)
{
    zn::reading::setCancelled(session, false);
    session.state<zn::loading::ImportedFile>().path = QFileInfo(file).absoluteFilePath();
}

void endImport(zn::Session& session)
{
    zn::reading::setCancelled(session, false);
    session.state<zn::kernel::LoadedGeometries>().entries.clear();
    session.state<zn::loading::ImportedFile>() = {};
}

} // namespace importer
