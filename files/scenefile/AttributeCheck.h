#pragma once

#include "files/Error.h"

#include <scene_generated.h>

#include <cstdint>
#include <optional>

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

/// What a table of attributes may take.
struct AttributeLimits {
    std::uint64_t holders = 0;   ///< nodes, cores and materials together
    std::uint64_t textBytes = 0; ///< of all texts of all rows, each counted as often as it is used
    std::uint64_t perText = 0;   ///< what each text counts beside its bytes
};

struct AttributeDefect {
    files::ErrorCode code;
    QString message;
    const void* place; ///< in the table
};

/// The first defect of a table: an index without a target, or texts beyond the limit. Without one, no row can lead
/// whoever reads it out of the table.
std::optional<AttributeDefect> defectOf(const fb::AttributeTable& table, const AttributeLimits& limits);

} // namespace osg::scenefile
