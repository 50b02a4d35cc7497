#include "host/znKernel/znPreferences.h"

#include "standalone/session/znStandaloneSession.h"

const znMessage& znPreferences::getData()
{
    znStandaloneSession& session = znStandaloneSession::require();
    const QString folder = session.settings().text(QStringLiteral("files.temporaryFolder"));
    if (!folder.isEmpty())
        session.preferences().set("FileIO tmp path", folder, true);
    return session.preferences();
}
