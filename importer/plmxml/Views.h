#pragma once

#include "importer/plmxml/Reading.h"

#include <vector>

namespace importer::plmxml
{

/// The product view that counts: the active one, else the one that the document or the view itself calls the default,
/// else the first that is not empty; null without views.
pugi::xml_node chooseView(const Reading& reading);

/// The occurrences of a view, which may stand in one another, in the order of the text; those in no view for null.
std::vector<pugi::xml_node> occurrencesOf(const Reading& reading, const pugi::xml_node& view);

/// What a view is called, for a person.
QString titleOf(const Reading& reading, const pugi::xml_node& view);

} // namespace importer::plmxml
