#include "ptx/occt/meshing/NodeCoordinates.h"

#include "ptx/occt/meshing/SurfaceCoordinates.h"

#include <Standard_Failure.hxx>

#include <algorithm>
#include <cmath>

namespace ptx::occt::meshing
{

namespace
{

constexpr double metre = 1000;

double finite(double value)
{
    return std::isfinite(value) ? value : 0;
}

} // namespace

NodeCoordinates::NodeCoordinates(const Handle(Geom_Surface) & surface, const Poly_Triangulation& mesh, bool isReversed,
                                 double scale)
{
    gp_Pnt2d low = mesh.UVNode(1), high = low;
    for (int i = 2; i <= mesh.NbNodes(); ++i) {
        const gp_Pnt2d at = mesh.UVNode(i);
        low.SetCoord(std::min(low.X(), at.X()), std::min(low.Y(), at.Y()));
        high.SetCoord(std::max(high.X(), at.X()), std::max(high.Y(), at.Y()));
    }
    const SurfaceCoordinates coordinates(surface, low, high);
    for (int i = 1; i <= mesh.NbNodes(); ++i) {
        const gp_Pnt2d parameters = mesh.UVNode(i);
        const gp_XY place = coordinates.at(parameters) * (scale / metre);
        m_places.emplace_back(finite(place.X()), finite(place.Y()));
        try {
            gp_Pnt point;
            gp_Vec u, v;
            surface->D1(parameters.X(), parameters.Y(), point, u, v);
            m_poles.push_back({coordinates.isPoleOfU(u), coordinates.isPoleOfV(v)});
        } catch (const Standard_Failure&) {
            m_poles.emplace_back();
        }
    }
    if (isMirrored(mesh) != isReversed)
        for (gp_XY& place : m_places)
            place.SetX(-place.X());
}

/// Whether most of the triangles are clockwise in the picture.
bool NodeCoordinates::isMirrored(const Poly_Triangulation& mesh) const
{
    double area = 0;
    for (int i = 1; i <= mesh.NbTriangles(); ++i) {
        int nodes[3];
        mesh.Triangle(i).Get(nodes[0], nodes[1], nodes[2]);
        area += (place(nodes[1]) - place(nodes[0])) ^ (place(nodes[2]) - place(nodes[0]));
    }
    return area < 0;
}

osg::Vec2f NodeCoordinates::ofCorner(const int (&nodes)[3], int corner) const
{
    const Pole& pole = m_poles[index(nodes[corner])];
    gp_XY result = place(nodes[corner]);
    const auto middle = [&](bool Pole::*which, double own, double (gp_XY::*coordinate)() const) {
        double sum = 0;
        int count = 0;
        for (int i = 0; i < 3; ++i)
            if (i != corner && !(m_poles[index(nodes[i])].*which)) {
                sum += (place(nodes[i]).*coordinate)();
                ++count;
            }
        return count > 0 ? sum / count : own;
    };
    if (pole.ofU)
        result.SetX(middle(&Pole::ofU, result.X(), &gp_XY::X));
    if (pole.ofV)
        result.SetY(middle(&Pole::ofV, result.Y(), &gp_XY::Y));
    return toVec2f(result);
}

} // namespace ptx::occt::meshing
