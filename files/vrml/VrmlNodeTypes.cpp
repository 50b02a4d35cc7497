#include "files/vrml/VrmlNodeTypes.h"

#include <algorithm>

namespace files::vrml
{

namespace
{

using Types = std::map<std::string, NodeType, std::less<>>;

/// The fields of "SFBool ccw MFVec3f point".
std::vector<FieldSpec> fieldsOf(std::string_view text)
{
    const auto takeWord = [&text] {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        return word;
    };
    std::vector<FieldSpec> fields;
    while (!text.empty()) {
        const std::string_view type = takeWord();
        fields.push_back(*fieldSpecOf(type, std::string(takeWord())));
    }
    return fields;
}

void add(Types& types, NodeKind kind, const std::string& name, std::string_view fields)
{
    types.try_emplace(name, kind, name, fieldsOf(fields));
}

void addGroups(Types& types)
{
    constexpr std::string_view group = "MFNode children SFVec3f bboxCenter SFVec3f bboxSize";
    add(types, NodeKind::Group, "Group", group);
    add(types, NodeKind::Group, "Anchor",
        "MFNode children SFVec3f bboxCenter SFVec3f bboxSize SFString description MFString parameter MFString url");
    add(types, NodeKind::Group, "Billboard",
        "MFNode children SFVec3f bboxCenter SFVec3f bboxSize SFVec3f axisOfRotation");
    add(types, NodeKind::Group, "Collision",
        "MFNode children SFVec3f bboxCenter SFVec3f bboxSize SFBool collide SFNode proxy");
    add(types, NodeKind::Transform, "Transform",
        "MFNode children SFVec3f bboxCenter SFVec3f bboxSize SFVec3f center SFRotation rotation SFVec3f scale "
        "SFRotation scaleOrientation SFVec3f translation");
    add(types, NodeKind::Switch, "Switch", "MFNode choice SFInt32 whichChoice");
    add(types, NodeKind::LOD, "LOD", "MFNode level SFVec3f center MFFloat range");
    add(types, NodeKind::Inline, "Inline", "MFString url SFVec3f bboxCenter SFVec3f bboxSize");
    add(types, NodeKind::Viewpoint, "Viewpoint",
        "SFFloat fieldOfView SFBool jump SFRotation orientation SFVec3f position SFString description");
}

void addLooks(Types& types)
{
    add(types, NodeKind::Shape, "Shape", "SFNode appearance SFNode geometry");
    add(types, NodeKind::Appearance, "Appearance", "SFNode material SFNode texture SFNode textureTransform");
    add(types, NodeKind::Material, "Material",
        "SFFloat ambientIntensity SFColor diffuseColor SFColor emissiveColor SFFloat shininess SFColor specularColor "
        "SFFloat transparency");
    add(types, NodeKind::ImageTexture, "ImageTexture", "MFString url SFBool repeatS SFBool repeatT");
    add(types, NodeKind::PixelTexture, "PixelTexture", "SFImage image SFBool repeatS SFBool repeatT");
    add(types, NodeKind::TextureTransform, "TextureTransform",
        "SFVec2f center SFFloat rotation SFVec2f scale SFVec2f translation");
}

void addGeometries(Types& types)
{
    add(types, NodeKind::IndexedFaceSet, "IndexedFaceSet",
        "SFNode color SFNode coord SFNode normal SFNode texCoord SFBool ccw MFInt32 colorIndex SFBool colorPerVertex "
        "SFBool convex MFInt32 coordIndex SFFloat creaseAngle MFInt32 normalIndex SFBool normalPerVertex SFBool solid "
        "MFInt32 texCoordIndex");
    add(types, NodeKind::IndexedLineSet, "IndexedLineSet",
        "SFNode color SFNode coord MFInt32 colorIndex SFBool colorPerVertex MFInt32 coordIndex");
    add(types, NodeKind::PointSet, "PointSet", "SFNode color SFNode coord");
    add(types, NodeKind::ElevationGrid, "ElevationGrid",
        "SFNode color SFNode normal SFNode texCoord MFFloat height SFBool ccw SFBool colorPerVertex SFFloat "
        "creaseAngle "
        "SFBool normalPerVertex SFBool solid SFInt32 xDimension SFFloat xSpacing SFInt32 zDimension SFFloat zSpacing");
    add(types, NodeKind::Extrusion, "Extrusion",
        "SFBool beginCap SFBool ccw SFBool convex SFFloat creaseAngle MFVec2f crossSection SFBool endCap "
        "MFRotation orientation MFVec2f scale SFBool solid MFVec3f spine");
    add(types, NodeKind::Box, "Box", "SFVec3f size");
    add(types, NodeKind::Cone, "Cone", "SFFloat bottomRadius SFFloat height SFBool side SFBool bottom");
    add(types, NodeKind::Cylinder, "Cylinder", "SFBool bottom SFFloat height SFFloat radius SFBool side SFBool top");
    add(types, NodeKind::Sphere, "Sphere", "SFFloat radius");
    add(types, NodeKind::Coordinate, "Coordinate", "MFVec3f point");
    add(types, NodeKind::Normal, "Normal", "MFVec3f vector");
    add(types, NodeKind::Color, "Color", "MFColor color");
    add(types, NodeKind::TextureCoordinate, "TextureCoordinate", "MFVec2f point");
}

Types makeTypes()
{
    Types types;
    addGroups(types);
    addLooks(types);
    addGeometries(types);
    for (const char* name : {"Text", "MovieTexture"})
        add(types, NodeKind::LeftOut, name, {});
    for (const char* name : {"AudioClip",
                             "Background",
                             "ColorInterpolator",
                             "CoordinateInterpolator",
                             "CylinderSensor",
                             "DirectionalLight",
                             "Fog",
                             "FontStyle",
                             "NavigationInfo",
                             "NormalInterpolator",
                             "OrientationInterpolator",
                             "PlaneSensor",
                             "PointLight",
                             "PositionInterpolator",
                             "ProximitySensor",
                             "ScalarInterpolator",
                             "Script",
                             "Sound",
                             "SphereSensor",
                             "SpotLight",
                             "TimeSensor",
                             "TouchSensor",
                             "VisibilitySensor",
                             "WorldInfo"})
        add(types, NodeKind::Ignored, name, {});
    return types;
}

} // namespace

const NodeType* builtInType(std::string_view name)
{
    static const Types types = makeTypes();
    const auto type = types.find(name);
    return type == types.end() ? nullptr : &type->second;
}

} // namespace files::vrml
