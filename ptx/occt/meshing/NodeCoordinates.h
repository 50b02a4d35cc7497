#pragma once

#include "host/OSGSystem/Math.h"

#include <Geom_Surface.hxx>
#include <Poly_Triangulation.hxx>
#include <gp_XY.hxx>

#include <vector>

namespace ptx::occt::meshing
{

/// The texture coordinates of a face's nodes: `SurfaceCoordinates` in metres, so that a picture lies once on each. Not
/// mirrored, seen from the front side.
class NodeCoordinates
{
public:
    /// `mesh` has parameters of `surface`.
    /// @param isReversed whether front sides of its triangles are clockwise
    /// @param scale what a length of the mesh becomes
    NodeCoordinates(const Handle(Geom_Surface) & surface, const Poly_Triangulation& mesh, bool isReversed,
                    double scale);

    osg::Vec2f of(int node) const { return toVec2f(place(node)); }

    /// Lines of the surface come together there, and each triangle has a place of its own.
    bool isPole(int node) const { return m_poles[index(node)].ofU || m_poles[index(node)].ofV; }
    /// Of the corner `corner` of a triangle with these nodes: what means nothing there is in the middle of the others.
    osg::Vec2f ofCorner(const int (&nodes)[3], int corner) const;

private:
    struct Pole {
        bool ofU = false;
        bool ofV = false;
    };

    static std::size_t index(int node) { return static_cast<std::size_t>(node) - 1; }
    static osg::Vec2f toVec2f(const gp_XY& value)
    {
        return {static_cast<float>(value.X()), static_cast<float>(value.Y())};
    }
    const gp_XY& place(int node) const { return m_places[index(node)]; }
    bool isMirrored(const Poly_Triangulation& mesh) const;

    std::vector<gp_XY> m_places;
    std::vector<Pole> m_poles;
};

} // namespace ptx::occt::meshing
