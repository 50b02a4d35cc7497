#include "importer/PreparedDocument.h"

#include "files/OutputFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/plmxml/TreeNotes.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

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

PreparedDocument::PreparedDocument(const QString& file, const plmxml::NormaliserOptions& options)
    : m_file(file), m_path(file), m_document(plmxml::normalise(file, options))
{
    using Way = plmxml::NormalisedDocument::Way;
    if (m_document.isRead)
        m_facts = std::make_shared<const zn::DocumentStructure>(m_document.facts);
    if (m_document.way == Way::Refuse)
        m_refusal = m_document.reason;
    else if (m_document.way == Way::AsText)
        write(m_document.text);
    m_document.text = std::string();
}

PreparedDocument::~PreparedDocument() = default;

void PreparedDocument::write(const std::string& text)
{
    m_folder = std::make_unique<QTemporaryDir>(zn::StandaloneSession::require().temporaryFolder() +
                                               QStringLiteral("/document-XXXXXX"));
    m_path = m_folder->filePath(QFileInfo(nameForJobs()).fileName());
    QFile out(m_path);
    const auto size = static_cast<qint64>(text.size());
    if (!m_folder->isValid() || !out.open(QIODevice::WriteOnly) || out.write(text.data(), size) != size || !out.flush())
        m_refusal = Texts::tr("the document in the form that is read cannot be written: %1").arg(out.errorString());
}

QString PreparedDocument::nameForJobs() const
{
    const QFileInfo info(m_file);
    if (info.suffix().compare(QLatin1String("plmxml"), Qt::CaseInsensitive) == 0)
        return m_file;
    return info.path() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(".plmxml");
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
            part.reason += QStringLiteral("; ") + asked.value();
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
