#include "importer/DocumentFault.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADFault.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <exception>
#include <optional>

using namespace HB::XML::CAD;

namespace importer
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::DocumentFault)
};

QString scanReason(XMLFault fault)
{
    switch (fault) {
    case XMLFault::None:
        break;
    case XMLFault::EmbeddedNul:
        return Texts::tr("there is a zero byte in the text");
    case XMLFault::TooDeep:
        return Texts::tr("elements stand more than %1 inside one another").arg(XMLLimits().depth);
    case XMLFault::TooManyAttributes:
        return Texts::tr("an element has more than %1 attributes").arg(XMLLimits().attributes);
    case XMLFault::CutOff:
        return Texts::tr("the document is cut off");
    case XMLFault::StrayEndTag:
        return Texts::tr("an end tag has no element");
    case XMLFault::BadDeclaration:
        return Texts::tr("the XML declaration is damaged");
    case XMLFault::BrokenCharacter:
        return Texts::tr("a character is not valid UTF-8");
    }
    return {};
}

QString rootReason(const std::string& name)
{
    return name.empty() ? Texts::tr("the document is empty")
                        : Texts::tr("the document begins with the element %1, not with PLMXML")
                              .arg(QString::fromStdString(name));
}

QString reasonOf(const CADFault& fault)
{
    switch (fault.cause) {
    case CADFault::Cause::Unreadable:
        return Texts::tr("the file cannot be read");
    case CADFault::Cause::Text:
        return scanReason(fault.text);
    case CADFault::Cause::Syntax:
        return QString::fromStdString(fault.words);
    case CADFault::Cause::Root:
        return rootReason(fault.words);
    case CADFault::Cause::Transform:
        return Texts::tr("value %1 of a Transform is not a number that fits").arg(fault.value);
    case CADFault::Cause::Material:
        return Texts::tr("the attribute %1 of a Material has a word among its numbers")
            .arg(QString::fromStdString(fault.words));
    }
    return {};
}

/// As the model sees it, which is what an import asks.
std::optional<DocumentFault> faultIn(const QString& file)
{
    CADDocument document;
    document.setKeepsPlaces(true);
    try {
        document.load(file.toStdString());
        return std::nullopt;
    } catch (const std::exception&) {
        const std::optional<CADFault>& fault = document.getFault();
        return fault ? DocumentFault{reasonOf(*fault), fault->place.line, fault->place.column}
                     : DocumentFault{Texts::tr("there is not enough memory for the document")};
    }
}

} // namespace

std::optional<DocumentFault> findDocumentFault(const QString& file)
{
    if (!QFileInfo::exists(file))
        return DocumentFault{Texts::tr("there is no such file")};
    if (!QFileInfo(file).isFile())
        return DocumentFault{Texts::tr("this is no file")};
    QFile document(file);
    if (!document.open(QIODevice::ReadOnly))
        return DocumentFault{Texts::tr("the file cannot be read: %1").arg(document.errorString())};
    document.close();
    return faultIn(file);
}

QString describe(const QString& file, const DocumentFault& fault)
{
    const QString place = fault.line > 0 ? QStringLiteral(":%1:%2").arg(fault.line).arg(fault.column) : QString();
    return file + place + QStringLiteral(": ") + fault.reason;
}

} // namespace importer
