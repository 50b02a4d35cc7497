#include "ptx/occt/OcctSetup.h"

#include "ptx/occt/OcctVersion.h"

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <OSD_Parallel.hxx>
#include <Standard_Version.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_TShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSAlgo.hxx>
#include <XSAlgo_AlgoContainer.hxx>

#include <unordered_map>

namespace ptx::occt
{

namespace
{

/// Stands in for the healing of OCCT's readers: notes the precision and leaves the shape as it is.
class NoHealing : public XSAlgo_AlgoContainer
{
public:
    TopoDS_Shape ProcessShape(const TopoDS_Shape& shape, const Standard_Real precision, const Standard_Real,
                              const Standard_CString, const Standard_CString, Handle(Standard_Transient) &,
                              const Message_ProgressRange&, const Standard_Boolean) const override
    {
        if (!shape.IsNull())
            m_precisions.insert_or_assign(shape.TShape().get(), precision);
        return shape;
    }

    double precision(const TopoDS_Shape& shape, double otherwise) const
    {
        const auto found = m_precisions.find(shape.TShape().get());
        return found == m_precisions.end() ? otherwise : found->second;
    }

private:
    mutable std::unordered_map<const TopoDS_TShape*, double> m_precisions;
};

Handle(NoHealing) & noHealing()
{
    static Handle(NoHealing) instance = new NoHealing;
    return instance;
}

} // namespace

void setUpOcct()
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    XCAFDoc_ShapeTool::SetAutoNaming(false);
    XSAlgo::Init();
    XSAlgo::SetAlgoContainer(noHealing());
#ifdef __SANITIZE_THREAD__
    // The thread sanitizer sees what threads hand each other by the locks of the system, and nothing of TBB's.
    OSD_Parallel::SetUseOcctThreads(true);
#endif
}

Handle(TDocStd_Document) newDocument()
{
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    XCAFDoc_DocumentTool::SetLengthUnit(document, 0.001);
    return document;
}

double precisionOf(const TopoDS_Shape& shape, double otherwise)
{
    if (shape.IsNull())
        return otherwise;
    const double own = noHealing()->precision(shape, 0);
    if (own > 0)
        return own;
    TopoDS_Iterator child(shape);
    return child.More() ? noHealing()->precision(child.Value(), otherwise) : otherwise;
}

const char* occtVersion()
{
    return OCC_VERSION_COMPLETE;
}

} // namespace ptx::occt
