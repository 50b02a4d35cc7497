#include "cad/visualization/PLMXMLOverrides.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"

namespace HB::Visualization
{

using namespace XML::CAD;

/// Occurrences of the active view come before those of the definition; the first of all gives both texts, even an empty
/// one that a later occurrence would fill.
PLMXMLOverride findOverride(const CADDocument& document, CADInstance& instance, const std::vector<std::string>& path)
{
    const CADProductView* view = document.getActiveProductView();
    auto found = view ? view->findOccurrences(path) : std::vector<CADOccurrence*>();
    const CADProductDef* definition = found.empty() ? instance.getRootProductDef() : nullptr;
    if (definition)
        found = definition->findOccurrences(path);
    if (found.empty())
        return {};
    return {found.front()->getTransformRef(), found.front()->getMaterialRef()};
}

} // namespace HB::Visualization
