#include "importer/plmxml/FileFacts.h"

#include <QCoreApplication>

namespace importer::plmxml
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::plmxml::FileFacts)
};

QString textOf(FoundBy by)
{
    switch (by) {
    case FoundBy::LetterCase:
        return QStringLiteral("letter case");
    case FoundBy::BesideIt:
        return QStringLiteral("beside the document");
    case FoundBy::InItsFolder:
        return QStringLiteral("in the document's folder");
    case FoundBy::SearchPath:
        return QStringLiteral("search path");
    case FoundBy::Nowhere:
    case FoundBy::Location:
        break;
    }
    return {};
}

QString whyNot(const ShapeFile& file)
{
    if (file.isOfEmptyType)
        return QStringLiteral("type without geometry");
    if (file.isOfAssembly)
        return QStringLiteral("its part consists of others");
    if (file.rank >= FileFormats::OtherConverter)
        return QStringLiteral("no reader");
    return file.isThere() ? QStringLiteral("another file was taken") : QStringLiteral("missing");
}

} // namespace

zn::StructureFile toldOf(const ShapeFile& file)
{
    zn::StructureFile told{
        file.withId(file.written), file.withId(file.path), file.format, {}, {}, file.places, {}, file.line};
    if (file.isThere())
        told.found = file.withId(file.found.path);
    if (file.isThere() && file.found.by != FoundBy::Location)
        told.foundBy = textOf(file.found.by);
    if (file.places == 0)
        told.whyNot = whyNot(file);
    return told;
}

AskedFile askedOf(const ShapeFile& file)
{
    return {file.withId(file.written), file.line, file.found.isRefused};
}

QString describe(const AskedFile& asked)
{
    const QString where = Texts::tr("line %1 names it \"%2\"").arg(asked.line).arg(asked.written);
    return asked.isRefused ? Texts::tr("what is there is no regular file; %1").arg(where) : where;
}

} // namespace importer::plmxml
