// Stands before functions of the CAD kernel, and crashes where the environment variable PTX_KERNEL_FAULTS says so.
//
// It holds words with blanks between them: "faces=12" crashes the meshing of every shape with twelve faces, "healed=12"
// its healing, "face=NAME" the translation of STEP faces of this name, "color=2" that of IGES entities of this colour,
// "reading" the reading of any text.

#include <BRepTools.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESToBRep_Actor.hxx>
#include <ShapeFix_Shape.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepToTopoDS_NMTool.hxx>
#include <StepToTopoDS_Tool.hxx>
#include <StepToTopoDS_TranslateFace.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>
#include <Transfer_Binder.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_Reader.hxx>

#include <dlfcn.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace
{

void crashIfAsked(const std::string& fault)
{
    const char* faults = std::getenv("PTX_KERNEL_FAULTS");
    const std::string words = std::string(" ") + (faults ? faults : "") + " ";
    if (words.find(" " + fault + " ") != words.npos)
        *const_cast<volatile int*>(static_cast<int*>(nullptr)) = 0;
}

template <class Function>
Function* behind(const char* symbol)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, symbol));
}

std::string faceCount(const TopoDS_Shape& shape)
{
    int faces = 0;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        ++faces;
    return std::to_string(faces);
}

} // namespace

void ShapeFix_Shape::Init(const TopoDS_Shape& shape)
{
    crashIfAsked("healed=" + faceCount(shape));
    behind<void(ShapeFix_Shape*, const TopoDS_Shape&)>("_ZN14ShapeFix_Shape4InitERK12TopoDS_Shape")(this, shape);
}

void BRepTools::Clean(const TopoDS_Shape& shape, const bool force)
{
    crashIfAsked("faces=" + faceCount(shape));
    behind<void(const TopoDS_Shape&, bool)>("_ZN9BRepTools5CleanERK12TopoDS_Shapeb")(shape, force);
}

void StepToTopoDS_TranslateFace::Init(const Handle(StepShape_FaceSurface) & face, StepToTopoDS_Tool& tool,
                                      StepToTopoDS_NMTool& nmTool)
{
    if (!face->Name().IsNull())
        crashIfAsked("face=" + std::string(face->Name()->ToCString()));
    behind<void(StepToTopoDS_TranslateFace*, const Handle(StepShape_FaceSurface)&, StepToTopoDS_Tool&,
                StepToTopoDS_NMTool&)>(
        "_ZN26StepToTopoDS_TranslateFace4InitERKN11opencascade6handleI21StepShape_FaceSurfaceEER17StepToTopoDS_Tool"
        "R19StepToTopoDS_NMTool")(this, face, tool, nmTool);
}

Handle(Transfer_Binder) IGESToBRep_Actor::Transfer(const Handle(Standard_Transient) & start,
                                                   const Handle(Transfer_TransientProcess) & process,
                                                   const Message_ProgressRange& progress)
{
    if (const auto entity = Handle(IGESData_IGESEntity)::DownCast(start); !entity.IsNull())
        crashIfAsked("color=" + std::to_string(entity->RankColor()));
    return behind<Handle(Transfer_Binder)(IGESToBRep_Actor*, const Handle(Standard_Transient)&,
                                          const Handle(Transfer_TransientProcess)&, const Message_ProgressRange&)>(
        "_ZN16IGESToBRep_Actor8TransferERKN11opencascade6handleI18Standard_TransientEERKNS1_I25Transfer_"
        "TransientProcessEERK21Message_ProgressRange")(this, start, process, progress);
}

IFSelect_ReturnStatus XSControl_Reader::ReadFile(const char* path)
{
    crashIfAsked("reading");
    return behind<IFSelect_ReturnStatus(XSControl_Reader*, const char*)>("_ZN16XSControl_Reader8ReadFileEPKc")(this,
                                                                                                               path);
}
