#include "ptx/readers/iges/IgesModule.h"

#include "ptx/occt/OcctVersion.h"
#include "ptx/readers/iges/IgesReader.h"

const ptx::readers::Module* ptxiges()
{
    static const ptx::readers::Module module = ptx::readers::moduleOf(ptx::occt::occtVersion(), ptx::iges::read);
    return &module;
}
