#include "importer/plmxml/NormaliserOptions.h"

#include "files/ReadRequest.h"

namespace importer::plmxml
{

namespace
{

const QLatin1String preferred("prefer");
const QLatin1String facts("facts");
const QLatin1String elements("elements-folder");
const QLatin1String rootId("root");
const QLatin1String places("most-places");

QString word(QLatin1String name, const QString& value)
{
    return name + QLatin1Char('=') + value;
}

bool takePlaces(std::size_t& count, const QString& value)
{
    bool isNumber = false;
    count = value.toULongLong(&isNumber);
    return isNumber && count <= PlaceWalk::MaxPlaces;
}

} // namespace

QStringList wordsOf(const NormaliserOptions& options)
{
    // Names every member, so that a new one cannot be forgotten here.
    const auto& [formats, rules, wantsFacts, elementsFolder, root, mostPlaces] = options;
    QStringList words = files::wordsOf(rules);
    for (const QString& format : formats)
        words.append(word(preferred, format));
    words.append(word(facts, wantsFacts ? QStringLiteral("1") : QStringLiteral("0")));
    words.append(word(elements, elementsFolder));
    words.append(word(rootId, root));
    words.append(word(places, QString::number(mostPlaces)));
    return words;
}

bool takeWord(NormaliserOptions& options, const QString& word)
{
    const int equals = word.indexOf(QLatin1Char('='));
    const QString name = word.left(equals);
    const QString value = word.mid(equals + 1);
    if (equals < 0)
        return false;
    if (name == places)
        return takePlaces(options.mostPlaces, value);
    if (name == preferred)
        options.preferredFormats.append(value);
    else if (name == elements)
        options.elementsFolder = value;
    else if (name == rootId)
        options.root = value;
    else if (name == facts)
        options.wantsFacts = value == QLatin1String("1");
    else
        return files::takeWord(options.rules, word);
    return name != facts || options.wantsFacts || value == QLatin1String("0");
}

} // namespace importer::plmxml
