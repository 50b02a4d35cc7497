#include "files/ReadRequest.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace files
{

namespace
{

const QLatin1String upAxis("up");
const QLatin1String millimetres("unit");
const QLatin1String wrlInMetres("wrl-in-metres");
const QLatin1String levelOfDetail("level");
const QLatin1String rule("references");
const QLatin1String topFolder("references-below");
const QLatin1String openFolder("references-folder");
const QLatin1String importedFile("imported");
const QLatin1String ownFolder("own-folder");

struct NamedLimit {
    QLatin1String name;
    std::uint64_t ReadLimits::*limit;
};

const NamedLimit namedLimits[] = {{QLatin1String("max-file-bytes"), &ReadLimits::maxFileBytes},
                                  {QLatin1String("max-nodes"), &ReadLimits::maxNodes},
                                  {QLatin1String("max-vertices"), &ReadLimits::maxVertices},
                                  {QLatin1String("max-depth"), &ReadLimits::maxDepth},
                                  {QLatin1String("max-memory"), &ReadLimits::maxMemory}};

QString word(QLatin1String name, const QString& value)
{
    return name + QLatin1Char('=') + value;
}

bool takeAxis(UpAxis& axis, const QString& value)
{
    axis = value == QLatin1String("y") ? UpAxis::Y : UpAxis::Z;
    return value == QLatin1String("y") || value == QLatin1String("z");
}

bool takeSwitch(bool& isOn, const QString& value)
{
    isOn = value == QLatin1String("1");
    return isOn || value == QLatin1String("0");
}

bool takeLimit(ReadLimits& limits, const QString& name, const QString& value)
{
    for (const NamedLimit& named : namedLimits)
        if (name == named.name) {
            bool isNumber = false;
            limits.*named.limit = value.toULongLong(&isNumber);
            return isNumber;
        }
    return false;
}

bool takeUnit(double& unit, const QString& value)
{
    bool isNumber = false;
    unit = value.toDouble(&isNumber);
    return isNumber && std::isfinite(unit) && unit > 0;
}

bool takeLevel(int& level, const QString& value)
{
    bool isNumber = false;
    level = value.toInt(&isNumber);
    return isNumber && level >= 0;
}

bool takeReference(references::Policy& policy, const QString& name, const QString& value)
{
    if (name == topFolder)
        policy.top = value.toStdString();
    else if (name == openFolder)
        policy.folders.push_back(value.toStdString());
    else if (const auto found = references::ruleOf(value.toStdString()); found && name == rule)
        policy.rule = *found;
    else
        return false;
    return true;
}

QStringList wordsOf(const references::Policy& policy)
{
    QStringList words = {word(rule, QLatin1String(references::word(policy.rule))),
                         word(topFolder, QString::fromStdString(policy.top))};
    for (const std::string& folder : policy.folders)
        words.append(word(openFolder, QString::fromStdString(folder)));
    return words;
}

/// Name and value; no name without a sign of equality.
std::pair<QString, QString> takenApart(const QString& word)
{
    const int equals = word.indexOf(QLatin1Char('='));
    return {word.left(std::max(equals, 0)), word.mid(equals + 1)};
}

} // namespace

QStringList wordsOf(const ReadOptions& options)
{
    // Names every member, so that a new one cannot be forgotten here. How a scene file is read is the host's business.
    const auto& [up, unit, inMetres, level, mapsFile, policy, limits] = options;
    [[maybe_unused]] const auto& [bytes, nodes, vertices, depth, memory] = limits;
    (void)mapsFile;
    QStringList words = {word(upAxis, up == UpAxis::Y ? QStringLiteral("y") : QStringLiteral("z")),
                         word(millimetres, QString::number(unit, 'g', 17)),
                         word(wrlInMetres, inMetres ? QStringLiteral("1") : QStringLiteral("0")),
                         word(levelOfDetail, QString::number(level))};
    for (const NamedLimit& named : namedLimits)
        words.append(word(named.name, QString::number(limits.*named.limit)));
    return words + wordsOf(policy);
}

QStringList wordsOf(const DocumentRules& rules)
{
    return wordsOf(rules.policy) << word(importedFile, rules.imported) << word(ownFolder, rules.ownFolder);
}

bool takeWord(DocumentRules& rules, const QString& word)
{
    const auto [name, value] = takenApart(word);
    if (name == importedFile)
        rules.imported = value;
    else if (name == ownFolder)
        rules.ownFolder = value;
    else
        return takeReference(rules.policy, name, value);
    return true;
}

bool takeWord(ReadOptions& options, const QString& word)
{
    const auto [name, value] = takenApart(word);
    if (name == upAxis)
        return takeAxis(options.upAxis, value);
    if (name == millimetres)
        return takeUnit(options.millimetresPerUnit, value);
    if (name == wrlInMetres)
        return takeSwitch(options.vrmlInMetres, value);
    if (name == levelOfDetail)
        return takeLevel(options.level, value);
    return takeReference(options.references, name, value) || takeLimit(options.limits, name, value);
}

} // namespace files
