#include "importer/DocumentFault.h"

#include "cad/xml/CADNumbers.h"
#include "cad/xml/XMLTextScan.h"
#include "importer/ElementWalk.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <optional>
#include <vector>

#include <tinyxml.h>

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
        return Texts::tr("the elements are nested too deeply");
    case XMLFault::TooManyAttributes:
        return Texts::tr("an element has too many attributes");
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

/// Columns count bytes, as the parser's do for lines of plain letters.
DocumentFault faultAt(const QByteArray& text, std::size_t position, const QString& reason)
{
    const int end = static_cast<int>(std::min<std::size_t>(position, static_cast<std::size_t>(text.size())));
    const QByteArray before = text.left(end);
    return {reason, before.count('\n') + 1, end - (before.lastIndexOf('\n') + 1) + 1};
}

DocumentFault faultOf(const TiXmlBase& place, const QString& reason)
{
    return {reason, place.Row(), place.Column()};
}

std::optional<DocumentFault> numberFault(const TiXmlElement& transform)
{
    for (const TiXmlNode* child = transform.FirstChild(); child; child = child->NextSibling()) {
        const TiXmlText* text = child->ToText();
        std::vector<float> values;
        try {
            if (text)
                parseTransformValues(text->Value(), values);
        } catch (const std::exception&) {
            const QString where = QString::number(values.size() + 1);
            return faultOf(*text, Texts::tr("value %1 of a Transform is not a number that fits").arg(where));
        }
    }
    return std::nullopt;
}

std::optional<DocumentFault> contentFault(const TiXmlElement& root)
{
    if (root.ValueTStr() != "PLMXML")
        return faultOf(
            root,
            Texts::tr("the document begins with the element %1, not with PLMXML").arg(QString::fromUtf8(root.Value())));
    std::optional<DocumentFault> fault;
    if (const TiXmlElement* product = root.FirstChildElement("ProductDef"))
        walkElements(*product, [&fault](const TiXmlElement& element) {
            if (!fault && element.ValueTStr() == "Transform")
                fault = numberFault(element);
            return !fault;
        });
    return fault;
}

std::optional<DocumentFault> faultIn(const QByteArray& text)
{
    const XMLVerdict verdict = scanXMLText({text.constData(), static_cast<std::size_t>(text.size())}, {});
    if (verdict.fault != XMLFault::None)
        return faultAt(text, verdict.position, scanReason(verdict.fault));
    TiXmlDocument xml;
    xml.Parse(text.constData(), nullptr, TIXML_DEFAULT_ENCODING);
    if (const TiXmlElement* root = xml.RootElement(); root && !xml.Error())
        return contentFault(*root);
    const QString reason = xml.Error() ? QString::fromUtf8(xml.ErrorDesc()) : Texts::tr("the document is empty");
    return DocumentFault{reason, std::max(xml.ErrorRow(), 1), std::max(xml.ErrorCol(), 1)};
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
    return faultIn(document.readAll());
}

QString describe(const QString& file, const DocumentFault& fault)
{
    const QString place = fault.line > 0 ? QStringLiteral(":%1:%2").arg(fault.line).arg(fault.column) : QString();
    return file + place + QStringLiteral(": ") + fault.reason;
}

} // namespace importer
