#pragma once

#include "importer/plmxml/Normaliser.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace importer::plmxml
{

/// What one process hands to another of a document that it has read: all but the text, and of the structure what
/// `applyNotes` asks for.
std::string reportOf(const NormalisedDocument& document);

/// The same document. Nothing when `bytes` are no whole report, or one whose parts do not fit each other: they may come
/// from a process that a document has taken over. Its members take `memory` bytes at most.
std::optional<NormalisedDocument> documentOf(std::string_view bytes, std::uint64_t memory);

} // namespace importer::plmxml
