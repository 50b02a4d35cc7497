// Readers that do not belong to the program: that of STEP is of an earlier version, those for hosts see the types that
// they share with the program otherwise than it does. Whoever calls one of them has not looked.

#include "ptx/readers/Module.h"
#include "tools/ptxconvert/documents/DocumentModule.h"
#include "tools/ptxconvert/meshes/MeshModule.h"

#include <cstdlib>

namespace
{

const ptx::readers::Module parts{"0.0.9", sizeof(ptx::model::Job), sizeof(ptx::model::Model), "none",
                                 [](const ptx::model::Job&) -> ptx::core::Outcome<ptx::model::Model> { std::abort(); }};

const ptxconvert::MeshModule meshes{
    ZN_VERSION, sizeof(files::ReadOptions) + 8, sizeof(files::ReadResult),
    [](const QString&, const files::ReadOptions&) -> files::ReadResult { std::abort(); }};

const ptxconvert::DocumentModule documents{
    ZN_VERSION, sizeof(ptx::conversion::ReadDocument) + 8,
    [](const QString&, const QStringList&) -> ptx::conversion::ReadDocument { std::abort(); }};

} // namespace

extern "C" const ptx::readers::Module* ptxstep()
{
    return &parts;
}

const ptxconvert::MeshModule* ptxmesh()
{
    return &meshes;
}

const ptxconvert::DocumentModule* ptxplmxml()
{
    return &documents;
}
