#include "files/scenefile/ClassWarnings.h"

#include "files/scenefile/SceneErrors.h"

#include <algorithm>

namespace osg::scenefile
{

void ClassWarnings::add(const std::string& className, const std::string& usedInstead)
{
    const auto same = [&](const Row& row) { return row.className == className && row.usedInstead == usedInstead; };
    auto place = std::find_if(m_rows.begin(), m_rows.end(), same);
    if (place == m_rows.end())
        place = m_rows.insert(place, {className, usedInstead, 0});
    ++place->count;
}

std::vector<files::Note> ClassWarnings::notes() const
{
    std::vector<files::Note> notes;
    for (const Row& row : m_rows)
        notes.push_back({textOf(row), {}, {}});
    return notes;
}

QString ClassWarnings::textOf(const Row& row)
{
    const QString name = QString::fromStdString(row.className);
    if (row.usedInstead.empty())
        return Text::tr("%1 objects of the class %2 were left out").arg(row.count).arg(name);
    return Text::tr("%1 objects of the class %2 were taken as %3")
        .arg(QString::number(row.count), name, QString::fromStdString(row.usedInstead));
}

} // namespace osg::scenefile
