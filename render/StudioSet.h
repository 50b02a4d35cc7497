#pragma once

#include "files/Expected.h"
#include "render/Snapshot.h"
#include "render/studio/Environment.h"
#include "render/studio/MaterialTable.h"

#include <memory>

namespace render
{

/// What the studio look has beside the scene.
struct StudioSet {
    studio::MaterialTable materials;
    studio::Environment environment;
};

/// For the parts of `list`; null for other looks. Fails for an environment that cannot be read.
files::Expected<std::unique_ptr<StudioSet>> studioSetFor(const geometry::rays::PartList& list,
                                                         const SnapshotOptions& options, int threads);

} // namespace render
