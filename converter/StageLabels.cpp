#include "converter/StageLabels.h"

#include <QCoreApplication>

#include <stdexcept>
#include <unordered_map>

namespace
{

const std::unordered_map<std::string, const char*> StageLabels = {
    {"ReadAndProcess", QT_TRANSLATE_NOOP("PtxToOsg", "Reading")},
    {"Convert", QT_TRANSLATE_NOOP("PtxToOsg", "Converting")},
    {"ProcessStructure", QT_TRANSLATE_NOOP("PtxToOsg", "Processing")},
    {"Merge", QT_TRANSLATE_NOOP("PtxToOsg", "Merging")},
    {"Stitch", QT_TRANSLATE_NOOP("PtxToOsg", "Stitching")},
    {"FixSurfaceOrientation", QT_TRANSLATE_NOOP("PtxToOsg", "Unifying surface normals")},
    {"Tessellate", QT_TRANSLATE_NOOP("PtxToOsg", "Tessellating")},
    {"BuildOsgTree", QT_TRANSLATE_NOOP("PtxToOsg", "Building scene tree")},
    {"Finalize", QT_TRANSLATE_NOOP("PtxToOsg", "Cleaning up")},
    {"Write", QT_TRANSLATE_NOOP("PtxToOsg", "Writing file")},
    {"Finished", QT_TRANSLATE_NOOP("PtxToOsg", "Finished conversion")},
    {"Unknown", QT_TRANSLATE_NOOP("PtxToOsg", "Unknown")},
};

const char* labelOf(const std::string& stage)
{
    try {
        return StageLabels.at(stage);
    } catch (const std::out_of_range&) {
        return StageLabels.at("Unknown");
    }
}

} // namespace

QString znStageLabels::translated(const std::string& stage)
{
    return QCoreApplication::translate("PtxToOsg", labelOf(stage));
}
