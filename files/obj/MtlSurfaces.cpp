#include "files/obj/MtlSurfaces.h"

#include "scene/MaterialLook.h"

#include <QFileInfo>

#include <algorithm>

namespace files::obj
{

namespace
{

constexpr osg::Color3f black = {0, 0, 0};
constexpr osg::Color3f white = {1, 1, 1};

/// Statements of maps that have a slot, as `MtlMaterial` has them.
constexpr const char* baseColorMap = "map_kd";
constexpr const char* ambientMap = "map_ka";
constexpr const char* emissionMap = "map_ke";
constexpr const char* opacityMap = "map_d";
constexpr const char* normalMap = "norm";
constexpr const char* bumpMap = "bump";
constexpr const char* roughnessMap = "map_pr";
constexpr const char* metalnessMap = "map_pm";
constexpr const char* clearcoatMap = "map_pc";
constexpr const char* clearcoatRoughnessMap = "map_pcr";
constexpr const char* sheenMap = "map_ps";

const MtlMap* mapIn(const MtlMaterial& material, const char* statement)
{
    const auto map = material.maps.find(statement);
    return map == material.maps.end() ? nullptr : &map->second;
}

/// Whether a channel of a grey picture says what the map says.
bool reads(const MtlMap& map, char channel)
{
    return map.channel == 0 || map.channel == 'l' || map.channel == channel;
}

bool liesAs(const MtlMap& a, const MtlMap& b)
{
    return a.file == b.file && a.placement == b.placement;
}

/// What multiplies a map. Black, as many programs write it beside maps, would leave nothing of it.
osg::Color3f factorOf(const std::optional<osg::Color3f>& color)
{
    return color && *color != black ? *color : white;
}

float bounded(float value)
{
    return std::clamp(value, 0.0f, 1.0f);
}

/// Bumps are heights by the rule; what is called a map of normals is one all the same.
bool isCalledNormals(const MtlMap& map)
{
    const QString path = QString(map.file).replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString name = path.section(QLatin1Char('/'), -1).section(QLatin1Char('.'), 0, -2).toLower();
    return name.contains(QLatin1String("normal")) || name.endsWith(QLatin1String("_nrm")) ||
           name.endsWith(QLatin1String("_nor")) || name.endsWith(QLatin1String("_n"));
}

QString listOf(const std::set<QString>& names)
{
    return QStringList(names.begin(), names.end()).join(QLatin1String(", "));
}

} // namespace

osg::EncodedImagePtr MtlSurfaces::imageOf(const MtlMaterial& material, const MtlMap& map)
{
    ImageFiles& images = m_images.try_emplace(material.library, m_task, material.library).first->second;
    return images.at(map.file, linePlace(map.line));
}

/// True when `surface` has the texture afterwards.
bool MtlSurfaces::take(const MtlMaterial& material, const char* statement, osg::TextureSlot slot,
                       osg::PhysicalSurface& surface)
{
    const MtlMap* map = mapIn(material, statement);
    if (!map)
        return false;
    osg::Texture texture = map->placement;
    texture.image = imageOf(material, *map);
    if (!texture.image)
        return false;
    if (!map->leftOut.isEmpty()) {
        LeftOut& leftOut = m_leftOut[material.library];
        ++leftOut.changed;
        leftOut.options.insert(map->leftOut.begin(), map->leftOut.end());
    }
    surface.textures[slot] = std::move(texture);
    return true;
}

void MtlSurfaces::leaveOut(const MtlMaterial& material, const char* statement)
{
    if (const MtlMap* map = mapIn(material, statement)) {
        LeftOut& leftOut = m_leftOut[material.library];
        ++leftOut.textures;
        leftOut.statements.insert(map->statement);
    }
}

/// The light around falls on what the base colour says: a map of it that is the same says nothing new.
void MtlSurfaces::takeColors(const MtlMaterial& material, MaterialLook& look, osg::PhysicalSurface& surface)
{
    const MtlMap* base = mapIn(material, baseColorMap);
    const MtlMap* ambient = mapIn(material, ambientMap);
    if (take(material, baseColorMap, osg::TextureSlot::BaseColor, surface))
        look.diffuse = factorOf(material.diffuse);
    if (ambient && !(base && liesAs(*ambient, *base)))
        leaveOut(material, ambientMap);
    if (take(material, emissionMap, osg::TextureSlot::Emission, surface))
        look.emission = factorOf(material.emission);
}

/// There is a slot for opacity only in the alpha of the base colour's picture. A JPEG picture has no alpha.
void MtlSurfaces::takeOpacity(const MtlMaterial& material, osg::PhysicalSurface& surface)
{
    const MtlMap* opacity = mapIn(material, opacityMap);
    const MtlMap* base = mapIn(material, baseColorMap);
    if (!opacity)
        return;
    const auto texture = surface.textures.find(osg::TextureSlot::BaseColor);
    const bool isAlpha = opacity->channel == 0 || opacity->channel == 'm';
    if (base && isAlpha && liesAs(*opacity, *base) && texture != surface.textures.end() &&
        texture->second.image->mimeType() != "image/jpeg")
        surface.alphaMode = osg::AlphaMode::Blend;
    else
        leaveOut(material, opacityMap);
}

void MtlSurfaces::takeNormals(const MtlMaterial& material, osg::PhysicalSurface& surface)
{
    const MtlMap* bump = mapIn(material, bumpMap);
    const char* statement = bump && !mapIn(material, normalMap) && isCalledNormals(*bump) ? bumpMap : normalMap;
    if (take(material, statement, osg::TextureSlot::Normal, surface))
        surface.textures[osg::TextureSlot::Normal].strength = mapIn(material, statement)->multiplier;
    if (statement != bumpMap)
        leaveOut(material, bumpMap);
}

/// One picture stands for both when both statements name it. A picture of roughness alone is grey: where there is no
/// metal, its blue multiplies nothing.
void MtlSurfaces::takeMetal(const MtlMaterial& material, MaterialLook& look, osg::PhysicalSurface& surface)
{
    if (material.roughness) {
        surface.roughness = bounded(*material.roughness);
        if (!material.hasShininess)
            look.shininess = osg::shininessOfRoughness(surface.roughness);
    }
    surface.metalness = bounded(material.metalness.value_or(0.0f));
    const MtlMap* roughness = mapIn(material, roughnessMap);
    const MtlMap* metalness = mapIn(material, metalnessMap);
    const bool areOne =
        roughness && metalness && liesAs(*roughness, *metalness) && reads(*roughness, 'g') && reads(*metalness, 'b');
    const bool isRoughnessAlone = roughness && !metalness && surface.metalness == 0 && reads(*roughness, 'g');
    if (!areOne && !isRoughnessAlone) {
        leaveOut(material, roughnessMap);
        leaveOut(material, metalnessMap);
    } else if (take(material, roughnessMap, osg::TextureSlot::MetallicRoughness, surface)) {
        surface.roughness = bounded(material.roughness.value_or(1.0f));
        surface.metalness = areOne ? bounded(material.metalness.value_or(1.0f)) : 0;
    }
}

void MtlSurfaces::takeCoats(const MtlMaterial& material, osg::PhysicalSurface& surface)
{
    const auto takeFactor = [&](const std::optional<float>& number, const char* statement, char channel,
                                osg::TextureSlot slot) {
        const MtlMap* map = mapIn(material, statement);
        if (map && !reads(*map, channel))
            leaveOut(material, statement);
        else if (take(material, statement, slot, surface))
            return bounded(number.value_or(1.0f));
        return bounded(number.value_or(0.0f));
    };
    surface.clearcoat = takeFactor(material.clearcoat, clearcoatMap, 'r', osg::TextureSlot::Clearcoat);
    surface.clearcoatRoughness =
        takeFactor(material.clearcoatRoughness, clearcoatRoughnessMap, 'g', osg::TextureSlot::ClearcoatRoughness);
    surface.sheenColor = material.sheen.value_or(black);
    if (take(material, sheenMap, osg::TextureSlot::SheenColor, surface))
        surface.sheenColor = factorOf(material.sheen);
    if (surface.sheenColor != black)
        surface.sheenRoughness = surface.roughness;
}

void MtlSurfaces::leaveOthersOut(const MtlMaterial& material)
{
    static const std::set<std::string> known = {baseColorMap, ambientMap,   emissionMap,          opacityMap,
                                                roughnessMap, metalnessMap, clearcoatMap,         normalMap,
                                                bumpMap,      sheenMap,     clearcoatRoughnessMap};
    for (const auto& [statement, map] : material.maps)
        if (known.count(statement) == 0)
            leaveOut(material, statement.c_str());
}

MaterialLook MtlSurfaces::lookOf(const MtlMaterial& material)
{
    MaterialLook look = material.look;
    osg::SurfaceLook plain;
    plain.shininess = look.shininess;
    plain.transparency = look.transparency;
    const osg::PhysicalSurface implied = osg::impliedSurface(plain);
    osg::PhysicalSurface surface = implied;
    takeColors(material, look, surface);
    takeOpacity(material, surface);
    takeNormals(material, surface);
    takeMetal(material, look, surface);
    takeCoats(material, surface);
    leaveOthersOut(material);
    if (surface != implied)
        look.surface = std::move(surface);
    return look;
}

void MtlSurfaces::tellWhatIsMissing()
{
    for (const auto& [library, leftOut] : m_leftOut) {
        if (leftOut.textures > 0)
            m_task.warnIn(library, tr("%1 textures were left out, of the statements %2")
                                       .arg(leftOut.textures)
                                       .arg(listOf(leftOut.statements)));
        if (leftOut.changed > 0)
            m_task.warnIn(library, tr("%1 textures have options that were left out: %2")
                                       .arg(leftOut.changed)
                                       .arg(listOf(leftOut.options)));
    }
}

} // namespace files::obj
