#include "files/obj/MtlText.h"

#include "files/FileBytes.h"
#include "files/obj/TextLines.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <optional>

namespace files::obj
{

namespace
{

using Color = std::array<float, 3>;

/// The values that the statements of one material give.
struct Values {
    Color ambient = {0, 0, 0};
    Color diffuse = {0.8f, 0.8f, 0.8f};
    Color specular = {0, 0, 0};
    Color emission = {0, 0, 0};
    float shininess = 1;
    std::optional<float> opacity;
    std::optional<float> transparency;
};

void appendStatement(std::string& text, const char* keyword, const Color& color)
{
    text += keyword;
    for (const float channel : color)
        appendNumber(text, channel);
    text += '\n';
}

void appendStatement(std::string& text, const char* keyword, float value)
{
    text += keyword;
    appendNumber(text, value);
    text += '\n';
}

/// `d` wins over `Tr`, which some programs write with the meaning of `d`.
float opacityOf(const Values& values)
{
    return values.opacity.value_or(1.0f - values.transparency.value_or(0.0f));
}

/// Reads one library after the other.
class MtlChecker
{
public:
    explicit MtlChecker(ReadTask& task) : m_task(task) {}

    void read(const QString& file);
    MtlText take() { return std::move(m_result); }

private:
    bool statement(TextLines& lines, Values& values);
    std::optional<float> takeNumber(TextLines& lines) { return numberOf(lines.takeWord()); }
    template <class Target>
    bool setNumber(TextLines& lines, Target& target);
    bool setColor(TextLines& lines, Color& color);
    bool setOpacity(TextLines& lines, Values& values);
    void add(const std::string& name, const Values& values);

    ReadTask& m_task;
    MtlText m_result;
    std::uint64_t m_textures = 0;
};

template <class Target>
bool MtlChecker::setNumber(TextLines& lines, Target& target)
{
    const std::optional<float> number = takeNumber(lines);
    if (number)
        target = *number;
    return number.has_value();
}

/// One number stands for three.
bool MtlChecker::setColor(TextLines& lines, Color& color)
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
bool MtlChecker::setOpacity(TextLines& lines, Values& values)
{
    return lines.rest().starts_with("-halo") ? (lines.takeWord(), setNumber(lines, values.opacity))
                                             : setNumber(lines, values.opacity);
}

/// False when the values of a statement make no sense.
bool MtlChecker::statement(TextLines& lines, Values& values)
{
    const std::string_view keyword = lines.keyword();
    if (keyword == "Ka")
        return setColor(lines, values.ambient);
    if (keyword == "Kd")
        return setColor(lines, values.diffuse);
    if (keyword == "Ks")
        return setColor(lines, values.specular);
    if (keyword == "Ke")
        return setColor(lines, values.emission);
    if (keyword == "Ns")
        return setNumber(lines, values.shininess);
    if (keyword == "d")
        return setOpacity(lines, values);
    if (keyword == "Tr")
        return setNumber(lines, values.transparency);
    if (keyword.starts_with("map_"))
        ++m_textures;
    return true;
}

void MtlChecker::read(const QString& file)
{
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

void MtlChecker::add(const std::string& name, const Values& values)
{
    const std::size_t number = m_result.numbers.size();
    if (name.empty() || !m_result.numbers.try_emplace(name, number).second)
        return;
    std::string& text = m_result.text;
    text.append("newmtl ").append(std::to_string(number)).append(1, '\n');
    appendStatement(text, "Ka", values.ambient);
    appendStatement(text, "Kd", values.diffuse);
    appendStatement(text, "Ks", values.specular);
    appendStatement(text, "Ke", values.emission);
    appendStatement(text, "Ns", values.shininess);
    appendStatement(text, "d", opacityOf(values));
}

/// The file that `name` stands for: beside the OBJ file, also when the name carries folders of another machine. Empty
/// when there is none.
QString find(const QString& name, const QDir& folder)
{
    const QString slashed = QString(name).replace(QLatin1Char('\\'), QLatin1Char('/'));
    for (const QString& candidate : {slashed, slashed.section(QLatin1Char('/'), -1)}) {
        QString path = folder.filePath(candidate);
        if (!candidate.isEmpty() && QFileInfo(path).isFile())
            return path;
    }
    return {};
}

void readLibrary(const ObjLibrary& library, const QDir& folder, ReadTask& task, MtlChecker& checker)
{
    const QString whole = find(library.name, folder);
    const QStringList names =
        whole.isEmpty() ? library.name.split(QLatin1Char(' '), Qt::SkipEmptyParts) : QStringList(library.name);
    for (const QString& name : names) {
        const QString path = find(name, folder);
        if (path.isEmpty())
            task.warn(tr("the material library '%1' is missing").arg(name), linePlace(library.line));
        else
            checker.read(path);
    }
}

} // namespace

MtlText checkMtl(const std::vector<ObjLibrary>& libraries, ReadTask& task)
{
    const QDir folder = QFileInfo(task.path()).dir();
    MtlChecker checker(task);
    for (const ObjLibrary& library : libraries)
        readLibrary(library, folder, task, checker);
    return checker.take();
}

} // namespace files::obj
