#include "tools/znimport/GlbOptions.h"

#include <utility>

namespace znimport
{

namespace
{

/// A word of `--unit` and what it means.
struct Unit {
    const char* name;
    double millimetres;
};

constexpr Unit units[] = {{"mm", 1}, {"cm", 10}, {"m", 1000}, {"in", 25.4}, {"ft", 304.8}};

std::optional<double> millimetresPerUnit(const QString& name)
{
    for (const Unit& unit : units)
        if (name.isEmpty() ? unit.millimetres == 1000 : name == QLatin1String(unit.name))
            return unit.millimetres;
    return std::nullopt;
}

std::optional<files::glb::UpAxis> upAxis(const QString& name)
{
    if (name.isEmpty() || name.compare(QLatin1String("y"), Qt::CaseInsensitive) == 0)
        return files::glb::UpAxis::Y;
    return name.compare(QLatin1String("z"), Qt::CaseInsensitive) == 0 ? std::optional(files::glb::UpAxis::Z)
                                                                      : std::nullopt;
}

files::glb::Hidden hiddenOf(zn::ExportSettings::Hidden hidden)
{
    using Told = zn::ExportSettings::Hidden;
    return hidden == Told::Keep       ? files::glb::Hidden::Keep
           : hidden == Told::LeaveOut ? files::glb::Hidden::LeaveOut
                                      : files::glb::Hidden::Shrink;
}

files::glb::Textures texturesOf(zn::ExportSettings::Textures textures)
{
    using Told = zn::ExportSettings::Textures;
    return textures == Told::External ? files::glb::Textures::External
           : textures == Told::None   ? files::glb::Textures::None
                                      : files::glb::Textures::Embed;
}

/// The steps that the settings ask for, or all of them with `--web`.
files::glb::PackOptions packOptions(bool web, const zn::ExportSettings& settings)
{
    files::glb::PackOptions options;
    const int bits[] = {0, 8, 10};
    options.quantize = web || settings.quantize;
    options.error = settings.error;
    options.normalBits = bits[static_cast<int>(settings.normalBits.value())];
    if (web && options.normalBits == 0)
        options.normalBits = 8;
    options.weld = web || settings.weld;
    options.reorder = web || settings.reorder;
    options.compress = web || settings.compress;
    return options;
}

/// So `--web` gathers what is small: it takes fewer draw calls, and hardly more bytes.
constexpr std::uint64_t mergeBelowOfWeb = 10000;

files::glb::GatherOptions gatherOptions(const CommandLine& line, const zn::ExportSettings& settings)
{
    files::glb::GatherOptions options;
    options.instances = line.web || line.instances || settings.instances;
    options.mergeBelow = static_cast<std::uint64_t>(settings.mergeBelow);
    if (line.web && options.mergeBelow == 0 && !line.isMergeBelowGiven)
        options.mergeBelow = mergeBelowOfWeb;
    return options;
}

/// The text of the shares has been checked.
files::glb::LevelOptions levelOptions(const zn::ExportSettings& settings)
{
    return {settings.simplify, files::glb::levelShares(settings.lod).value(), settings.lodFiles};
}

} // namespace

std::optional<QString> glbComplaint(const CommandLine& line, bool writesGlb)
{
    if (!millimetresPerUnit(line.unit))
        return QStringLiteral("--unit wants mm, cm, m, in or ft, not '%1'").arg(line.unit);
    if (!upAxis(line.up))
        return QStringLiteral("--up wants y or z, not '%1'").arg(line.up);
    if (!(line.unit.isEmpty() && line.up.isEmpty()) && !writesGlb)
        return QStringLiteral("--unit and --up are for .glb files, and --output names none");
    const std::pair<bool, const char*> others[] = {{line.scaleIntoVertices, "scale-into-vertices"},
                                                   {line.web, "web"},
                                                   {line.instances, "instances"},
                                                   {line.isMergeBelowGiven, "merge-below"},
                                                   {line.glbEdges, "glb-edges"},
                                                   {line.isLodGiven, "lod"},
                                                   {line.lodFiles, "lod-files"},
                                                   {line.isSimplifyGiven, "simplify"},
                                                   {line.areTexturesGiven, "textures"},
                                                   {line.isMaxTextureGiven, "max-texture"}};
    for (const auto& [isGiven, name] : others)
        if (isGiven && !writesGlb)
            return QStringLiteral("--%1 is for .glb files, and --output names none").arg(QLatin1String(name));
    return std::nullopt;
}

std::optional<QString> levelComplaint(zn::StandaloneSession& session)
{
    const zn::ExportSettings& settings = session.settings().exports;
    const QString& shares = settings.lod;
    if (!files::glb::levelShares(shares))
        return QStringLiteral("--lod (export.lod) wants at most 9 shares of the triangles between 0 and 1, each less "
                              "than the one before, such as 0.5,0.1, not '%1'")
            .arg(shares);
    if (settings.lodFiles && shares.isEmpty())
        return QStringLiteral("--lod-files (export.lodFiles) wants --lod, which says how many files there are");
    return std::nullopt;
}

files::glb::WriteOptions glbOptions(const CommandLine& line, zn::StandaloneSession& session)
{
    files::glb::WriteOptions options;
    options.millimetresPerUnit = millimetresPerUnit(line.unit).value();
    options.upAxis = upAxis(line.up).value();
    options.occlusionAsColors = session.settings().exports.occlusionAsColors;
    options.fold = session.settings().exports.fold;
    options.hidden = hiddenOf(session.settings().exports.hidden);
    options.scaleIntoVertices = line.scaleIntoVertices || session.settings().exports.scaleIntoVertices;
    options.edges = line.glbEdges || session.settings().exports.edges;
    options.textures = texturesOf(session.settings().exports.textures);
    options.mostTextureSide = session.settings().exports.maxTexture;
    options.packing = packOptions(line.web, session.settings().exports);
    options.gathering = gatherOptions(line, session.settings().exports);
    options.levels = levelOptions(session.settings().exports);
    return options;
}

} // namespace znimport
