#pragma once

#include "host/OSGSystem/Math.h"
#include "importer/Importer.h"

#include <QString>

#include <map>
#include <string>
#include <vector>

namespace corpustest
{

/// The corners of what is drawn, in millimetres of the scene.
struct Box {
    osg::Vec3f low;
    osg::Vec3f high;
};

/// One import in a session of its own, which is gone when it is looked at.
struct Import {
    zn::ImportResult result;
    std::string tree;
    std::vector<std::string> tags;     ///< of each node in tree order, with its name
    std::vector<std::string> ids;      ///< of the occurrences below the root, in tree order
    std::vector<std::string> places;   ///< of the geometries, sorted: the part's name and its origin
    std::vector<std::string> matrices; ///< the same with the axes
    std::map<std::string, Box> boxes;  ///< of the geometries of a part, by its name
};

/// Imports `file` by the real converter with so many processes at a time; `references` is what becomes of references.
Import import(const QString& file, const char* processes, const char* references = "keep");

} // namespace corpustest
