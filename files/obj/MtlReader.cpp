#include "files/obj/MtlReader.h"

#include "files/FileBytes.h"
#include "files/obj/TextLines.h"

#include <QDir>
#include <QFileInfo>

#include <optional>
#include <set>

namespace files::obj
{

namespace
{

/// In the table, and in the tree where it is used.
constexpr std::uint64_t memoryOfLook = 1024;

/// The values that the statements of one material give.
struct Values {
    MaterialLook look;
    std::optional<float> opacity;
    std::optional<float> transparency;
};

/// `d` wins over `Tr`, which some programs write with the meaning of `d`.
MaterialLook lookOf(const Values& values)
{
    MaterialLook look = values.look;
    look.transparency = values.opacity ? 1.0f - *values.opacity : values.transparency.value_or(0.0f);
    return look;
}

/// Reads one library after the other.
class MtlReader
{
public:
    explicit MtlReader(ReadTask& task) : m_task(task) {}

    void read(const QString& file);
    MtlLooks take() { return std::move(m_looks); }

private:
    bool statement(TextLines& lines, Values& values);
    std::optional<float> takeNumber(TextLines& lines) { return numberOf(lines.takeWord()); }
    template <class Target>
    bool setNumber(TextLines& lines, Target& target);
    bool setColor(TextLines& lines, osg::Color3f& color);
    bool setOpacity(TextLines& lines, Values& values);
    void add(const std::string& name, const Values& values);

    ReadTask& m_task;
    MtlLooks m_looks;
    std::set<QString> m_read;
    std::uint64_t m_textures = 0;
};

template <class Target>
bool MtlReader::setNumber(TextLines& lines, Target& target)
{
    const std::optional<float> number = takeNumber(lines);
    if (number)
        target = *number;
    return number.has_value();
}

/// One number stands for three.
bool MtlReader::setColor(TextLines& lines, osg::Color3f& color)
{
    const std::optional<float> red = takeNumber(lines);
    const std::optional<float> green = takeNumber(lines);
    const std::optional<float> blue = takeNumber(lines);
    if (!red || green.has_value() != blue.has_value())
        return false;
    color = {*red, green.value_or(*red), blue.value_or(*red)};
    return true;
}

/// `d` may have a word before its number.
bool MtlReader::setOpacity(TextLines& lines, Values& values)
{
    return lines.rest().starts_with("-halo") ? (lines.takeWord(), setNumber(lines, values.opacity))
                                             : setNumber(lines, values.opacity);
}

/// False when the values of a statement make no sense.
bool MtlReader::statement(TextLines& lines, Values& values)
{
    const std::string_view keyword = lines.keyword();
    if (keyword == "Ka")
        return setColor(lines, values.look.ambient);
    if (keyword == "Kd")
        return setColor(lines, values.look.diffuse);
    if (keyword == "Ks")
        return setColor(lines, values.look.specular);
    if (keyword == "Ke")
        return setColor(lines, values.look.emission);
    if (keyword == "Ns")
        return setNumber(lines, values.look.shininess);
    if (keyword == "d")
        return setOpacity(lines, values);
    if (keyword == "Tr")
        return setNumber(lines, values.transparency);
    if (keyword.starts_with("map_"))
        ++m_textures;
    return true;
}

/// A file that was read already says nothing new.
void MtlReader::read(const QString& file)
{
    if (!m_read.insert(file).second)
        return;
    const FileBytes bytes = readFile(m_task, file);
    TextLines lines(bytes.text());
    std::string name;
    Values values;
    m_textures = 0;
    while (lines.next()) {
        if (lines.keyword() == "newmtl") {
            add(name, values);
            name = textOf(lines.rest()).toStdString();
            values = Values();
        } else if (!statement(lines, values)) {
            m_task.warnIn(file, tr("a value of '%1' is no number").arg(textOf(lines.keyword())),
                          linePlace(lines.number()));
        }
    }
    add(name, values);
    if (m_textures > 0)
        m_task.warnIn(file, tr("%1 textures were left out").arg(m_textures));
}

void MtlReader::add(const std::string& name, const Values& values)
{
    if (!name.empty() && m_looks.try_emplace(name, lookOf(values)).second)
        m_task.takeMemory(memoryOfLook + name.size());
}

/// A library that an OBJ file names.
struct FoundLibrary {
    QString path;                               ///< empty when there is none
    std::optional<references::Refusal> refusal; ///< where it might be and nobody looks
};

/// The file that `name` stands for: beside the OBJ file, also when the name carries folders of another machine.
FoundLibrary find(const QString& name, const QDir& folder, const ReadTask& task)
{
    FoundLibrary found;
    const QString slashed = QString(name).replace(QLatin1Char('\\'), QLatin1Char('/'));
    for (const QString& candidate : {slashed, slashed.section(QLatin1Char('/'), -1)}) {
        const QString path = QDir::cleanPath(folder.absoluteFilePath(candidate));
        if (candidate.isEmpty())
            continue;
        if (const auto refusal = task.refusal(references::Use::Document, path, task.path()))
            found.refusal = refusal;
        else if (QFileInfo(path).isFile())
            return {path, std::nullopt};
    }
    return found;
}

void readLibrary(const ObjLibrary& library, const QDir& folder, ReadTask& task, MtlReader& reader)
{
    const FoundLibrary whole = find(library.name, folder, task);
    const QStringList names =
        whole.path.isEmpty() ? library.name.split(QLatin1Char(' '), Qt::SkipEmptyParts) : QStringList(library.name);
    for (const QString& name : names) {
        const FoundLibrary found = find(name, folder, task);
        if (!found.path.isEmpty())
            reader.read(found.path);
        else if (found.refusal)
            task.warn(tr("the material library '%1' is left out: %2").arg(name, files::textOf(*found.refusal)),
                      linePlace(library.line));
        else
            task.warn(tr("the material library '%1' is missing").arg(name), linePlace(library.line));
    }
}

} // namespace

MtlLooks readMtl(const std::vector<ObjLibrary>& libraries, ReadTask& task)
{
    const QDir folder = QFileInfo(task.path()).dir();
    MtlReader reader(task);
    for (const ObjLibrary& library : libraries)
        readLibrary(library, folder, task, reader);
    return reader.take();
}

} // namespace files::obj
