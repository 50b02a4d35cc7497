#include "ptx/readers/brep/BrepModule.h"

#include "ptx/occt/OcctVersion.h"
#include "ptx/readers/brep/BrepReader.h"

const ptx::readers::Module* ptxbrep()
{
    static const ptx::readers::Module module = ptx::readers::moduleOf(ptx::occt::occtVersion(), ptx::brep::read);
    return &module;
}
