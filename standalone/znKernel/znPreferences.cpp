#include "host/znKernel/znPreferences.h"

#include "standalone/session/Session.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

/// The value of the setting that the preferences were last told.
struct PreferredFolder {
    QString path;
};

} // namespace

const znMessage& znPreferences::getData()
{
    const zn::TracedCall call("znPreferences::getData");
    zn::Session& session = zn::Session::require();
    const QString folder = session.settings().files.temporaryFolder;
    QString& told = session.state<PreferredFolder>().path;
    // What somebody put into the preferences directly stays until the setting changes.
    if (folder != told)
        session.preferences().set("FileIO tmp path", folder, true);
    told = folder;
    return session.preferences();
}
