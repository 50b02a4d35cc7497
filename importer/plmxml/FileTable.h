#pragma once

#include "importer/plmxml/DocumentElement.h"
#include "importer/plmxml/DocumentStructure.h"
#include "importer/plmxml/FileFinder.h"
#include "importer/plmxml/FileFormats.h"
#include "importer/plmxml/References.h"
#include "importer/plmxml/SourceDocument.h"

#include <QHash>

#include <cstdint>
#include <string>
#include <vector>

namespace importer::plmxml
{

/// A file that may hold a shape.
struct ShapeFile {
    QString written; ///< in the document
    QString path;    ///< as cleanLocation gives it
    QString format;  ///< as the document calls it
    QString id;      ///< of the element that is meant of it, if it is a document; empty for the whole
    FoundFile found;
    int rank = FileFormats::NoShape;
    std::string element; ///< that names it first, with its id
    int line = 0;
    double places = 0;          ///< where it is shown
    QString standIn;            ///< to be read instead of it; may be empty
    bool isOfEmptyType = false; ///< named by a part that nothing is shown of
    bool isOfAssembly = false;  ///< named by an assembly whose parts are shown instead

    /// The path that the import has to read.
    const QString& toRead() const { return standIn.isEmpty() ? found.path : standIn; }
    /// A path with the element that is meant of it.
    QString withId(const QString& of) const { return id.isEmpty() ? of : of + QLatin1Char('#') + id; }
    /// Whether it can be read.
    bool isThere() const { return found.by != FoundBy::Nowhere; }
};

/// The files that a document names, each once.
class FileTable
{
public:
    /// Finds and ranks by these, which must outlive this.
    FileTable(const SourceDocument& document, FileFinder& finder, const FileFormats& formats)
        : m_document(document), m_finder(finder), m_formats(formats)
    {
    }

    /// No file.
    static constexpr std::uint32_t None = ~std::uint32_t(0);

    /// The index of the file that `element` names with these texts; None for an empty location and for no shape.
    std::uint32_t add(const pugi::xml_node& element, const char* location, const char* format);
    /// The index of the document that `element` refers to an element of, for that element alone; None within the same.
    std::uint32_t addElement(const pugi::xml_node& element, const Reference& reference);

    /// Whether a file of this absolute path may be taken.
    bool allows(const QString& path) const { return m_finder.allows(path); }
    /// One of them.
    ShapeFile& operator[](std::uint32_t index) { return m_files[index]; }
    /// One of them.
    const ShapeFile& operator[](std::uint32_t index) const { return m_files[index]; }
    /// Has a file in `folder` read in place of each document of which a single element is shown. Gives the elements.
    std::vector<DocumentElement> exchangeElements(const QString& folder);
    /// All, in the order in which they were added.
    const std::vector<ShapeFile>& files() const { return m_files; }

private:
    std::uint32_t add(const pugi::xml_node& element, const QString& written, const QString& format, const QString& id);

    const SourceDocument& m_document;
    FileFinder& m_finder;
    const FileFormats& m_formats;
    std::vector<ShapeFile> m_files;
    QHash<QString, std::uint32_t> m_byPath;
};

} // namespace importer::plmxml
