#pragma once

#include "importer/inventory/AttributeChoice.h"
#include "importer/inventory/PartsList.h"
#include "importer/inventory/SceneQuery.h"

#include <QString>

#include <optional>

namespace znimport
{

struct CommandLine;

/// What a command line wants of the scene before it is shown and written.
struct SceneChoices {
    std::optional<importer::inventory::SceneQuery> keep;
    std::optional<importer::inventory::SceneQuery> hide;
    importer::inventory::AttributeChoice attributes;
    importer::inventory::PartsListLevels levels = importer::inventory::PartsListLevels::Flat;
};

/// Reads the options into `choices`. Gives the sentence that says what is wrong with them; nothing when all is right.
std::optional<QString> readChoices(const CommandLine& line, SceneChoices& choices);

/// Takes what is to be kept or hidden below `scene`. Gives a sentence when nothing is to be kept.
std::optional<QString> select(const osg::NodePtr& scene, const CommandLine& line, const SceneChoices& choices);

/// Shows what is hidden at first, as far as the line wants it.
void show(const osg::NodePtr& scene, const CommandLine& line);

} // namespace znimport
