#pragma once

#include <QString>

#include <string>

/// The words for the user of the converter's stages, in the translation context "PtxToOsg".
namespace znStageLabels
{

/// The translated label of the stage word `stage`; that of "Unknown" for any other word.
QString translated(const std::string& stage);

} // namespace znStageLabels
