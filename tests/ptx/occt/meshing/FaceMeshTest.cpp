#include "ptx/occt/meshing/FaceMesh.h"

#include "ptx/model/MeshBuilder.h"
#include "ptx/occt/meshing/Meshing.h"
#include "scene/Mesh.h"

#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Tool.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Ax1.hxx>
#include <gp_Trsf.hxx>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

using namespace ptx::occt::meshing;

struct FaceMesh {
    std::shared_ptr<const osg::Mesh> mesh;
    std::size_t nodes = 0; ///< of the triangulations
};

FaceMesh meshOf(const TopoDS_Shape& shape)
{
    tessellate(shape, Tolerance{0.01, 0.2}, false);
    FaceMesh result;
    ptx::model::MeshBuilder builder;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        TopLoc_Location place;
        result.nodes += std::size_t(BRep_Tool::Triangulation(TopoDS::Face(face.Current()), place)->NbNodes());
        EXPECT_TRUE(appendFaceMesh(TopoDS::Face(face.Current()), builder));
    }
    result.mesh = builder.take();
    return result;
}

gp_XYZ xyz(const osg::Vec3f& v)
{
    return gp_XYZ(double(v.x), double(v.y), double(v.z));
}

/// The smallest cosine between the normal of a corner and that of its triangle.
double worstCosine(const osg::Mesh& mesh)
{
    double worst = 1;
    for (std::size_t i = 0; i < mesh.triangles.size(); i += 3) {
        const gp_XYZ a = xyz(mesh.positions[mesh.triangles[i]]);
        const gp_XYZ plane =
            (xyz(mesh.positions[mesh.triangles[i + 1]]) - a) ^ (xyz(mesh.positions[mesh.triangles[i + 2]]) - a);
        if (plane.Modulus() == 0) // at a pole
            continue;
        for (std::size_t k = i; k < i + 3; ++k)
            worst = std::min(worst, plane * xyz(mesh.normals[mesh.triangles[k]]) / plane.Modulus());
    }
    return worst;
}

/// The normals of all vertices in the tip of a cone of the height 3.
std::vector<osg::Vec3f> tipNormals(const osg::Mesh& mesh)
{
    std::vector<osg::Vec3f> normals;
    for (const std::uint32_t index : mesh.triangles)
        if (std::abs(mesh.positions[index].z) > 2.999f)
            normals.push_back(mesh.normals[index]);
    return normals;
}

// 1 wide and 3 high: its side is 18 degrees off the axis.
TopoDS_Shape cone()
{
    return BRepPrimAPI_MakeCone(1, 0, 3).Shape();
}

TEST(FaceMesh, TheTipOfAConeHasANormalForEachSide)
{
    const FaceMesh made = meshOf(cone());
    EXPECT_GT(worstCosine(*made.mesh), 0.5);
    const std::vector<osg::Vec3f> tip = tipNormals(*made.mesh);
    ASSERT_GT(tip.size(), 8u);
    bool left = false, right = false;
    for (const osg::Vec3f& normal : tip) {
        EXPECT_NEAR(normal.z, 1 / std::sqrt(10), 0.2) << "along the side, and not along the axis";
        EXPECT_NEAR(xyz(normal).Modulus(), 1, 1e-6);
        left = left || normal.x < -0.7f;
        right = right || normal.x > 0.7f;
    }
    EXPECT_TRUE(left && right);
}

TEST(FaceMesh, SoHasThatOfOneThatIsInsideOutOrMirrored)
{
    EXPECT_GT(worstCosine(*meshOf(cone().Reversed()).mesh), 0.5);
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp_Pnt(), gp_Dir(0, 0, 1)));
    const FaceMesh mirrored = meshOf(cone().Moved(TopLoc_Location(mirror), false));
    EXPECT_GT(worstCosine(*mirrored.mesh), 0.5);
    for (const osg::Vec3f& normal : tipNormals(*mirrored.mesh))
        EXPECT_NEAR(normal.z, -1 / std::sqrt(10), 0.2);
}

TEST(FaceMesh, ThePoleOfABallKeepsItsOneVertex)
{
    const FaceMesh made = meshOf(BRepPrimAPI_MakeSphere(2).Shape());
    EXPECT_EQ(made.mesh->positions.size(), made.nodes);
    EXPECT_GT(worstCosine(*made.mesh), 0.9);
}

} // namespace
