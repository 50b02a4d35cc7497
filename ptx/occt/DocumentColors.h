#pragma once

#include "ptx/occt/meshing/ShapeBody.h"

#include <TDF_Label.hxx>
#include <XCAFDoc_ColorTool.hxx>

namespace ptx::occt
{

/// The colours of a document's labels, as numbers of `table`. OCCT keeps colours linear; here they become
/// display colours.
class DocumentColors
{
public:
    DocumentColors(const Handle(XCAFDoc_ColorTool) & tool, model::AppearanceTable& table) : m_tool(tool), m_table(table)
    {
    }

    /// The surface colour of `label`, else its general one, else `NoAppearance`.
    int of(const TDF_Label& label) const;
    /// The curve colour of `label`, else as `of`.
    int ofCurves(const TDF_Label& label) const;
    bool isVisible(const TDF_Label& label) const { return m_tool->IsVisible(label); }
    /// Gives `body` the colours of the sub-shapes that have labels below that of the part: solids and shells first,
    /// faces after them, so that the finer one wins.
    void collect(const TDF_Label& part, occt::meshing::ShapeBody& body) const;

private:
    int find(const TDF_Label& label, XCAFDoc_ColorType type) const;

    Handle(XCAFDoc_ColorTool) m_tool;
    model::AppearanceTable& m_table;
};

} // namespace ptx::occt
