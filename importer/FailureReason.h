#pragma once

#include <QString>

class znPtxConverterJob;

namespace importer
{

/// Why an ended conversion brings nothing in, in one sentence; never empty. One that succeeded wrote no scene file.
/// A failed one's log that goes with the session is copied to where it stays, and named.
QString failureReason(const znPtxConverterJob& conversion);

} // namespace importer
