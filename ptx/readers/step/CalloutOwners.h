#pragma once

#include "ptx/model/Model.h"
#include "ptx/readers/step/ViewedCallouts.h"
#include "ptx/readers/step/annotations/Drawing.h"

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>

#include <string>
#include <vector>

class STEPCAFControl_Reader;

namespace ptx::core
{
class Log;
} // namespace ptx::core

namespace ptx::step
{

/// Gives what the annotations of a file draw to the products that they tell of. What nobody knows the product of goes
/// to that of the file.
class CalloutOwners
{
public:
    /// After the transfer of `reader`. Each callout gets the numbers of the views that show it. `log` tells how
    /// much is drawn, and what is not.
    CalloutOwners(const STEPCAFControl_Reader& reader, const annotations::Drawing& drawing,
                  const ViewedCallouts& viewed, core::Log& log);

    /// Gives `product` what belongs to `label`, with appearances of this object's own.
    void addTo(model::Product& product, const TDF_Label& label);
    /// Once all products of the file are in `model`: gives the rest, and puts the appearances among those of `model`. A
    /// file without products gets one, named `name`.
    void finish(model::Model& model, const std::string& name);

private:
    using Callouts = std::vector<model::Callout>;

    void place(const STEPCAFControl_Reader& reader, const annotations::Drawing& drawing, const ViewedCallouts& viewed);
    void restate(model::Product& product, model::AppearanceTable& appearances) const;

    NCollection_DataMap<TDF_Label, Callouts, TDF_LabelMapHasher> m_owned;
    Callouts m_others;
    model::AppearanceTable m_appearances;
};

} // namespace ptx::step
