#include "importer/ElementDocuments.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace importer
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::ElementDocuments)
};

} // namespace

ElementDocuments::ElementDocuments() = default;
ElementDocuments::~ElementDocuments() = default;

QString ElementDocuments::folder()
{
    if (!m_folder)
        m_folder = std::make_unique<QTemporaryDir>(zn::StandaloneSession::require().temporaryFolder() +
                                                   QStringLiteral("/elements-XXXXXX"));
    return m_folder->path();
}

void ElementDocuments::add(const std::vector<Element>& elements, const files::DocumentRules& rules)
{
    for (const Element& element : elements) {
        const QString path = element.standIn(folder());
        if (m_elements.contains(path) || rules.refusal(element.document))
            continue;
        if (m_elements.size() < maxCount && QDir().mkdir(QFileInfo(path).path()))
            QFile(path).open(QIODevice::WriteOnly);
        m_elements.insert(path, element);
    }
}

std::optional<ElementDocuments::Element> ElementDocuments::find(const QString& path) const
{
    const auto found = m_elements.find(path);
    return found == m_elements.end() ? std::nullopt : std::optional(found.value());
}

QString ElementDocuments::aboutElements(QString line) const
{
    if (m_elements.isEmpty())
        return line;
    const QString extension = QStringLiteral(".plmxml");
    const QString folder = m_folder->path() + QLatin1Char('/');
    for (int begin = line.indexOf(folder); begin >= 0; begin = line.indexOf(folder, begin + 1))
        for (int end = line.indexOf(extension, begin); end >= 0; end = line.indexOf(extension, end + 1)) {
            const int length = end + extension.size() - begin;
            if (const std::optional<Element> element = find(line.mid(begin, length))) {
                line.replace(begin, length, element->text());
                break;
            }
        }
    return line;
}

void ElementDocuments::tellElements(std::vector<zn::MissingPart>& missing) const
{
    for (zn::MissingPart& part : missing) {
        const std::optional<Element> element = find(part.file);
        if (!element)
            continue;
        if (!QFileInfo::exists(part.file))
            part.reason = Texts::tr("the import names more than %1 elements of other documents").arg(maxCount);
        part.file = element->text();
    }
}

void ElementDocuments::nameElements(const osg::NodePtr& root) const
{
    if (m_elements.isEmpty())
        return;
    osg::traverse(root, [this](const osg::NodePtr& node) {
        const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
        const osg::FileReferencePtr file = reference ? reference->getSourceFile() : osg::FileReferencePtr();
        const auto element = file ? find(QString::fromStdString(file->getPath())) : std::nullopt;
        if (element) {
            osg::beginEditCP(file, osg::FileReference::PathFieldMask, 1);
            file->setPath(element->text().toStdString());
            osg::endEditCP(file, osg::FileReference::PathFieldMask, 1);
        }
        return osg::Action::Continue;
    });
}

} // namespace importer
