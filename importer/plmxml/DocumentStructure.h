#pragma once

#include "importer/plmxml/DanglingReference.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <map>
#include <vector>

namespace zn
{

/// A file that a document names for a shape.
struct StructureFile {
    QString written;   ///< as the document has it
    QString path;      ///< the same with slashes and without escapes, relative to the document where it is
    QString format;    ///< as the document calls it
    QString found;     ///< the file that was taken for it; empty when there is none
    QString foundBy;   ///< how it was found; empty when the location led to it
    double places = 0; ///< where it is shown
    QString whyNot;    ///< why it is shown nowhere; empty for a file that is shown
    int line = 0;      ///< of the element that names it first
};

/// An occurrence that is passed over, with all that it says.
struct PassedOccurrence {
    QString id;   ///< may be empty
    QString path; ///< its instances, as they are written; may be empty
    int line = 0; ///< from 1

    /// How many of a document are kept at most; all are counted.
    static constexpr std::size_t maxKept = 1000;
};

/// A representation of a placed part that is shown nowhere.
struct LeftOutShape {
    /// How many of a document are kept at most; all are counted.
    static constexpr std::size_t maxKept = 1000;

    QString element; ///< the kind, such as "CompoundRep"
    QString id;      ///< may be empty
    QString part;    ///< the id of its part; may be empty
    QString written; ///< its file, as the document has it; may be empty
    QString format;  ///< as the document calls it
    QString whyNot;  ///< the reason, a clause for a person
    int line = 0;    ///< of the element, from 1
};

/// What a product structure holds and what was chosen of it.
struct DocumentStructure {
    bool isNormalised = false;      ///< whether the document had to be brought into the form that the loader reads
    QString treeFrom;               ///< "instance graph", "occurrence tree" or "flat"
    QString view;                   ///< the product view that was taken, by name or id; empty without one
    QStringList otherViews;         ///< those that were left
    std::size_t roots = 0;          ///< places at the top
    double occurrences = 0;         ///< places, those of assemblies included
    double leaves = 0;              ///< places of parts without parts of their own
    double hiddenLeaves = 0;        ///< of these, those that the document switches off
    double leavesWithoutShape = 0;  ///< of these, those that no file is named for
    double shapePlaces = 0;         ///< places with a shape of their own
    std::size_t parts = 0;          ///< different parts that are placed
    std::size_t depth = 0;          ///< levels of places
    std::size_t instances = 0;      ///< elements
    std::size_t userValues = 0;     ///< elements
    std::size_t materials = 0;      ///< elements
    std::size_t duplicateIds = 0;   ///< elements whose id an earlier one has
    std::size_t conditions = 0;     ///< elements that state for whom something holds; none is evaluated
    std::size_t internalShapes = 0; ///< elements that are shapes themselves; none is read
    bool isSelection = false;       ///< whether the view chooses among the places of the graph; all are shown
    std::size_t placedTwice = 0;    ///< occurrences that several others claim; they stand once
    std::size_t badTransforms = 0;  ///< transforms without the numbers that their type wants
    /// Attributes of materials with words among their numbers, or none. They are left out where the document is
    /// rewritten.
    std::size_t badMaterialNumbers = 0;
    QStringList languages;                             ///< that it has texts in, beside those of its attributes
    bool hasNoUnits = false;                           ///< whether lengths are those of the part files
    bool isCut = false;                                ///< whether there were too many places to count
    std::size_t danglingCount = 0;                     ///< references that lead nowhere
    std::vector<importer::DanglingReference> dangling; ///< the first of them
    std::size_t unplacedCount = 0; ///< occurrences whose path leads to no place, or that nothing at the top leads to
    std::vector<PassedOccurrence> unplaced; ///< the first of them
    std::size_t repeatedCount = 0; ///< occurrences of a graph that speak of a place that an earlier one speaks of
    std::vector<PassedOccurrence> repeated;       ///< the first of them
    std::vector<StructureFile> files;             ///< that the parts are drawn from, each once
    std::map<QString, std::size_t> leftOutCounts; ///< representations that are shown nowhere, by the reason
    std::vector<LeftOutShape> leftOut;            ///< the first of them, in the order of the text
};

} // namespace zn
