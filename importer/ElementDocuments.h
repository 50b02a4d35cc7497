#pragma once

#include "files/References.h"
#include "host/OSGSystem/Node.h"
#include "importer/ImportResult.h"
#include "importer/plmxml/DocumentElement.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QTemporaryDir;

namespace importer
{

/// References of documents to elements of other ones. The loader asks for files, so that a file stands in for each such
/// element; who is asked to read it finds here what is meant. What is told in the end names the element.
class ElementDocuments
{
public:
    /// An element of a document that another one refers to.
    using Element = plmxml::DocumentElement;

    /// Beyond so many elements there are no more files: what stands in for these is missing.
    static constexpr int maxCount = 1000;

    ElementDocuments();
    ~ElementDocuments();

    /// Where files stand in for elements.
    QString folder();
    /// Makes the files of `elements`. Those of documents that may not be read by `rules` are left out: who named them
    /// is not trusted.
    void add(const std::vector<Element>& elements, const files::DocumentRules& rules);
    /// What a path stands in for; nothing for other files.
    std::optional<Element> find(const QString& path) const;

    /// `line` of the log with elements in place of the paths that stand in for them.
    QString aboutElements(QString line) const;
    /// The same for the paths of part files.
    void tellElements(std::vector<zn::MissingPart>& missing) const;
    /// The same for the references of a tree.
    void nameElements(const osg::NodePtr& root) const;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QHash<QString, Element> m_elements; ///< by the paths that stand in for them
};

} // namespace importer
