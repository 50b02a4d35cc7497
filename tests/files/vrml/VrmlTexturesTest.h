#pragma once

#include "scene/MaterialLook.h"
#include "tests/files/Pictures.h"
#include "tests/files/vrml/VrmlTest.h"

#include <cmath>

#define TRIANGLE_WITH_COORDINATES                                                                                      \
    "IndexedFaceSet { coord Coordinate { point [ 0 0 0 2 0 0 0 1 0 ] } coordIndex [ 0 1 2 ] "                          \
    "texCoord TextureCoordinate { point [ 0 0 1 0 0 1 ] } }"
inline constexpr const char* paint =
    "material Material { diffuseColor 0.5 0.25 0.125 transparency 0.25 ambientIntensity 0.5 }";
/// One pixel of 1, 2, 3 and 4 channels.
inline const QByteArray pixels[4] = {"1 1 1 0x80", "1 1 2 0x80FF", "1 1 3 0x804020", "1 1 4 0x804020FF"};

/// Reads a shape with the fields of an appearance.
class VrmlTexturesTest : public VrmlTest
{
protected:
    osg::PhysicalSurface surfaceOf(const QByteArray& appearance, const QByteArray& geometry = TRIANGLE_WITH_COORDINATES)
    {
        const files::ReadResult result =
            readScene("Shape { appearance Appearance { " + appearance + " } geometry " + geometry + " }");
        m_warnings = texts(result.warnings);
        return result ? osg::surfaceOf(material()) : osg::PhysicalSurface();
    }

    osg::SimpleMaterialPtr material() const { return ReaderTest::material(root()->getChild(0)); }
    const osg::Mesh& mesh() const { return ReaderTest::mesh(root()->getChild(0)); }
    const QStringList& warnings() const { return m_warnings; }

    static QByteArray pictureOf(const osg::PhysicalSurface& surface)
    {
        const auto texture = surface.textures.find(osg::TextureSlot::BaseColor);
        return texture == surface.textures.end() ? "(no texture)" : bytesOf(texture->second.image);
    }

    static QByteArray pixelTexture(const QByteArray& image) { return "texture PixelTexture { image " + image + " }"; }

    /// The texture coordinates of the vertex at `position` whose normal is `normal`.
    osg::Vec2f coordinatesAt(const osg::Vec3f& position, const osg::Vec3f& normal) const
    {
        const auto near = [](const osg::Vec3f& a, const osg::Vec3f& b) {
            return std::abs(a.x - b.x) < 1e-5f && std::abs(a.y - b.y) < 1e-5f && std::abs(a.z - b.z) < 1e-5f;
        };
        for (std::size_t i = 0; i < mesh().positions.size() && !mesh().texCoords.empty(); ++i)
            if (near(mesh().positions[i], position) && near(mesh().normals[i], normal))
                return mesh().texCoords[i];
        ADD_FAILURE() << "no vertex at " << testing::PrintToString(position);
        return {};
    }

private:
    QStringList m_warnings;
};
