#pragma once

#include "ptx/readers/step/FacetOwners.h"
#include "ptx/readers/step/SavedViews.h"

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>

#include <cstddef>
#include <map>
#include <span>
#include <unordered_map>
#include <vector>

class STEPCAFControl_Reader;
class TopoDS_Shape;
class TopoDS_TShape;

namespace ptx::occt
{
struct DocumentContent;
} // namespace ptx::occt

namespace ptx::occt::meshing
{
struct ShapeBody;
} // namespace ptx::occt::meshing

namespace ptx::step
{

/// Which saved views show a shape. Where all views show all there is nothing to tell of any.
class ViewedShapes
{
public:
    /// After the transfer of `reader`, which goes on to hold the shapes. Where there is more of views and shapes than
    /// could be told, all views show all, and `log` says so.
    ViewedShapes(const STEPCAFControl_Reader& reader, std::span<const SavedView> views, core::Log& log);

    /// The next product of the model is that of `label`.
    void addProduct(const TDF_Label& label);
    /// Once all products are in `content`: marks its shapes, and `facets`, with the sets of views that show them.
    void finish(occt::DocumentContent& content, std::vector<FacetBody>& facets);

private:
    using Views = std::vector<std::size_t>;

    void addView(const STEPCAFControl_Reader& reader, std::size_t number, const ViewScope& scope);
    void addWithin(const TDF_Label& product, std::size_t view);
    void addShape(const TopoDS_Shape& shape, std::size_t view);
    int numberOf(const Views& views);
    void mark(occt::meshing::ShapeBody& body, const Views& around);

    std::size_t m_views;
    Views m_whole; ///< those that show everything
    NCollection_DataMap<TDF_Label, Views, TDF_LabelMapHasher> m_ofProducts;
    std::unordered_map<const TopoDS_TShape*, Views> m_ofShapes; ///< of faces, and of edges of no face
    std::vector<Views> m_products;                              ///< of the model
    std::map<Views, int> m_sets;
    std::size_t m_pairs = 0;
};

} // namespace ptx::step
