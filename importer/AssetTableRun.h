#pragma once

#include "importer/ImportResult.h"

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer
{

/// Puts assets on the tree of `result` as the table "materials.json" in the folder of assets says, where `session`
/// wants assets to be put on materials and the folder has a table. Its rows win over assets that bear the names of
/// materials. What was put where, and which rows matched nothing, is told in the result and among its messages. A
/// table with a fault changes nothing; the result is partial then, and says why.
void applyAssetTable(zn::StandaloneSession& session, zn::ImportResult& result);

} // namespace importer
