#pragma once

#include <Geom_Surface.hxx>
#include <gp_Pnt2d.hxx>
#include <gp_Vec.hxx>
#include <gp_XY.hxx>

#include <array>
#include <functional>

class GeomAdaptor_Surface;

namespace ptx::occt::meshing
{

/// The parameters of a surface by length, in millimetres: what a texture follows.
///
/// A plane, a cylinder and a cone are unrolled, and every length is right: (u, v), (u R, v), and on a cone the polar
/// coordinates around its tip, upright in the middle of the face. On a sphere v is the length along a meridian, on a
/// torus around the tube; u is the arc times the mean radius over the v of the face. On all other surfaces u is the
/// length from the first u of the face on, in the mean of 8 lines of constant v, each measured in 16 steps or 4 between
/// two knots, whatever is more, and v likewise.
class SurfaceCoordinates
{
public:
    /// Of a face of `surface` with parameters from `low` to `high`.
    SurfaceCoordinates(const Handle(Geom_Surface) & surface, const gp_Pnt2d& low, const gp_Pnt2d& high);

    gp_XY at(const gp_Pnt2d& parameters) const { return m_map(parameters); }

    ///@{
    /// Whether the lines along u, or along v, shrink to a point where the surface has this derivative: u, or v, means
    /// nothing there. Never on a cone, whose tip is one place.
    bool isPoleOfU(const gp_Vec& derivative) const { return derivative.Magnitude() < pole * m_meanSpeeds[0]; }
    bool isPoleOfV(const gp_Vec& derivative) const { return derivative.Magnitude() < pole * m_meanSpeeds[1]; }
    ///@}

private:
    static constexpr double pole = 1e-4; ///< share of the usual speed

    void scale(double u, double v);
    void unroll(double radius, double semiAngle, double middle);
    void measure(const GeomAdaptor_Surface& form, const gp_Pnt2d& low, const gp_Pnt2d& high);

    std::function<gp_XY(const gp_Pnt2d&)> m_map;
    std::array<double, 2> m_meanSpeeds{}; ///< mm for each unit of u and of v; 0 where there is no pole
};

} // namespace ptx::occt::meshing
