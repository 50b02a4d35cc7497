#include "importer/inventory/SceneQuery.h"

#include "scene/NamePattern.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <vector>

namespace importer::inventory
{

SceneQuery::Condition::~Condition() = default;

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::SceneQuery)
};

using Condition = SceneQuery::Condition;
using ConditionPtr = std::shared_ptr<const Condition>;

constexpr int deepestNesting = 100;

/// The ways to compare, the longer words first.
enum class Comparison { NotEqual, NotLike, AtMost, AtLeast, Equal, Like, Less, More };
constexpr std::pair<std::string_view, Comparison> comparisons[] = {
    {"!=", Comparison::NotEqual}, {"!~", Comparison::NotLike}, {"<=", Comparison::AtMost}, {">=", Comparison::AtLeast},
    {"=", Comparison::Equal},     {"~", Comparison::Like},     {"<", Comparison::Less},    {">", Comparison::More}};

struct Field {
    std::string_view word;
    std::string QueryFacts::*text;
};
constexpr Field fields[] = {{"name", &QueryFacts::name},
                            {"product", &QueryFacts::product},
                            {"id", &QueryFacts::id},
                            {"material", &QueryFacts::material}};
constexpr std::string_view attributeWord = "attribute:";

std::optional<double> numberOf(const std::string& text)
{
    double number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() && end.ptr == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// One comparison with a text or, where both are numbers, with a number.
struct Test {
    Comparison comparison = Comparison::Equal;
    std::string value;
    std::optional<double> number;

    bool holds(const std::string& text) const
    {
        switch (comparison) {
        case Comparison::Equal:
            return text == value;
        case Comparison::NotEqual:
            return text != value;
        case Comparison::Like:
            return osg::matchesPattern(value, text);
        case Comparison::NotLike:
            return !osg::matchesPattern(value, text);
        default:
            return isInOrder(numberOf(text));
        }
    }

    bool holds(const osg::Attribute& attribute) const
    {
        return holds(osg::textOf(attribute.value)) || (isEqual() && holdsNumber(attribute.value));
    }

private:
    bool isEqual() const { return comparison == Comparison::Equal; }
    bool holdsNumber(const osg::AttributeValue& attribute) const
    {
        const auto* real = std::get_if<double>(&attribute);
        return real && number && *real == *number;
    }
    bool isInOrder(std::optional<double> text) const
    {
        if (!text || !number)
            return false;
        return comparison == Comparison::Less     ? *text < *number
               : comparison == Comparison::More   ? *text > *number
               : comparison == Comparison::AtMost ? *text <= *number
                                                  : *text >= *number;
    }
};

class FieldTest final : public Condition
{
public:
    FieldTest(std::string QueryFacts::*field, Test test) : m_field(field), m_test(std::move(test)) {}
    bool holds(const QueryFacts& facts) const override { return m_test.holds(facts.*m_field); }

private:
    std::string QueryFacts::*m_field;
    Test m_test;
};

/// Of the attributes whose names are of a pattern one must pass the test; without a test one must be there.
class AttributeTest final : public Condition
{
public:
    AttributeTest(std::string pattern, std::optional<Test> test)
        : m_pattern(std::move(pattern)), m_test(std::move(test))
    {
    }
    bool holds(const QueryFacts& facts) const override
    {
        return std::any_of(facts.attributes.begin(), facts.attributes.end(), [this](const osg::Attribute& each) {
            return osg::matchesPattern(m_pattern, each.name) && (!m_test || m_test->holds(each));
        });
    }

private:
    std::string m_pattern;
    std::optional<Test> m_test;
};

class Not final : public Condition
{
public:
    explicit Not(ConditionPtr inner) : m_inner(std::move(inner)) {}
    bool holds(const QueryFacts& facts) const override { return !m_inner->holds(facts); }

private:
    ConditionPtr m_inner;
};

class Several final : public Condition
{
public:
    Several(std::vector<ConditionPtr> inner, bool needsAll) : m_inner(std::move(inner)), m_needsAll(needsAll) {}
    bool holds(const QueryFacts& facts) const override
    {
        const auto isMet = [&facts](const ConditionPtr& each) { return each->holds(facts); };
        return m_needsAll ? std::all_of(m_inner.begin(), m_inner.end(), isMet)
                          : std::any_of(m_inner.begin(), m_inner.end(), isMet);
    }

private:
    std::vector<ConditionPtr> m_inner;
    bool m_needsAll;
};

class Parser
{
public:
    explicit Parser(std::string_view text) : m_text(text) {}

    ConditionPtr parse()
    {
        ConditionPtr condition = alternatives();
        skipBlanks();
        if (m_at < m_text.size())
            fail(Texts::tr("'|' or '&' is missing"));
        return m_error.isEmpty() ? condition : nullptr;
    }

    const QString& error() const { return m_error; }
    bool asksForId() const { return m_asksForId; }

private:
    ConditionPtr alternatives()
    {
        return list('|', false, [this] { return list('&', true, [this] { return factor(); }); });
    }

    template <class Item>
    ConditionPtr list(char mark, bool needsAll, const Item& item)
    {
        std::vector<ConditionPtr> items = {item()};
        while (m_error.isEmpty() && take(mark))
            items.push_back(item());
        return items.size() == 1 ? items.front() : std::make_shared<Several>(std::move(items), needsAll);
    }

    ConditionPtr factor()
    {
        bool isNegated = false;
        while (take('!'))
            isNegated = !isNegated;
        ConditionPtr inner = take('(') ? bracket() : test();
        return isNegated ? std::make_shared<Not>(std::move(inner)) : inner;
    }

    ConditionPtr bracket()
    {
        if (++m_depth > deepestNesting) {
            fail(Texts::tr("the brackets are nested too deeply"));
            return nullptr;
        }
        ConditionPtr inner = alternatives();
        --m_depth;
        if (!take(')'))
            fail(Texts::tr("')' is missing"));
        return inner;
    }

    ConditionPtr test()
    {
        const std::string word = text("!=~<>|&()");
        if (word.starts_with(attributeWord))
            return std::make_shared<AttributeTest>(word.substr(attributeWord.size()), comparison());
        const auto* field = std::find_if(std::begin(fields), std::end(fields),
                                         [&word](const Field& each) { return each.word == word; });
        std::optional<Test> test = comparison();
        if (field == std::end(fields))
            fail(Texts::tr("a test begins with name, product, id, material or attribute:NAME"));
        else if (!test)
            fail(Texts::tr("a comparison is missing"));
        if (!m_error.isEmpty())
            return nullptr;
        m_asksForId = m_asksForId || field->text == &QueryFacts::id;
        return std::make_shared<FieldTest>(field->text, std::move(*test));
    }

    std::optional<Test> comparison()
    {
        skipBlanks();
        for (const auto& [word, way] : comparisons)
            if (m_text.substr(m_at).starts_with(word)) {
                m_at += word.size();
                Test test{way, text("|&)"), {}};
                test.number = numberOf(test.value);
                return test;
            }
        return std::nullopt;
    }

    /// Up to one of `ends`, without blanks around it; what stands between double quotes is taken as it is.
    std::string text(std::string_view ends)
    {
        skipBlanks();
        std::string result;
        std::size_t kept = 0;
        for (; m_at < m_text.size() && ends.find(m_text[m_at]) == std::string_view::npos; ++m_at) {
            if (m_text[m_at] == '"')
                kept = quoted(result);
            else
                result += m_text[m_at];
        }
        while (result.size() > kept && result.back() == ' ')
            result.pop_back();
        return result;
    }

    /// Leaves the place at the closing quote. @return how much of `result` must stay
    std::size_t quoted(std::string& result)
    {
        const std::size_t end = std::min(m_text.find('"', m_at + 1), m_text.size());
        if (end == m_text.size())
            fail(Texts::tr("a closing quote is missing"));
        result += m_text.substr(m_at + 1, end - m_at - 1);
        m_at = std::min(end, m_text.size() - 1);
        return result.size();
    }

    void skipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == ' ')
            ++m_at;
    }

    bool take(char mark)
    {
        skipBlanks();
        if (m_at == m_text.size() || m_text[m_at] != mark)
            return false;
        ++m_at;
        return true;
    }

    void fail(const QString& message)
    {
        if (m_error.isEmpty())
            m_error = Texts::tr("%1 (at character %2)").arg(message).arg(m_at + 1);
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    int m_depth = 0;
    bool m_asksForId = false;
    QString m_error;
};

} // namespace

std::optional<SceneQuery> SceneQuery::parse(const QString& text, QString& error)
{
    const std::string bytes = text.toStdString();
    Parser parser(bytes);
    if (ConditionPtr condition = parser.parse())
        return SceneQuery(std::move(condition), parser.asksForId());
    error = parser.error();
    return std::nullopt;
}

} // namespace importer::inventory
