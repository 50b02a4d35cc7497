#include "tests/roads/ptxconvert/ExactShapes.h"

#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Writer.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <cmath>

namespace ptxtest
{

namespace
{

osg::Vec3f vec(double x, double y, double z)
{
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

TopoDS_Shape allOf(const Handle(TDocStd_Document) & document)
{
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::ShapeTool(document->Main())->GetFreeShapes(labels);
    TopoDS_Compound all;
    const BRep_Builder builder;
    builder.MakeCompound(all);
    for (const TDF_Label& label : labels)
        builder.Add(all, XCAFDoc_ShapeTool::GetShape(label));
    return all;
}

} // namespace

ExactMeasures exactMeasures(const TopoDS_Shape& shape)
{
    ExactMeasures result;
    GProp_GProps surface;
    BRepGProp::SurfaceProperties(shape, surface);
    result.area = surface.Mass();
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
        GProp_GProps volume;
        BRepGProp::VolumeProperties(solid.Current(), volume);
        result.volume += volume.Mass();
    }
    result.isSolid = !TopExp_Explorer(shape, TopAbs_FACE, TopAbs_SOLID).More();
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, false, false);
    double low[3], high[3];
    box.Get(low[0], low[1], low[2], high[0], high[1], high[2]);
    result.low = vec(low[0], low[1], low[2]);
    result.high = vec(high[0], high[1], high[2]);
    result.diagonal = std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
    return result;
}

TopoDS_Shape shapeOfStepFile(const std::string& path)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    STEPCAFControl_Reader reader;
    if (reader.ReadFile(path.c_str()) != IFSelect_RetDone || !reader.Transfer(document))
        return {};
    const TopoDS_Shape all = allOf(document);
    document->Close();
    return all;
}

bool writeStepFile(const TopoDS_Shape& shape, const std::string& path)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    STEPControl_Writer writer;
    return writer.Transfer(shape, STEPControl_AsIs) == IFSelect_RetDone &&
           writer.Write(path.c_str()) == IFSelect_RetDone;
}

} // namespace ptxtest
