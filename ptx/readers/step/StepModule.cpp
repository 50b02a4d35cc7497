#include "ptx/readers/step/StepModule.h"

#include "ptx/occt/OcctVersion.h"
#include "ptx/readers/step/StepReader.h"

const ptx::readers::Module* ptxstep()
{
    static const ptx::readers::Module module = ptx::readers::moduleOf(ptx::occt::occtVersion(), ptx::step::read);
    return &module;
}
