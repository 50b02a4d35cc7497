// Converts a STEP file to GLB with the CAD kernel as it comes: its reader with the healing that is built in, its mesher
// on all cores, its writer. Usage: zn_kernel_chain INPUT OUTPUT DEVIATION_MM ANGLE_DEGREES
// Prints the numbers of distinct faces, of those without mesh and of triangles.

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <IMeshTools_Parameters.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Poly_Triangulation.hxx>
#include <RWGltf_CafWriter.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <set>

namespace
{

struct Counts {
    std::size_t faces = 0;
    std::size_t without = 0;
    std::size_t triangles = 0;
};

bool read(const char* input, Handle(TDocStd_Document) & document)
{
    STEPCAFControl_Reader reader;
    reader.SetNameMode(true);
    reader.SetColorMode(true);
    reader.SetGDTMode(false); // on by default as views are; both throw on some files and are not in the output
    reader.SetViewMode(false);
    return reader.ReadFile(input) == IFSelect_RetDone && reader.Transfer(document);
}

TDF_LabelSequence freeShapes(const Handle(TDocStd_Document) & document)
{
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::ShapeTool(document->Main())->GetFreeShapes(labels);
    return labels;
}

void mesh(const TDF_LabelSequence& labels, double deviation, double degrees)
{
    IMeshTools_Parameters parameters;
    parameters.Deflection = deviation;
    parameters.Angle = degrees * std::numbers::pi / 180;
    parameters.InParallel = true;
    for (const TDF_Label& label : labels)
        BRepMesh_IncrementalMesh(XCAFDoc_ShapeTool::GetShape(label), parameters);
}

Counts count(const TDF_LabelSequence& labels)
{
    Counts counts;
    std::set<const TopoDS_TShape*> known;
    for (const TDF_Label& label : labels)
        for (TopExp_Explorer face(XCAFDoc_ShapeTool::GetShape(label), TopAbs_FACE); face.More(); face.Next()) {
            if (!known.insert(face.Current().TShape().get()).second)
                continue;
            TopLoc_Location location;
            const Handle(Poly_Triangulation)& part = BRep_Tool::Triangulation(TopoDS::Face(face.Current()), location);
            ++counts.faces;
            counts.without += part.IsNull() ? 1 : 0;
            counts.triangles += part.IsNull() ? 0 : static_cast<std::size_t>(part->NbTriangles());
        }
    return counts;
}

bool write(const char* output, const Handle(TDocStd_Document) & document)
{
    RWGltf_CafWriter writer(output, true);
    return writer.Perform(document, {}, {});
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5)
        return 2;
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    if (!read(argv[1], document))
        return 1;
    const TDF_LabelSequence labels = freeShapes(document);
    mesh(labels, std::strtod(argv[3], nullptr), std::strtod(argv[4], nullptr));
    const Counts counts = count(labels);
    if (!write(argv[2], document))
        return 1;
    std::printf("%zu %zu %zu\n", counts.faces, counts.without, counts.triangles);
    return 0;
}
