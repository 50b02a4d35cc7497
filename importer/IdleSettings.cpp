#include "importer/IdleSettings.h"

#include "standalone/session/SettingGroups.h"

#include <initializer_list>

namespace importer
{

QStringList idleSettings(Source source, const zn::OptimizeSettings& settings)
{
    const bool isCadFile = source == Source::CadFile;
    const bool isMeshFile = source == Source::MeshFile;
    const bool keepsReferences = settings.sourceReferences == zn::OptimizeSettings::References::Keep;
    struct Row {
        const zn::AnySetting& setting;
        bool asks; ///< for something
        bool acts; ///< on these trees
    };
    const std::initializer_list<Row> rows = {
        {settings.removeEmptyGroups, settings.removeEmptyGroups, false},
        {settings.flushTransformations, settings.flushTransformations, isCadFile || isMeshFile},
        // The solid kernel wants the parts of a CAD file apart.
        {settings.mergeGeometries, settings.mergeGeometries, isMeshFile || (isCadFile && !settings.solidKernel)},
        {settings.keepNurbs, settings.keepNurbs, !isMeshFile},
        {settings.unshareNodes, settings.unshareNodes, isCadFile || isMeshFile},
        {settings.sourceReferences, keepsReferences, !isMeshFile},
        {settings.solidKernel, settings.solidKernel, isCadFile || source == Source::Document},
    };
    QStringList names;
    for (const Row& row : rows)
        if (row.asks && !row.acts)
            names << row.setting.row().name;
    return names;
}

} // namespace importer
