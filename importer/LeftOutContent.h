#pragma once

#include "importer/ImportResult.h"

#include <vector>

namespace zn
{

/// What the converters of the tree at `root` say that they do not bring in, summed up over the files, in tree order. A
/// file that is in several places counts once.
std::vector<LeftOutContent> leftOutContent(const osg::NodePtr& root);

/// One line about `content` of the import of `file`, for a person.
QString describe(const QString& file, const LeftOutContent& content);

} // namespace zn
