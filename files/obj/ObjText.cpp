#include "files/obj/ObjText.h"

#include "files/obj/TextLines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <tuple>

namespace files::obj
{

namespace
{

enum Kind { Position, TexCoord, Normal };
using Corner = std::array<std::uint32_t, 3>; ///< an index of each kind, 0 for none

// Taken here, in the parser and in the mesh together, as measured.
constexpr std::uint64_t memoryOfVertex = 64;
constexpr std::uint64_t memoryOfCorner = 128;
constexpr std::uint64_t memoryOfSection = 3 * 1024;

/// The largest index that a kind was asked for, and where.
struct Reach {
    std::uint32_t count = 0;
    std::uint32_t largest = 0;
    std::uint64_t line = 0;
};

class ObjChecker
{
public:
    ObjChecker(std::string_view text, ReadTask& task) : m_lines(text), m_task(task) {}

    ObjText run();

private:
    using Statement = void (ObjChecker::*)();
    static const std::map<std::string_view, Statement>& statements();

    void vertex();
    void texCoord();
    void normal();
    void face();
    void line();
    void points();
    void object() { enter(m_object); }
    void group() { enter(m_group); }
    void material() { enter(m_material); }
    void library() { m_result.libraries.push_back({textOf(m_lines.rest()), m_lines.number()}); }
    void freeForm() { ++m_freeForms; }
    void nothing() {}

    void other();
    void enter(std::string& name);
    float takeNumber();
    std::uint32_t takeIndex(std::string_view& text, Kind kind);
    Corner takeCorner(std::string_view word);
    std::vector<Corner> takeCorners();
    void elements(char keyword, std::size_t atLeast);
    void addElement(char keyword, const std::vector<Corner>& corners, bool hasTexCoords, bool hasNormals);
    std::string& sectionText(bool hasTexCoords, bool hasNormals);
    void checkReach(Kind kind, const QString& name) const;
    void takeBareVertices();
    void tellWhatIsMissing();

    [[noreturn]] void fail(const QString& message) const
    {
        m_task.fail(ErrorCode::Damaged, message, linePlace(m_lines.number()));
    }

    using SectionKey = std::tuple<std::string, std::string, std::string, bool, bool>;

