#include "importer/plmxml/Recognition.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace importer::plmxml
{

bool isDocument(const QString& file)
{
    const QFileInfo info(file);
    if (info.suffix().compare(QLatin1String("plmxml"), Qt::CaseInsensitive) == 0)
        return true;
    QFile source(file);
    if (info.suffix().compare(QLatin1String("xml"), Qt::CaseInsensitive) != 0 || !info.isFile() ||
        !source.open(QIODevice::ReadOnly))
        return false;
    constexpr int longestProlog = 1 << 16;
    QXmlStreamReader reader(source.read(longestProlog));
    return reader.readNextStartElement() && reader.name() == QLatin1String("PLMXML");
}

} // namespace importer::plmxml
