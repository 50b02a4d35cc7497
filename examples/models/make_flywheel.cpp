// Makes flywheel.step: a flywheel on a shaft in two bearing blocks, bolted to a plate under a glass cover. Small, but
// with everything that an import has to keep: parts and sub-assemblies used several times, turned placements, colours
// of parts, of single faces and of one occurrence, a transparent part, a name beyond ASCII.

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepTools.hxx>
#include <Interface_Static.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <cmath>
#include <cstdio>
#include <string>

namespace
{

struct Rgb {
    double red, green, blue;
    double alpha = 1;
};

constexpr Rgb Steel = {0.70, 0.72, 0.75};
constexpr Rgb Graphite = {0.22, 0.24, 0.27};
constexpr Rgb Blue = {0.12, 0.32, 0.62};
constexpr Rgb Red = {0.78, 0.16, 0.13};
constexpr Rgb Yellow = {0.96, 0.77, 0.10};
constexpr Rgb Brass = {0.80, 0.62, 0.22};
constexpr Rgb Glass = {0.62, 0.82, 0.90, 0.3};

gp_Ax2 axis(double x, double y, double z, gp_Dir direction)
{
    return {gp_Pnt(x, y, z), direction};
}

TopoDS_Shape cylinder(const gp_Ax2& place, double radius, double height)
{
    return BRepPrimAPI_MakeCylinder(place, radius, height).Shape();
}

TopoDS_Shape box(double x, double y, double z, double dx, double dy, double dz)
{
    return BRepPrimAPI_MakeBox(gp_Pnt(x, y, z), dx, dy, dz).Shape();
}

TopoDS_Shape cut(const TopoDS_Shape& shape, const TopoDS_Shape& tool)
{
    return BRepAlgoAPI_Cut(shape, tool).Shape();
}

TopoDS_Shape fuse(const TopoDS_Shape& a, const TopoDS_Shape& b)
{
    return BRepAlgoAPI_Fuse(a, b).Shape();
}

TopoDS_Shape rounded(const TopoDS_Shape& shape, double radius)
{
    BRepFilletAPI_MakeFillet fillet(shape);
    for (TopExp_Explorer edge(shape, TopAbs_EDGE); edge.More(); edge.Next())
        fillet.Add(radius, TopoDS::Edge(edge.Current()));
    return fillet.Shape();
}

TopoDS_Shape makePlate()
{
    TopoDS_Shape plate = rounded(box(-90, -60, 0, 180, 120, 12), 2);
    for (const double x : {-78, 78})
        for (const double y : {-48, 48})
            plate = cut(plate, cylinder(axis(x, y, -1, gp::DZ()), 5.5, 20));
    return plate;
}

TopoDS_Shape makeBlock()
{
    const TopoDS_Shape body = fuse(box(-10, -28, 0, 20, 56, 55), cylinder(axis(-10, 0, 55, gp::DX()), 28, 20));
    return cut(body, cylinder(axis(-11, 0, 55, gp::DX()), 12, 22));
}

TopoDS_Shape makeShaft()
{
    const TopoDS_Shape rod = cylinder(axis(-85, 0, 0, gp::DX()), 12, 170);
    return fuse(rod, cylinder(axis(-40, 0, 0, gp::DX()), 16, 80));
}

TopoDS_Shape makeWheel()
{
    TopoDS_Shape wheel = cylinder(axis(-9, 0, 0, gp::DX()), 48, 18);
    const TopoDS_Shape pocket =
        cut(cylinder(axis(5, 0, 0, gp::DX()), 40, 10), cylinder(axis(4, 0, 0, gp::DX()), 24, 12));
    wheel = cut(cut(wheel, pocket), cylinder(axis(-10, 0, 0, gp::DX()), 16, 20));
    for (int i = 0; i < 6; ++i) {
        const double angle = i * M_PI / 3;
        wheel = cut(wheel, cylinder(axis(-10, 32 * std::cos(angle), 32 * std::sin(angle), gp::DX()), 6, 20));
    }
    return wheel;
}

TopoDS_Shape makeBolt()
{
    const TopoDS_Shape head = cylinder(axis(0, 0, 0, gp::DZ()), 8, 6);
    const TopoDS_Shape socket = box(-2.5, -2.5, 3, 5, 5, 4);
    return fuse(cut(head, socket), cylinder(axis(0, 0, -18, gp::DZ()), 5, 18));
}

TopoDS_Shape makeWasher()
{
    return cut(cylinder(axis(0, 0, 0, gp::DZ()), 10, 2), cylinder(axis(0, 0, -1, gp::DZ()), 5.2, 4));
}

TopoDS_Shape makeCover()
{
    return cut(box(-30, -56, 12, 60, 112, 112), box(-27, -53, 11, 54, 106, 110));
}

/// A document under construction.
class Assembly
{
public:
    Assembly()
    {
        XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", m_document);
        m_shapes = XCAFDoc_DocumentTool::ShapeTool(m_document->Main());
        m_colors = XCAFDoc_DocumentTool::ColorTool(m_document->Main());
    }

