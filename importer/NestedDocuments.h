#pragma once

#include "files/SceneReaders.h"
#include "host/OSGSystem/Node.h"
#include "importer/plmxml/Normaliser.h"

#include <QList>
#include <QObject>
#include <QString>

class znPLMXMLLoaderJob;
namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer
{

class ElementDocuments;

/// Lets a part file be a PLMXML document itself: while this lives, the kernel's file loading reads such files.
///
/// Each is imported by a loader job of its own, which runs at once, in an event loop of its own: in a queue it would
/// wait for the outer document's job, which waits for it. A document that leads back to itself is refused, and so are
/// documents over the limits.
class NestedDocuments : public QObject
{
    Q_OBJECT

public:
    static constexpr int maxDepth = 16;   ///< documents inside one another, the outermost included
    static constexpr int maxCount = 1000; ///< documents of one import, so that few files cannot stand for many

    /// For the import of the document `outermost`; the others are read with `options`. Copies of part files within them
    /// are taken from `nodesLeft`, which must outlive this. What is added to the session's readers meanwhile goes with
    /// this.
    ///
    /// @param elements finds the element that a part file stands in for, and makes such files; must outlive this
    NestedDocuments(zn::StandaloneSession& session, const QString& outermost, plmxml::NormaliserOptions options,
                    ElementDocuments& elements, std::size_t& nodesLeft);
    ~NestedDocuments() override;

Q_SIGNALS:
    /// A nested document's job, before it runs.
    void jobCreated(znPLMXMLLoaderJob* job);
    /// What the import passes over in a nested document, a sentence with its name.
    void remarked(const QString& remark);

private:
    osg::NodePtr read(files::ReadTask& task);
    struct Open {
        QString file; ///< canonical path
        QString id;   ///< of the element that is wanted of it; empty for the whole

        bool operator==(const Open& other) const { return file == other.file && id == other.id; }
    };

    Open wantedBy(const files::ReadTask& task) const;
    void refuse(const files::ReadTask& task, const Open& document) const;
    osg::NodePtr load(const files::ReadTask& task, const Open& document);

    zn::StandaloneSession& m_session;
    files::SceneReaders m_readersBefore;
    QList<Open> m_open; ///< the documents that are being read, the outermost first
    int m_count = 1;
    plmxml::NormaliserOptions m_options;
    ElementDocuments& m_elements;
    std::size_t& m_nodesLeft;
};

} // namespace importer
