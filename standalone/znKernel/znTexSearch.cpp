#include "host/znKernel/znTexSearch.h"

#include "standalone/session/Session.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "standalone/znUtils/CallTrace.h"

void znTexSearch::setCurrentFile(const char* file)
{
    const zn::TracedCall call("znTexSearch::setCurrentFile", file);
    zn::Session::require().state<zn::kernel::UserInterfaceState>().textureBase = file ? file : "";
}

void znTexSearch::clearCurrentFile()
{
    const zn::TracedCall call("znTexSearch::clearCurrentFile");
    zn::Session::require().state<zn::kernel::UserInterfaceState>().textureBase.clear();
}
