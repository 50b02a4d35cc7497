#pragma once

#include "ptx/readers/step/ViewFraming.h"
#include "ptx/readers/step/ViewScope.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class STEPCAFControl_Reader;
class TDocStd_Document;

namespace ptx::core
{
class Log;
} // namespace ptx::core

namespace ptx::step
{

/// A view as the file has it: it can be framed when what there is to see is known.
struct SavedView {
    std::string name; ///< unique, without square brackets
    WrittenCamera camera;
    std::vector<std::uint32_t> drawings;  ///< numbers of the draughting models that tell what it shows
    bool isDefault = false;               ///< the file is to open with it
    bool showsHidden = false;             ///< it asks not to remove what is hidden
    ViewScope scope = {};                 ///< what it shows of the shapes
    std::optional<std::size_t> part = {}; ///< number of the product that it is a view of, when that is an inner one
};

/// The views of a file.
struct SavedViews {
    std::vector<SavedView> views;
    std::size_t leftOut = 0; ///< how many more there are, of several parts each
};

/// `name` with round brackets instead of square ones, in which tags put names.
std::string withoutBrackets(std::string name);

/// The saved views of the model that `reader` has transferred into `document`, in the order of their cameras: cameras
/// that a draughting model shows, with or without a word on hidden lines. Views that programs make by themselves (their
/// names begin with "* ") come if `withAutomatic`. A view of a part that stands in several places comes for each of
/// them, named by the occurrences too, up to a limit. Views of several such parts and views that say the same twice are
/// left out. `log` tells how many there are and what was left out.
SavedViews savedViews(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document,
                      bool withAutomatic, core::Log& log);

} // namespace ptx::step
