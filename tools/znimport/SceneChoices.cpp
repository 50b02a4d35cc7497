#include "tools/znimport/SceneChoices.h"

#include "importer/inventory/SceneSelection.h"
#include "tools/znimport/CommandLine.h"

#include <QFileInfo>

namespace znimport
{

namespace
{

using namespace importer::inventory;

std::optional<QString> readQuery(const char* option, const QString& text, std::optional<SceneQuery>& query)
{
    QString error;
    if (!text.isNull() && !(query = SceneQuery::parse(text, error)))
        return QStringLiteral("--%1 '%2': %3").arg(QLatin1String(option), text, error);
    return std::nullopt;
}

std::optional<QString> readAttributes(const CommandLine& line, AttributeChoice& choice)
{
    if (line.attributes == QLatin1String("none"))
        choice.detail = AttributeDetail::None;
    else if (line.attributes == QLatin1String("names"))
        choice.detail = AttributeDetail::Names;
    else if (!line.attributes.isEmpty() && line.attributes != QLatin1String("all"))
        return QStringLiteral("--attributes wants none, names or all, not '%1'").arg(line.attributes);
    for (const QString& pattern : line.attributeFilters)
        choice.patterns.push_back(pattern.toStdString());
    return std::nullopt;
}

std::optional<QString> readPartsList(const CommandLine& line, PartsListLevels& levels)
{
    const QString suffix = QFileInfo(line.bomFile).suffix().toLower();
    if (!line.bomFile.isEmpty() && suffix != QLatin1String("csv") && suffix != QLatin1String("json"))
        return QStringLiteral("--bom writes .csv and .json files, not '%1'").arg(line.bomFile);
    if (line.bomLevels == QLatin1String("indented"))
        levels = PartsListLevels::Indented;
    else if (!line.bomLevels.isEmpty() && line.bomLevels != QLatin1String("flat"))
        return QStringLiteral("--bom-levels wants flat or indented, not '%1'").arg(line.bomLevels);
    return std::nullopt;
}

std::optional<QString> readShow(const CommandLine& line)
{
    if (line.show.isEmpty() || line.show == QLatin1String("pmi"))
        return std::nullopt;
    return QStringLiteral("--show wants pmi, not '%1'").arg(line.show);
}

} // namespace

std::optional<QString> readChoices(const CommandLine& line, SceneChoices& choices)
{
    std::optional<QString> error = readQuery("keep", line.keep, choices.keep);
    if (!error)
        error = readQuery("hide", line.hide, choices.hide);
    if (!error)
        error = readShow(line);
    if (!error)
        error = readAttributes(line, choices.attributes);
    return error ? error : readPartsList(line, choices.levels);
}

std::optional<QString> select(const osg::NodePtr& scene, const CommandLine& line, const SceneChoices& choices)
{
    if (choices.hide)
        hideMatches(scene, *choices.hide);
    if (choices.keep && keepMatches(scene, *choices.keep) == 0)
        return QStringLiteral("nothing in the scene matches --keep '%1'").arg(line.keep);
    return std::nullopt;
}

void show(const osg::NodePtr& scene, const CommandLine& line)
{
    if (!line.show.isEmpty())
        showPmi(scene);
}

} // namespace znimport
