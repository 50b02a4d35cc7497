#pragma once

#include "tools/ptxconvert/kernel/ShapeBody.h"
#include "tools/ptxconvert/model/Job.h"
#include "tools/ptxconvert/model/Model.h"

#include <Standard_Handle.hxx>

#include <vector>

class TDocStd_Document;

namespace ptx
{

/// What a document holds: products and occurrences, and the shapes that their bodies are to be made from.
struct DocumentContent {
    Model model;                   ///< its bodies are still missing
    std::vector<ShapeBody> shapes; ///< in the order of the bodies to come
};

/// Reads the structure of `document`, each product once. Colour precedence, from strong to weak: occurrence, face,
/// solid, product, assembly around it.
DocumentContent walkDocument(const Handle(TDocStd_Document) & document, const Job& job);

} // namespace ptx
