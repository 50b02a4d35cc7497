#include "importer/plmxml/DocumentElement.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace importer::plmxml
{

QString DocumentElement::standIn(const QString& folder) const
{
    const QByteArray hash = QCryptographicHash::hash(text().toUtf8(), QCryptographicHash::Sha1).toHex();
    return folder + QLatin1Char('/') + QString::fromLatin1(hash) + QLatin1Char('/') +
           QFileInfo(document).completeBaseName() + QStringLiteral(".plmxml");
}

} // namespace importer::plmxml