    TextLines m_lines;
    ReadTask& m_task;
    ObjText m_result;
    std::string m_object;
    std::string m_group;
    std::string m_material;
    std::map<SectionKey, std::size_t> m_sections;
    std::array<std::array<std::int64_t, 2>, 2> m_current = {{{-1, -1}, {-1, -1}}}; ///< sections, by kind of corner
    std::array<Reach, 3> m_reach;
    bool m_hasColors = false;
    bool m_mixedColors = false;
    std::uint64_t m_freeForms = 0;
    std::uint64_t m_unknown = 0;
    std::uint64_t m_degenerate = 0;
    QString m_firstUnknown;
};

const std::map<std::string_view, ObjChecker::Statement>& ObjChecker::statements()
{
    static const std::map<std::string_view, Statement> table = {
        {"v", &ObjChecker::vertex},         {"vt", &ObjChecker::texCoord},      {"vn", &ObjChecker::normal},
        {"f", &ObjChecker::face},           {"fo", &ObjChecker::face},          {"l", &ObjChecker::line},
        {"p", &ObjChecker::points},         {"o", &ObjChecker::object},         {"g", &ObjChecker::group},
        {"usemtl", &ObjChecker::material},  {"mtllib", &ObjChecker::library},   {"s", &ObjChecker::nothing},
        {"mg", &ObjChecker::nothing},       {"lod", &ObjChecker::nothing},      {"bevel", &ObjChecker::nothing},
        {"usemap", &ObjChecker::nothing},   {"maplib", &ObjChecker::nothing},   {"shadow_obj", &ObjChecker::nothing},
        {"vp", &ObjChecker::nothing},       {"cstype", &ObjChecker::nothing},   {"deg", &ObjChecker::nothing},
        {"step", &ObjChecker::nothing},     {"bmat", &ObjChecker::nothing},     {"trace_obj", &ObjChecker::nothing},
        {"c_interp", &ObjChecker::nothing}, {"d_interp", &ObjChecker::nothing}, {"parm", &ObjChecker::nothing},
        {"trim", &ObjChecker::nothing},     {"hole", &ObjChecker::nothing},     {"scrv", &ObjChecker::nothing},
        {"sp", &ObjChecker::nothing},       {"con", &ObjChecker::nothing},      {"end", &ObjChecker::nothing},
        {"ctech", &ObjChecker::nothing},    {"stech", &ObjChecker::nothing},    {"curv", &ObjChecker::freeForm},
        {"curv2", &ObjChecker::freeForm},   {"surf", &ObjChecker::freeForm},
    };
    return table;
}

ObjText ObjChecker::run()
{
    while (m_lines.next()) {
        const auto statement = statements().find(m_lines.keyword());
        if (statement == statements().end())
            other();
        else
            (this->*statement->second)();
    }
    checkReach(Position, tr("vertex"));
    checkReach(TexCoord, tr("texture coordinate"));
    checkReach(Normal, tr("normal"));
    if (m_result.sections.empty())
        takeBareVertices();
    tellWhatIsMissing();
    if (m_result.sections.empty())
        m_task.fail(ErrorCode::Empty, tr("there are no faces, lines or points in it"));
    return std::move(m_result);
}

void ObjChecker::other()
{
    if (m_unknown++ == 0)
        m_firstUnknown = tr("'%1' in line %2").arg(textOf(m_lines.keyword().substr(0, 40))).arg(m_lines.number());
}

void ObjChecker::enter(std::string& name)
{
    name = textOf(m_lines.rest()).toStdString();
    m_current = {{{-1, -1}, {-1, -1}}};
}

float ObjChecker::takeNumber()
{
    const std::string_view word = m_lines.takeWord();
    if (const std::optional<float> number = numberOf(word))
        return *number;
    fail(word.empty() ? tr("a number is missing") : tr("'%1' is no number").arg(textOf(word.substr(0, 40))));
}

void ObjChecker::vertex()
{
    std::array<float, 7> numbers = {};
    std::size_t count = 0;
    for (; count < 3; ++count)
        numbers[count] = takeNumber();
    while (count < numbers.size()) {
        const std::optional<float> number = numberOf(m_lines.takeWord());
        if (!number)
            break;
        numbers[count++] = *number;
    }
    const bool colored = count >= 6;
    if (m_reach[Position].count++ == 0)
        m_hasColors = colored;
    m_mixedColors = m_mixedColors || colored != m_hasColors;
    m_task.countVertices(1, linePlace(m_lines.number()));
    m_task.takeMemory(memoryOfVertex);
    m_result.vertices += 'v';
    for (std::size_t i = 0; i < 3; ++i)
        appendNumber(m_result.vertices, numbers[i]);
    for (std::size_t i = 0; i < 3 && m_hasColors; ++i)
        appendNumber(m_result.vertices, colored ? numbers[count - 3 + i] : 1.0f);
    m_result.vertices += '\n';
}

void ObjChecker::texCoord()
{
    const float u = takeNumber();
    const float v = numberOf(m_lines.takeWord()).value_or(0.0f);
    ++m_reach[TexCoord].count;
    m_task.takeMemory(memoryOfVertex);
    m_result.vertices += "vt";
    appendNumber(m_result.vertices, u);
    appendNumber(m_result.vertices, v);
    m_result.vertices += '\n';
}

/// A normal that is none, as some programs write it for a triangle without area, says nothing and does no harm.
void ObjChecker::normal()
{
    ++m_reach[Normal].count;
    m_task.takeMemory(memoryOfVertex);
    m_result.vertices += "vn";
    for (int i = 0; i < 3; ++i)
        appendNumber(m_result.vertices, numberOf(m_lines.takeWord()).value_or(0.0f));
    m_result.vertices += '\n';
}

std::uint32_t ObjChecker::takeIndex(std::string_view& text, Kind kind)
{
    std::int64_t index = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
    if (error != std::errc() || index == 0)
        fail(tr("'%1' is no index").arg(textOf(text.substr(0, 40))));
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    Reach& reach = m_reach[kind];
    if (index < 0)
        index += std::int64_t(reach.count) + 1;
    if (index < 1 || index > std::int64_t(std::numeric_limits<std::int32_t>::max()))
        fail(tr("an index reaches outside the file"));
    if (index > reach.largest) {
        reach.largest = static_cast<std::uint32_t>(index);
        reach.line = m_lines.number();
    }
    return static_cast<std::uint32_t>(index);
}

Corner ObjChecker::takeCorner(std::string_view word)
{
    Corner corner = {};
    corner[Position] = takeIndex(word, Position);
    for (const Kind kind : {TexCoord, Normal}) {
        if (word.empty())
            break;
        if (word.front() != '/')
            fail(tr("'%1' is out of place in an index").arg(textOf(word.substr(0, 40))));
        word.remove_prefix(1);
        if (!word.empty() && word.front() != '/')
            corner[kind] = takeIndex(word, kind);
    }
    if (!word.empty())
        fail(tr("'%1' is out of place in an index").arg(textOf(word.substr(0, 40))));
    return corner;
}

std::vector<Corner> ObjChecker::takeCorners()
{
    std::vector<Corner> corners;
    for (std::string_view word = m_lines.takeWord(); !word.empty(); word = m_lines.takeWord())
        corners.push_back(takeCorner(word));
    m_task.countVertices(corners.size(), linePlace(m_lines.number()));
    m_task.takeMemory(corners.size() * memoryOfCorner);
    return corners;
}

void ObjChecker::face()
{
    const std::vector<Corner> corners = takeCorners();
    if (corners.size() < 3) {
        ++m_degenerate;
        return;
    }
    const auto all = [&](Kind kind) {
        return std::all_of(corners.begin(), corners.end(), [kind](const Corner& c) { return c[kind] != 0; });
    };
    addElement('f', corners, all(TexCoord), all(Normal));
}

void ObjChecker::line()
{
    elements('l', 2);
}

void ObjChecker::points()
{
    elements('p', 1);
}

void ObjChecker::elements(char keyword, std::size_t atLeast)
{
    const std::vector<Corner> corners = takeCorners();
    if (corners.size() < atLeast)
        ++m_degenerate;
    else
        addElement(keyword, corners, false, false);
}

void ObjChecker::addElement(char keyword, const std::vector<Corner>& corners, bool hasTexCoords, bool hasNormals)
{
    std::string& text = sectionText(hasTexCoords, hasNormals);
    text += keyword;
    for (const Corner& corner : corners) {
        text.append(1, ' ').append(std::to_string(corner[Position]));
        if (hasTexCoords || hasNormals)
            text += '/';
        if (hasTexCoords)
            text += std::to_string(corner[TexCoord]);
        if (hasNormals)
            text.append(1, '/').append(std::to_string(corner[Normal]));
    }
    text += '\n';
}

std::string& ObjChecker::sectionText(bool hasTexCoords, bool hasNormals)
{
    std::int64_t& current = m_current[hasTexCoords][hasNormals];
    if (current < 0) {
        const SectionKey key(m_object, m_group, m_material, hasTexCoords, hasNormals);
        const auto [place, isNew] = m_sections.try_emplace(key, m_result.sections.size());
        if (isNew) {
            m_task.countNodes(1);
            m_task.takeMemory(memoryOfSection);
            m_result.sections.push_back({m_object, m_group, m_material, {}});
        }
        current = static_cast<std::int64_t>(place->second);
    }
    return m_result.sections[static_cast<std::size_t>(current)].elements;
}

void ObjChecker::checkReach(Kind kind, const QString& name) const
{
    const Reach& reach = m_reach[kind];
    if (reach.largest > reach.count)
        m_task.fail(ErrorCode::Damaged,
                    tr("%1 %2 is asked for, but there are %3").arg(name).arg(reach.largest).arg(reach.count),
                    linePlace(reach.line));
}

/// A file of vertices alone is a cloud of points.
void ObjChecker::takeBareVertices()
{
    m_task.takeMemory(m_reach[Position].count * memoryOfCorner);
    for (std::uint32_t i = 1; i <= m_reach[Position].count; ++i)
        sectionText(false, false).append("p ").append(std::to_string(i)).append(1, '\n');
}

void ObjChecker::tellWhatIsMissing()
{
    if (m_mixedColors)
        m_task.warn(m_hasColors ? tr("vertices without a colour were made white")
                                : tr("colours were left out because not every vertex has one"));
    if (m_degenerate > 0)
        m_task.warn(tr("%1 faces and lines without enough corners were left out").arg(m_degenerate));
    if (m_freeForms > 0)
        m_task.warn(tr("%1 free-form curves and surfaces were left out").arg(m_freeForms));
    if (m_unknown > 0)
        m_task.warn(tr("%1 unknown statements were left out, the first is %2").arg(m_unknown).arg(m_firstUnknown));
}

} // namespace

ObjText checkObj(std::string_view text, ReadTask& task)
{
    if (text.find('\0') != std::string_view::npos)
        task.fail(ErrorCode::Damaged, tr("this is no text"),
                  tr("byte %1").arg(static_cast<qulonglong>(text.find('\0'))));
    return ObjChecker(text, task).run();
}

} // namespace files::obj
