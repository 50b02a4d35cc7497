#include "importer/DocumentFault.h"

#include <QCoreApplication>
#include <QFile>
#include <QXmlStreamReader>

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("DocumentFault", text);
}

/// The first fault of the text; empty when it is sound XML with the right root.
QString faultOf(QXmlStreamReader& reader)
{
    if (reader.readNextStartElement() && reader.name() != QLatin1String("PLMXML"))
        return tr("%1:%2: the document begins with the element %3, not with PLMXML")
            .arg(reader.lineNumber())
            .arg(reader.columnNumber())
            .arg(reader.name().toString());
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return {};
    return tr("%1:%2: %3").arg(reader.lineNumber()).arg(reader.columnNumber()).arg(reader.errorString());
}

} // namespace

QString describeDocumentFault(const QString& file)
{
    QFile document(file);
    if (!document.exists())
        return tr("%1: there is no such file").arg(file);
    if (!document.open(QIODevice::ReadOnly))
        return tr("%1: the file cannot be read: %2").arg(file, document.errorString());
    QXmlStreamReader reader(&document);
    const QString fault = faultOf(reader);
    return fault.isEmpty() ? tr("%1: the document gave no tree").arg(file) : file + QLatin1Char(':') + fault;
}
