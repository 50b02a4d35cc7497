#pragma once

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <gp_Trsf.hxx>

#include <cstddef>
#include <string>
#include <vector>

namespace ptx::step
{

/// One place of a product in its file.
struct PartPlace {
    gp_Trsf place;    ///< takes coordinates of the product to those of the file, millimetres
    std::string path; ///< names of the occurrences that lead to it, from the top down; empty for a product at the top
};

struct PartPlaces {
    static constexpr std::size_t Most = 16;

    std::vector<PartPlace> places; ///< the first ones
    bool isInner = false;          ///< others use the product
    bool isCut = false;            ///< there are more
};

/// Finds where products stand in the assemblies of a document.
class PlaceFinder
{
public:
    /// Stays where it is as long as this object does.
    const PartPlaces& of(const TDF_Label& product);

private:
    NCollection_DataMap<TDF_Label, PartPlaces, TDF_LabelMapHasher> m_known;
};

} // namespace ptx::step
