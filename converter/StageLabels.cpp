#include "converter/StageLabels.h"

#include "protocol/Stage.h"

#include <QCoreApplication>

#include <stdexcept>
#include <unordered_map>

namespace
{

using protocol::Stage;
using protocol::stageWord;

const std::unordered_map<std::string, const char*> StageLabels = {
    {stageWord(Stage::ReadAndProcess), QT_TRANSLATE_NOOP("PtxToOsg", "Reading")},
    {stageWord(Stage::Convert), QT_TRANSLATE_NOOP("PtxToOsg", "Converting")},
    {stageWord(Stage::ProcessStructure), QT_TRANSLATE_NOOP("PtxToOsg", "Processing")},
    {stageWord(Stage::Merge), QT_TRANSLATE_NOOP("PtxToOsg", "Merging")},
    {stageWord(Stage::Stitch), QT_TRANSLATE_NOOP("PtxToOsg", "Stitching")},
    {stageWord(Stage::FixSurfaceOrientation), QT_TRANSLATE_NOOP("PtxToOsg", "Unifying surface normals")},
    {stageWord(Stage::Tessellate), QT_TRANSLATE_NOOP("PtxToOsg", "Tessellating")},
    {stageWord(Stage::BuildOsgTree), QT_TRANSLATE_NOOP("PtxToOsg", "Building scene tree")},
    {stageWord(Stage::Finalize), QT_TRANSLATE_NOOP("PtxToOsg", "Cleaning up")},
    {stageWord(Stage::Write), QT_TRANSLATE_NOOP("PtxToOsg", "Writing file")},
    {stageWord(Stage::Finished), QT_TRANSLATE_NOOP("PtxToOsg", "Finished conversion")},
    {stageWord(Stage::Unknown), QT_TRANSLATE_NOOP("PtxToOsg", "Unknown")},
};

const char* labelOf(const std::string& stage)
{
    try {
        return StageLabels.at(stage);
    } catch (const std::out_of_range&) {
        return StageLabels.at(stageWord(Stage::Unknown));
    }
}

} // namespace

QString znStageLabels::translated(const std::string& stage)
{
    return QCoreApplication::translate("PtxToOsg", labelOf(stage));
}
