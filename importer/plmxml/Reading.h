#pragma once

#include "importer/plmxml/ElementIndex.h"
#include "importer/plmxml/FileTable.h"
#include "importer/plmxml/LanguageTexts.h"
#include "importer/plmxml/Matrix4.h"
#include "importer/plmxml/References.h"

namespace importer::plmxml
{

/// One document while its structure is being found.
struct Reading {
    const SourceDocument& document;
    const ElementIndex& index;
    References& references;
    LanguageTexts& languages;
    FileTable& files;
    zn::DocumentStructure& facts; ///< what is counted on the way
};

/// The child of `element` with this name; null if there is none.
pugi::xml_node childOf(const Reading& reading, const pugi::xml_node& element, std::string_view name);

/// The transform that stands in an element or that it refers to; nothing without one and for one that cannot be read,
/// which is counted.
std::optional<Matrix4> transformOf(const Reading& reading, const pugi::xml_node& element);

/// The value of an attribute; empty if there is none.
std::string textOf(const pugi::xml_node& element, const char* attribute);

/// What an element is called, in the preferred language where it has names in several.
std::string nameOf(const Reading& reading, const pugi::xml_node& element);

/// The revision that a part view, an occurrence or an instance is of, by an attribute; the item of a revision in turn.
pugi::xml_node otherOf(const Reading& reading, const pugi::xml_node& element, const char* attribute);

} // namespace importer::plmxml
