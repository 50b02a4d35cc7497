#pragma once

#include "ptx/model/Job.h"
#include "ptx/model/Model.h"
#include "ptx/occt/meshing/ShapeBody.h"

#include <Standard_Handle.hxx>

#include <functional>
#include <string>
#include <vector>

class TDF_Label;
class TDocStd_Document;

namespace ptx::occt
{

/// What a document holds: products and occurrences, and the shapes that their bodies are to be made from.
struct DocumentContent {
    model::Model model;                           ///< its bodies are still missing
    std::vector<occt::meshing::ShapeBody> shapes; ///< in the order of the bodies to come
};

/// Reads the structure of `document`, each product once. Colour precedence, from strong to weak: occurrence, face,
/// solid, product, assembly around it.
/// `complete` is called for each product with its label when all else of it is known but its children's products; it
/// may add what the reader knows beside the document. It may be empty.
DocumentContent walkDocument(const Handle(TDocStd_Document) & document, const model::Job& job,
                             const std::function<void(const TDF_Label&, model::Product&)>& complete = {});

} // namespace ptx::occt
