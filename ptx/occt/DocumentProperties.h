#pragma once

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>
#include <XCAFDoc_LayerTool.hxx>

#include <string>
#include <vector>

class TDocStd_Document;

namespace ptx::occt
{

/// What a document says of its labels beside names and colours: layers and validation properties.
class DocumentProperties
{
public:
    explicit DocumentProperties(const Handle(TDocStd_Document) & document);

    /// As tags, see files/scenefile/ConvertedTree.h.
    std::vector<std::string> of(const TDF_Label& label) const;
    /// False when `label` is on a layer that is switched off.
    bool isVisible(const TDF_Label& label) const;

private:
    static void addValidation(const TDF_Label& label, std::vector<std::string>& tags);

    Handle(XCAFDoc_LayerTool) m_layers;
};

} // namespace ptx::occt
