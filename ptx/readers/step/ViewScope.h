#pragma once

#include "ptx/readers/step/PartPlaces.h"
#include "ptx/readers/step/UserAttributes.h"

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>
#include <gp_Trsf.hxx>

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

class Interface_Graph;
class STEPCAFControl_Reader;
class Standard_Transient;
class StepRepr_Representation;
class TDocStd_Document;
class Transfer_TransientProcess;

namespace ptx::step
{

/// What a view shows of the shapes of its file.
struct ViewScope {
    bool isWhole = false;                          ///< all of them; the rest says nothing then
    std::vector<TDF_Label> products;               ///< these with all that is in them
    std::vector<Handle(Standard_Transient)> items; ///< these solids, shells, faces and curves
    gp_Trsf place;                                 ///< takes the view's coordinates to those of the file, millimetres
    std::string path;   ///< to that place, as names of occurrences, where there are several of its part
    bool isCut = false; ///< the part has more places than there are scopes for
    TDF_Label part;     ///< the product within an assembly that is shown; null when it is not one
};

/// The entities that `entity`, a representation of any kind, has as items, and its context.
std::vector<Handle(Standard_Transient)> partsOf(const Handle(Standard_Transient) & entity);

/// Finds out what drawings show by the representations that they map.
class ViewScopes
{
public:
    /// After the transfer of `reader` into `document`; both outlive this object.
    ViewScopes(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document);

    /// Of a drawing with these parts. One that maps no shape shows everything. One of a product within the assembly has
    /// a scope for each place of it, `PartPlaces::Most` at the most, the first of which says when there are more.
    /// Nothing for one of several such products: nobody knows the place of the view.
    std::vector<ViewScope> scopesOf(const std::vector<Handle(Standard_Transient)>& parts);

    /// Whether drawings list so many shapes that the last ones show everything instead.
    bool isCut() const { return m_isCut; }

private:
    /// What a representation is of.
    struct Home {
        TDF_Label product;  ///< null for one of no product
        bool isAll = false; ///< it is all of the product's shape, and not a part of it alone
    };
    struct Shown;

    std::vector<ViewScope> atEachPlace(ViewScope scope, const PartPlaces& places);
    void countItems(std::size_t count, ViewScope& scope);
    void add(const Handle(StepRepr_Representation) & mapped, Shown& shown);
    void addItems(const StepRepr_Representation& mapped, Shown& shown);
    const Home& homeOf(const Handle(StepRepr_Representation) & representation);
    std::optional<TDF_Label> productOf(const Handle(StepRepr_Representation) & representation) const;
    Home findHome(const Handle(StepRepr_Representation) & representation) const;
    bool isShape(const Handle(Standard_Transient) & item) const;

    const Interface_Graph& m_graph;
    Handle(Transfer_TransientProcess) m_process;
    ProductLabels m_labels;
    TDF_Label m_onlyRoot; ///< null when there are several
    PlaceFinder m_places;
    std::unordered_map<const Standard_Transient*, Home> m_homes;
    std::size_t m_items = 0; ///< of all views
    bool m_isCut = false;
};

} // namespace ptx::step