    TDF_Label part(const char* name, const TopoDS_Shape& shape, const Rgb& color)
    {
        const TDF_Label label = m_shapes->AddShape(shape, false);
        rename(label, name);
        paint(label, color);
        return label;
    }

    TDF_Label assembly(const char* name)
    {
        const TDF_Label label = m_shapes->NewShape();
        rename(label, name);
        return label;
    }

    TDF_Label place(const TDF_Label& parent, const TDF_Label& child, const char* name, const gp_Trsf& where)
    {
        const TDF_Label label = m_shapes->AddComponent(parent, child, TopLoc_Location(where));
        rename(label, name);
        return label;
    }

    void paint(const TDF_Label& label, const Rgb& rgb) { m_colors->SetColor(label, color(rgb), XCAFDoc_ColorSurf); }

    void paintFace(const TDF_Label& part, const TopoDS_Shape& face, const Rgb& rgb)
    {
        paint(m_shapes->AddSubShape(part, face), rgb);
    }

    bool write(const char* path)
    {
        m_shapes->UpdateAssemblies();
        STEPCAFControl_Writer writer;
        Interface_Static::SetCVal("write.step.schema", "AP214IS");
        writer.SetColorMode(true);
        writer.SetNameMode(true);
        return writer.Transfer(m_document) && writer.Write(path) == IFSelect_RetDone;
    }

private:
    static Quantity_ColorRGBA color(const Rgb& rgb)
    {
        return {Quantity_Color(rgb.red, rgb.green, rgb.blue, Quantity_TOC_sRGB), static_cast<float>(rgb.alpha)};
    }

    static void rename(const TDF_Label& label, const char* name)
    {
        TDataStd_Name::Set(label, TCollection_ExtendedString(name, true));
    }

    Handle(TDocStd_Document) m_document;
    Handle(XCAFDoc_ShapeTool) m_shapes;
    Handle(XCAFDoc_ColorTool) m_colors;
};

gp_Trsf moved(double x, double y, double z)
{
    gp_Trsf place;
    place.SetTranslation(gp_Vec(x, y, z));
    return place;
}

gp_Trsf turned(double x, double y, double z, double degrees)
{
    gp_Trsf turn;
    turn.SetRotation(gp::OZ(), degrees * M_PI / 180);
    return moved(x, y, z) * turn;
}

/// The face with the largest reach from the wheel's axis: its rim.
TopoDS_Shape rimOf(const TopoDS_Shape& wheel)
{
    for (TopExp_Explorer face(wheel, TopAbs_FACE); face.More(); face.Next()) {
        double low = 0;
        double high = 0;
        double ignored = 0;
        BRepTools::UVBounds(TopoDS::Face(face.Current()), ignored, ignored, low, high);
        if (std::abs(high - low) > 17.9)
            return face.Current();
    }
    return {};
}

void build(Assembly& assembly)
{
    const TDF_Label plate = assembly.part("base plate", makePlate(), Graphite);
    const TDF_Label block = assembly.part("Lagerb\xC3\xB6"
                                          "ck",
                                          makeBlock(), Blue);
    const TDF_Label shaft = assembly.part("shaft", makeShaft(), Steel);
    const TopoDS_Shape wheelShape = makeWheel();
    const TDF_Label wheel = assembly.part("flywheel", wheelShape, Red);
    assembly.paintFace(wheel, rimOf(wheelShape), Yellow);
    const TDF_Label bolt = assembly.part("bolt M10", makeBolt(), Steel);
    const TDF_Label washer = assembly.part("washer", makeWasher(), Brass);
    const TDF_Label cover = assembly.part("cover", makeCover(), Glass);

    const TDF_Label fastener = assembly.assembly("fastener");
    assembly.place(fastener, bolt, "bolt", moved(0, 0, 2));
    assembly.place(fastener, washer, "washer", moved(0, 0, 0));

    const TDF_Label top = assembly.assembly("flywheel unit");
    assembly.place(top, plate, "base plate", moved(0, 0, 0));
    assembly.place(top, block, "left bearing", moved(-60, 0, 12));
    const TDF_Label right = assembly.place(top, block, "right bearing", turned(60, 0, 12, 180));
    assembly.paint(right, {0.10, 0.50, 0.42});
    assembly.place(top, shaft, "shaft", moved(0, 0, 67));
    assembly.place(top, wheel, "flywheel", moved(0, 0, 67));
    assembly.place(top, cover, "cover", moved(0, 0, 0));
    int number = 0;
    for (const double x : {-78, 78})
        for (const double y : {-48, 48})
            assembly.place(top, fastener, ("fastener " + std::to_string(++number)).c_str(),
                           turned(x, y, 12, 30 * number));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_flywheel OUTPUT.step\n");
        return 2;
    }
    Assembly assembly;
    build(assembly);
    return assembly.write(argv[1]) ? 0 : 1;
}
