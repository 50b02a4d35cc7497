#include "host/znKernel/znPreferences.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

const znMessage& znPreferences::getData()
{
    const zn::TracedCall call("znPreferences::getData");
    znStandaloneSession& session = znStandaloneSession::require();
    const QString folder = session.settings().files.temporaryFolder;
    // What somebody put into the preferences directly stays until the setting changes.
    if (folder != session.kernel().preferredFolder)
        session.preferences().set("FileIO tmp path", folder, true);
    session.kernel().preferredFolder = folder;
    return session.preferences();
}
