#include "ptx/occt/DocumentProperties.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/core/Settings.h"
#include "ptx/occt/OcctText.h"

#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_Volume.hxx>
#include <gp_Pnt.hxx>

namespace ptx::occt
{

using namespace osg::scenefile::converted;

DocumentProperties::DocumentProperties(const Handle(TDocStd_Document) & document)
    : m_layers(XCAFDoc_DocumentTool::LayerTool(document->Main()))
{
}

std::vector<std::string> DocumentProperties::of(const TDF_Label& label) const
{
    std::vector<std::string> tags;
    TDF_LabelSequence layers;
    m_layers->GetLayers(label, layers);
    for (const TDF_Label& layer : layers) {
        TCollection_ExtendedString name;
        if (m_layers->GetLayer(layer, name))
            tags.push_back(tag(LayerKey, utf8(name)));
    }
    addValidation(label, tags);
    return tags;
}

bool DocumentProperties::isVisible(const TDF_Label& label) const
{
    TDF_LabelSequence layers;
    m_layers->GetLayers(label, layers);
    for (const TDF_Label& layer : layers)
        if (!m_layers->IsVisible(layer))
            return false;
    return true;
}

void DocumentProperties::addValidation(const TDF_Label& label, std::vector<std::string>& tags)
{
    double value = 0;
    if (XCAFDoc_Volume::Get(label, value))
        tags.push_back(tag(VolumeKey, core::numberText(value)));
    if (XCAFDoc_Area::Get(label, value))
        tags.push_back(tag(AreaKey, core::numberText(value)));
    gp_Pnt centroid;
    if (XCAFDoc_Centroid::Get(label, centroid))
        tags.push_back(tag(CentroidKey, core::numberText(centroid.X()) + " " + core::numberText(centroid.Y()) + " " +
                                            core::numberText(centroid.Z())));
}

} // namespace ptx::occt
