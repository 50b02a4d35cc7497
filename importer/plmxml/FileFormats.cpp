#include "importer/plmxml/FileFormats.h"

#include "protocol/Formats.h"

#include <QFileInfo>

namespace importer::plmxml
{

namespace
{

/// What is read without another converter, the best first: exact product data before meshes, and meshes with colours
/// before those without.
const QStringList& readableFormats()
{
    static const QStringList formats = {QStringLiteral("jt"),   QStringLiteral("plmxml"), QStringLiteral("osb"),
                                        QStringLiteral("step"), QStringLiteral("iges"),   QStringLiteral("brep"),
                                        QStringLiteral("obj"),  QStringLiteral("gltf"),   QStringLiteral("ply"),
                                        QStringLiteral("wrl"),  QStringLiteral("stl")};
    return formats;
}

/// Words that documents use for the files of CAD systems, in lower case.
bool isNativeFormat(const QString& word)
{
    static const QStringList words = {
        QStringLiteral("seprt"),    QStringLiteral("seasm"),    QStringLiteral("ugprt"),     QStringLiteral("ugbkm"),
        QStringLiteral("cat4prt"),  QStringLiteral("cat5prt"),  QStringLiteral("cat5prod"),  QStringLiteral("cat5asm"),
        QStringLiteral("ideasprt"), QStringLiteral("ideasasm"), QStringLiteral("ideasidi"),  QStringLiteral("idi"),
        QStringLiteral("ext"),      QStringLiteral("jxt"),      QStringLiteral("xpk"),       QStringLiteral("xgl"),
        QStringLiteral("sat"),      QStringLiteral("tx"),       QStringLiteral("dwf"),       QStringLiteral("cgm"),
        QStringLiteral("cgr"),      QStringLiteral("swprt"),    QStringLiteral("swasm"),     QStringLiteral("proe"),
        QStringLiteral("xt"),       QStringLiteral("acis"),     QStringLiteral("parasolid"), QStringLiteral("dxf"),
        QStringLiteral("dwg"),      QStringLiteral("ideas"),    QStringLiteral("x3d"),       QStringLiteral("fbx"),
        QStringLiteral("dae"),      QStringLiteral("3ds"),      QStringLiteral("cojt"),      QStringLiteral("vfz")};
    return words.contains(word);
}

} // namespace

QString formatNameOf(const QString& word)
{
    const QString lower = word.toLower();
    if (lower == QLatin1String("stp"))
        return QStringLiteral("step");
    if (lower == QLatin1String("igs"))
        return QStringLiteral("iges");
    if (lower == QLatin1String("brp"))
        return QStringLiteral("brep");
    if (lower == QLatin1String("glb"))
        return QStringLiteral("gltf");
    if (lower == QLatin1String("vrml") || lower == QLatin1String("wrz"))
        return QStringLiteral("wrl");
    if (lower == QLatin1String("stla") || lower == QLatin1String("stlb"))
        return QStringLiteral("stl");
    return lower;
}

FileFormats::FileFormats(const QStringList& preferred)
{
    for (const QString& word : preferred)
        m_preferred.append(formatNameOf(word.trimmed()));
}

int FileFormats::rankOf(const QString& name, const QString& format) const
{
    const QString extension = QFileInfo(name).suffix().toLower();
    const QString known = formatNameOf(extension);
    if (const int place = m_preferred.indexOf(known); place >= 0)
        return place - m_preferred.size();
    if (const int place = readableFormats().indexOf(known); place >= 0)
        return place;
    if (protocol::isConverted(extension.toStdString()))
        return OtherConverter;
    const QString word = formatNameOf(format);
    return isNativeFormat(word) || isNativeFormat(extension) || readableFormats().contains(word) ? NoReader : NoShape;
}

} // namespace importer::plmxml
