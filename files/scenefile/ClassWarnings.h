#pragma once

#include "files/Note.h"

#include <cstdint>
#include <string>
#include <vector>

namespace osg::scenefile
{

/// Counts the objects of each class that are not read or written as they are.
class ClassWarnings
{
public:
    /// `usedInstead` is the nearest known base class; empty: the object was left out.
    void add(const std::string& className, const std::string& usedInstead);
    /// One a class, in the order of the first object of each; they have no file name yet.
    std::vector<files::Note> notes() const;

private:
    struct Row {
        std::string className;
        std::string usedInstead;
        std::uint32_t count = 0;
    };

    static QString textOf(const Row& row);

    std::vector<Row> m_rows;
};

} // namespace osg::scenefile
