#include "files/ReadRequest.h"

#include <cmath>
#include <optional>

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
    else if (const std::optional<references::Rule> found = references::ruleOf(value.toStdString()))
        policy.rule = *found;
    else
        return false;
    return true;
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
    words.append(word(rule, QLatin1String(references::word(policy.rule))));
    words.append(word(topFolder, QString::fromStdString(policy.top)));
    for (const std::string& folder : policy.folders)
        words.append(word(openFolder, QString::fromStdString(folder)));
    return words;
}

bool takeWord(ReadOptions& options, const QString& word)
{
    const int equals = word.indexOf(QLatin1Char('='));
    const QString name = word.left(equals);
    const QString value = word.mid(equals + 1);
    if (equals < 0)
        return false;
    if (name == upAxis)
        return takeAxis(options.upAxis, value);
    if (name == millimetres)
        return takeUnit(options.millimetresPerUnit, value);
    if (name == wrlInMetres)
        return takeSwitch(options.vrmlInMetres, value);
    if (name == levelOfDetail)
        return takeLevel(options.level, value);
    if (name == rule || name == topFolder || name == openFolder)
        return takeReference(options.references, name, value);
    return takeLimit(options.limits, name, value);
}

} // namespace files
