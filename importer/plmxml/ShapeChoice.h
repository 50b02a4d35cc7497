#pragma once

#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <string>
#include <vector>

namespace importer::plmxml
{

/// What may hold the shape of one part.
struct ShapeSource {
    pugi::xml_node own;        ///< an occurrence whose own representations come first; may be null
    pugi::xml_node view;       ///< of the part; may be null
    pugi::xml_node revision;   ///< may be null
    pugi::xml_node attachedTo; ///< an occurrence whose attachments come last; may be null
    std::string referenceSet;  ///< of the placement; empty without one
    std::string name;          ///< of the part, for pieces without a name
};

/// Finds the files of a part: the representations of its occurrence, else its own, else the data sets of its revision,
/// else what is attached to its occurrence; the first of these that has a file that can be read. Several in one of them
/// are alternatives, of which the one is taken that is there, shows the part whole and comes in best; the compound
/// representations of one representation are pieces, and all of them are taken. Empty for a part that no file is named
/// for.
///
/// A part without a file that can be read has the first that would be read best, so that the import names what is
/// missing.
std::vector<ShapePiece> chooseShape(const Reading& reading, const ShapeSource& source);

/// Whether one of the pieces is there, and all could be read.
bool isReadable(const Reading& reading, const std::vector<ShapePiece>& pieces);

/// The representations that a part view or an occurrence has as children and by reference, each once.
std::vector<pugi::xml_node> representationsOf(const Reading& reading, const pugi::xml_node& view);

} // namespace importer::plmxml
