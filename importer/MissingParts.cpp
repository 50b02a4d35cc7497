#include "importer/MissingParts.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/plmxml/FileFinder.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/session/Session.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <map>

namespace zn
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(zn::MissingParts)
};

/// The path that an unread reference names; empty for any other node.
std::string unreadFile(const osg::NodePtr& node)
{
    const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
    if (!reference || reference->getState() == 2)
        return {};
    const osg::FileReferencePtr file =
        reference->getSourceFile() ? reference->getSourceFile() : reference->getSmartFile();
    return file ? file->getPath() : std::string();
}

/// The names from below the top of the tree down to `lowest`.
QString placeOf(const osg::NodePtr& lowest)
{
    QStringList names;
    for (osg::NodePtr node = lowest; node && node->getParent(); node = node->getParent())
        if (const char* name = osg::getName(node))
            names.prepend(QString::fromUtf8(name));
    return names.join(QLatin1Char('/'));
}

QString reasonFor(const QString& file, const std::vector<MissingPart>& failed)
{
    for (const MissingPart& part : failed)
        if (part.file == file)
            return part.reason;
    if (Session* const session = Session::current())
        if (const auto refusal = loading::refusalOfDocument(*session, file))
            return files::textOf(*refusal);
    return QFileInfo::exists(file) ? Texts::tr("the file could not be read") : Texts::tr("there is no such file");
}

} // namespace

std::vector<MissingPart> partsLeftOut(const osg::NodePtr& root)
{
    std::vector<MissingPart> parts;
    std::map<std::string, std::size_t> known;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        for (const std::string& tag : osg::tagsOf(node)) {
            const auto part = osg::scenefile::converted::missingPart(tag);
            if (!part)
                continue;
            const auto [entry, isNew] = known.emplace(tag, parts.size());
            if (isNew)
                parts.push_back({QString::fromStdString(part->file), QString::fromStdString(part->reason), {}});
            if (const QString place = placeOf(node); !place.isEmpty())
                parts[entry->second].instances.append(place);
        }
        return osg::Action::Continue;
    });
    return parts;
}

std::vector<MissingPart> unreadParts(const osg::NodePtr& root, const std::vector<MissingPart>& failed)
{
    std::vector<MissingPart> parts;
    std::map<QString, std::size_t> known;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const QString file = importer::plmxml::withoutClosedMark(QString::fromStdString(unreadFile(node)));
        if (file.isEmpty())
            return osg::Action::Continue;
        const auto [entry, isNew] = known.emplace(file, parts.size());
        if (isNew)
            parts.push_back({file, reasonFor(file, failed), {}});
        parts[entry->second].instances.append(placeOf(node->getParent()));
        return osg::Action::Continue;
    });
    return parts;
}

QString describe(const MissingPart& part)
{
    constexpr int shown = 3;
    const auto count = static_cast<int>(part.instances.size());
    QString text = part.file + QStringLiteral(": ") + part.reason;
    if (count == 0)
        return text;
    const QString places = part.instances.mid(0, shown).join(QStringLiteral(", "));
    return count <= shown ? Texts::tr("%1 (used by %2)").arg(text, places)
                          : Texts::tr("%1 (used by %2 and %3 more)").arg(text, places, QString::number(count - shown));
}

} // namespace zn
