#pragma once

#include <array>
#include <cstdint>

namespace osg
{

/// A vector, point or scale of three floats. Lengths are millimetres.
struct Vec3f {
    ///@{
    /// One number for each axis.
    float x = 0, y = 0, z = 0;
    ///@}
    /// Exact, number by number.
    friend bool operator==(const Vec3f&, const Vec3f&) = default;
};

/// A texture coordinate.
struct Vec2f {
    ///@{
    /// The coordinates u and v.
    float x = 0, y = 0;
    ///@}
    /// Exact, number by number.
    friend bool operator==(const Vec2f&, const Vec2f&) = default;
};

/// A colour as it is meant to be seen: sRGB-encoded channels from 0 to 1, the way CAD data gives them.
struct Color3f {
    ///@{
    /// From 0 to 1, not clamped.
    float red = 0, green = 0, blue = 0;
    ///@}
    /// Exact, number by number.
    friend bool operator==(const Color3f&, const Color3f&) = default;
};

/// A colour with coverage; `alpha` 1 is opaque.
struct Color4f {
    ///@{
    /// From 0 to 1, not clamped.
    float red = 0, green = 0, blue = 0, alpha = 1;
    ///@}
    /// Exact, number by number.
    friend bool operator==(const Color4f&, const Color4f&) = default;
};

/// A rotation; the imaginary part first. The default is the identity.
struct Quaternion {
    ///@{
    /// Expected to be of length 1 together.
    float x = 0, y = 0, z = 0, w = 1;
    ///@}
    /// Exact, number by number.
    friend bool operator==(const Quaternion&, const Quaternion&) = default;
};

/// A 4x4 matrix that acts on column vectors. Storage is column by column: the translation is in the elements 12 to 14.
struct Matrix {
    /// Column by column; the identity at first.
    std::array<float, 16> values = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    ///@{
    /// Element `row + 4 * column`. An index past 15 is undefined.
    float& operator[](unsigned index) { return values[index]; }
    float operator[](unsigned index) const { return values[index]; }
    ///@}
    /// Equal to the identity in every element; no tolerance.
    bool isIdentity() const { return *this == Matrix(); }
    /// Exact, number by number.
    friend bool operator==(const Matrix&, const Matrix&) = default;
};

} // namespace osg
