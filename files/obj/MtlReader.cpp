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

constexpr std::uint64_t memoryOfMap = 512;

/// `d` wins over `Tr`, which some programs write with the meaning of `d`.
MtlMaterial finished(MtlMaterial material)
{
    MaterialLook& look = material.look;
    look.diffuse = material.diffuse.value_or(look.diffuse);
    look.emission = material.emission.value_or(look.emission);
    look.transparency = material.opacity ? 1.0f - *material.opacity : material.transparency.value_or(0.0f);
    return material;
}

/// By which a map is known: `map_Bump` and `bump` are one.
std::string keyOfMap(std::string_view keyword)
{
    const std::string key = QString::fromLatin1(keyword.data(), int(keyword.size())).toLower().toStdString();
    return key == "map_bump" ? "bump" : key;
}

/// `map_aat` switches the smoothing of edges.
bool isMap(const std::string& key)
{
    static const std::set<std::string> others = {"bump", "norm", "disp", "decal", "refl"};
    return key.starts_with("map_") ? key != "map_aat" : others.count(key) > 0;
}

/// Reads one library after the other.
class MtlReader
{
public:
    explicit MtlReader(ReadTask& task) : m_task(task) {}

    void read(const QString& file);
    MtlMaterials take() { return std::move(m_materials); }

private:
    bool statement(TextLines& lines, MtlMaterial& material);
    bool number(TextLines& lines, MtlMaterial& material);
    bool map(TextLines& lines, MtlMaterial& material);
    std::optional<float> takeNumber(TextLines& lines) { return numberOf(lines.takeWord()); }
    template <class Target>
    bool setNumber(TextLines& lines, Target& target);
    template <class Target>
    bool setColor(TextLines& lines, Target& color);
    bool setOpacity(TextLines& lines, MtlMaterial& material);
    void add(const std::string& name, const MtlMaterial& material);

    ReadTask& m_task;
    MtlMaterials m_materials;
    std::set<QString> m_read;
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
template <class Target>
bool MtlReader::setColor(TextLines& lines, Target& color)
{
    const std::optional<float> red = takeNumber(lines);
    const std::optional<float> green = takeNumber(lines);
    const std::optional<float> blue = takeNumber(lines);
    if (!red || green.has_value() != blue.has_value())
        return false;
    color = osg::Color3f{*red, green.value_or(*red), blue.value_or(*red)};
    return true;
}

/// `d` may have a word before its number.
bool MtlReader::setOpacity(TextLines& lines, MtlMaterial& material)
{
    return lines.rest().starts_with("-halo") ? (lines.takeWord(), setNumber(lines, material.opacity))
                                             : setNumber(lines, material.opacity);
}

/// False when the values of a statement make no sense.
bool MtlReader::statement(TextLines& lines, MtlMaterial& material)
{
    const std::string_view keyword = lines.keyword();
    if (keyword == "Ka")
        return setColor(lines, material.look.ambient);
    if (keyword == "Kd")
        return setColor(lines, material.diffuse);
    if (keyword == "Ks")
        return setColor(lines, material.look.specular);
    if (keyword == "Ke")
        return setColor(lines, material.emission);
    if (keyword == "Ps")
        return setColor(lines, material.sheen);
    if (keyword == "Ns")
        return material.hasShininess = setNumber(lines, material.look.shininess);
    if (keyword == "d")
        return setOpacity(lines, material);
    return isMap(keyOfMap(keyword)) ? map(lines, material) : number(lines, material);
}

bool MtlReader::number(TextLines& lines, MtlMaterial& material)
{
    static const std::map<std::string_view, std::optional<float> MtlMaterial::*> numbers = {
        {"Tr", &MtlMaterial::transparency}, {"Pr", &MtlMaterial::roughness},           {"Pm", &MtlMaterial::metalness},
        {"Pc", &MtlMaterial::clearcoat},    {"Pcr", &MtlMaterial::clearcoatRoughness},
    };
    const auto known = numbers.find(lines.keyword());
    return known == numbers.end() || setNumber(lines, material.*known->second);
}

bool MtlReader::map(TextLines& lines, MtlMaterial& material)
{
    std::optional<MtlMap> map = mapOf(lines.rest());
    if (!map)
        return false;
    m_task.takeMemory(memoryOfMap + lines.rest().size(), linePlace(lines.number()));
    map->statement = textOf(lines.keyword());
    map->line = lines.number();
    material.maps.insert_or_assign(keyOfMap(lines.keyword()), std::move(*map));
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
    MtlMaterial material;
    material.library = file;
    const MtlMaterial none = material;
    while (lines.next()) {
        if (lines.keyword() == "newmtl") {
            add(name, material);
            name = textOf(lines.rest()).toStdString();
            material = none;
        } else if (!statement(lines, material)) {
            m_task.warnIn(file,
                          isMap(keyOfMap(lines.keyword()))
                              ? tr("'%1' has no file name, or an option without its value").arg(textOf(lines.keyword()))
                              : tr("a value of '%1' is no number").arg(textOf(lines.keyword())),
                          linePlace(lines.number()));
        }
    }
    add(name, material);
}

void MtlReader::add(const std::string& name, const MtlMaterial& material)
{
    if (!name.empty() && m_materials.try_emplace(name, finished(material)).second)
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

MtlMaterials readMtl(const std::vector<ObjLibrary>& libraries, ReadTask& task)
{
    const QDir folder = QFileInfo(task.path()).dir();
    MtlReader reader(task);
    for (const ObjLibrary& library : libraries)
        readLibrary(library, folder, task, reader);
    return reader.take();
}

} // namespace files::obj
