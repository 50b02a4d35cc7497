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

QString textOf(const ElementDocuments::Element& element)
{
    return element.document + QLatin1Char('#') + element.id;
}

} // namespace

ElementDocuments::ElementDocuments() = default;
ElementDocuments::~ElementDocuments() = default;

QString ElementDocuments::standInFor(const QString& document, const QString& id)
{
    const Element element{document, id};
    const auto known = m_standIns.find(textOf(element));
    if (known != m_standIns.end())
        return known.value();
    const QString path = makeFile(document);
    m_elements.insert(path, element);
    m_standIns.insert(textOf(element), path);
    return path;
}

/// In a folder of its own, so that it is called like the document.
QString ElementDocuments::makeFile(const QString& document)
{
    if (!m_folder)
        m_folder = std::make_unique<QTemporaryDir>(zn::StandaloneSession::require().temporaryFolder() +
                                                   QStringLiteral("/elements-XXXXXX"));
    const QString folder = QString::number(m_elements.size());
    const QString path = m_folder->filePath(folder + QLatin1Char('/') + QFileInfo(document).completeBaseName() +
                                            QStringLiteral(".plmxml"));
    if (m_elements.size() < maxCount && QDir(m_folder->path()).mkdir(folder))
        QFile(path).open(QIODevice::WriteOnly);
    return path;
}

std::optional<ElementDocuments::Element> ElementDocuments::find(const QString& path) const
{
    const auto found = m_elements.find(path);
    return found == m_elements.end() ? std::nullopt : std::optional(found.value());
}

QString ElementDocuments::aboutElements(QString line) const
{
    if (!m_folder)
        return line;
    const QString extension = QStringLiteral(".plmxml");
    const QString folder = m_folder->path() + QLatin1Char('/');
    for (int begin = line.indexOf(folder); begin >= 0; begin = line.indexOf(folder, begin + 1))
        for (int end = line.indexOf(extension, begin); end >= 0; end = line.indexOf(extension, end + 1)) {
            const int length = end + extension.size() - begin;
            if (const std::optional<Element> element = find(line.mid(begin, length))) {
                line.replace(begin, length, textOf(*element));
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
        part.file = textOf(*element);
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
            file->setPath(textOf(*element).toStdString());
            osg::endEditCP(file, osg::FileReference::PathFieldMask, 1);
        }
        return osg::Action::Continue;
    });
}

} // namespace importer
