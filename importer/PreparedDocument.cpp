#include "importer/PreparedDocument.h"

#include "files/OutputFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/ElementDocuments.h"
#include "importer/plmxml/TreeNotes.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <utility>

namespace importer
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::PreparedDocument)
};

/// The reference at the top names the document that the tree is of.
void nameFile(const osg::NodePtr& root, const QString& file)
{
    const auto reference = osg::fcCast<osg::ExtReference>(root->getCore());
    const osg::FileReferencePtr source = reference ? reference->getSourceFile() : osg::FileReferencePtr();
    if (!source)
        return;
    osg::beginEditCP(source, osg::FileReference::PathFieldMask, 1);
    source->setPath(file.toStdString());
    osg::endEditCP(source, osg::FileReference::PathFieldMask, 1);
}

/// With the extension that all know.
QString nameFor(const QString& file)
{
    const QFileInfo info(file);
    if (info.suffix().compare(QLatin1String("plmxml"), Qt::CaseInsensitive) == 0)
        return file;
    return info.path() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(".plmxml");
}

QString number(double count)
{
    return QString::number(count, 'f', 0);
}

QString leftOutText(const zn::DocumentStructure& facts)
{
    std::size_t all = 0;
    QStringList reasons;
    for (const auto& [why, count] : facts.leftOutCounts) {
        all += count;
        reasons.append(QStringLiteral("%1: %2").arg(why).arg(count));
    }
    return Texts::tr("representations left out: %1 (%2)").arg(all).arg(reasons.join(QStringLiteral(", ")));
}

} // namespace

files::Expected<ReadDocument> PreparedDocument::read(const QString& file, const plmxml::NormaliserOptions& options)
{
    return readDocument(zn::StandaloneSession::require(), file, QFileInfo(nameFor(file)).fileName(), options);
}

PreparedDocument::PreparedDocument(const QString& file, files::Expected<ReadDocument> outcome,
                                   const files::DocumentRules& rules, ElementDocuments& elements)
    : m_file(file), m_path(file)
{
    if (!outcome) {
        m_refusal = outcome.error().message;
        return;
    }
    m_document = std::move(outcome->content);
    m_folder = std::move(outcome->folder);
    if (m_folder)
        m_path = outcome->text;
    elements.add(m_document.elements, rules);
    if (m_document.isRead)
        m_facts = std::make_shared<const zn::DocumentStructure>(m_document.facts);
    if (m_document.way == plmxml::NormalisedDocument::Way::Refuse)
        m_refusal = plmxml::describe(m_document.refusal);
}

PreparedDocument::~PreparedDocument() = default;

QString PreparedDocument::nameForJobs() const
{
    return nameFor(m_file);
}

QStringList PreparedDocument::remarks() const
{
    QStringList remarks;
    if (!m_facts)
        return remarks;
    const auto remark = [&](const QString& text) { remarks.append(m_file + QStringLiteral(": ") + text); };
    if (m_facts->shapePlaces == 0)
        remark(Texts::tr("the document names no file with a shape; its structure has %1 places")
                   .arg(number(m_facts->occurrences)));
    if (m_facts->unplacedCount > 0)
        remark(Texts::tr("%1 occurrences speak of no place of the structure and are passed over, the first in line %2")
                   .arg(m_facts->unplacedCount)
                   .arg(m_facts->unplaced.front().line));
    if (m_facts->repeatedCount > 0)
        remark(Texts::tr("%1 occurrences speak of a place that an earlier one speaks of and are passed over, the first "
                         "in line %2")
                   .arg(m_facts->repeatedCount)
                   .arg(m_facts->repeated.front().line));
    if (!m_facts->leftOutCounts.empty())
        remark(leftOutText(*m_facts));
    if (m_facts->internalShapes > 0)
        remark(Texts::tr("%1 shapes inside the document are not read").arg(m_facts->internalShapes));
    if (m_facts->isSelection)
        remark(Texts::tr("the view is a choice among the places of the graph; all of them are shown"));
    if (m_facts->conditions > 0)
        remark(Texts::tr("%1 conditions are not evaluated; everything is shown").arg(m_facts->conditions));
    if (!m_facts->isNormalised)
        return remarks;
    if (m_facts->shapePlaces > 0 && m_facts->leavesWithoutShape > 0)
        remark(Texts::tr("%1 of %2 parts are without a shape")
                   .arg(number(m_facts->leavesWithoutShape), number(m_facts->leaves)));
    if (m_facts->hiddenLeaves > 0)
        remark(
            Texts::tr("%1 of %2 parts are switched off").arg(number(m_facts->hiddenLeaves), number(m_facts->leaves)));
    if (m_facts->badTransforms > 0)
        remark(Texts::tr("%1 transforms have not the numbers that they need, and move nothing")
                   .arg(m_facts->badTransforms));
    if (m_facts->badMaterialNumbers > 0)
        remark(
            Texts::tr("%1 attributes of materials are no numbers and are left out").arg(m_facts->badMaterialNumbers));
    if (m_facts->placedTwice > 0)
        remark(Texts::tr("%1 occurrences are claimed by several others; they stand below the first")
                   .arg(m_facts->placedTwice));
    if (!m_facts->otherViews.isEmpty())
        remark(Texts::tr("of %1 views the one called %2 was taken")
                   .arg(m_facts->otherViews.size() + 1)
                   .arg(m_facts->view));
    return remarks;
}

void PreparedDocument::complete(const osg::NodePtr& root) const
{
    if (!root || !m_document.isRead)
        return;
    if (m_path != m_file)
        nameFile(root, m_file);
    plmxml::applyNotes(m_document.structure, root);
}

QString PreparedDocument::aboutOriginal(QString line) const
{
    return m_path == m_file ? line : line.replace(m_path, m_file);
}

void PreparedDocument::tellWhatWasAsked(std::vector<zn::MissingPart>& missing) const
{
    if (!m_document.facts.isNormalised)
        return;
    for (zn::MissingPart& part : missing)
        if (const auto asked = m_document.asked.find(part.file); asked != m_document.asked.end())
            part.reason += QStringLiteral("; ") + plmxml::describe(asked.value());
}

std::optional<QString> PreparedDocument::keep(const QString& file) const
{
    QFile source(m_path);
    if (!source.open(QIODevice::ReadOnly))
        return file + QStringLiteral(": ") + source.errorString();
    files::OutputFile target(file);
    while (!source.atEnd() && target.isSound()) {
        const QByteArray block = source.read(1 << 20);
        if (block.isEmpty())
            return file + QStringLiteral(": ") + source.errorString();
        target.write(block.constData(), static_cast<std::uint64_t>(block.size()));
    }
    const files::Expected<void> written = target.commit();
    return written ? std::nullopt : std::optional(file + QStringLiteral(": ") + written.error().message);
}

} // namespace importer
