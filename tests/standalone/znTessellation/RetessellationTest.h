#pragma once

#include "host/znTessellation/znRetessellation.h"
#include "ptx/occt/meshing/BrepBlob.h"
#include "tests/geometry/MeshMeasures.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <TopoDS_Shape.hxx>

/// Geometries with exact surfaces and coarse stand-ins for meshes.
class RetessellationTest : public TreeTest
{
protected:
    /// How fine the meshes shall be.
    struct Wish {
        double chordDeviation = 0.3;
        double normalTolerance = 25;
        double maxChordLength = 0;
        bool useStitching = false;
        double stitchingTolerance = 0.25;
    };

    /// 10 x 20 x 30 mm.
    static TopoDS_Shape box() { return BRepPrimAPI_MakeBox(10, 20, 30).Shape(); }
    /// Of the radius 10 about Z, 40 mm high.
    static TopoDS_Shape cylinder() { return BRepPrimAPI_MakeCylinder(10, 40).Shape(); }

    static osg::Mesh standIn(const TopoDS_Shape& shape)
    {
        osg::Mesh mesh = triangle();
        mesh.brep = ptx::occt::meshing::brepBlob(shape);
        return mesh;
    }
    osg::NodePtr addSurface(const TopoDS_Shape& shape) { return add(root, geometry(standIn(shape))); }

    void retessellate(const Wish& wish)
    {
        znRetessellation::copySettings();
        znRetessellation retessellation;
        retessellation.addNodes({root});
        retessellation.setupTessellation(wish.chordDeviation, wish.normalTolerance, wish.maxChordLength,
                                         wish.useStitching, wish.stitchingTolerance);
        retessellation.applyTessellation();
        retessellation.rebuildSurfaces();
        retessellation.finalize();
    }

    void set(const char* name, const QString& value)
    {
        EXPECT_EQ(m_session.settings().set(QString::fromLatin1(name), value), std::nullopt);
    }

    const osg::NodePtr root = addGroup(m_session.sceneRoot(), "root");
};
