#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <QString>

#include <memory>
#include <optional>
#include <string>

namespace importer::inventory
{

/// What a query is asked about: a node as it was named and described.
struct QueryFacts {
    std::string name;     ///< of the node
    std::string product;  ///< the name of its product; may be empty
    std::string id;       ///< see `osg::OccurrenceIds`
    std::string material; ///< the name of the material that it is drawn with; may be empty
    osg::AttributeList attributes;
};

/// A condition on nodes, as `docs/attributes.md` tells it: tests such as `name~Bolt*` and `attribute:Mass>2.5`, joined
/// by "&" and, weaker, "|", with "!" before what must not hold and brackets around what belongs together.
class SceneQuery
{
public:
    /// A part of a query.
    class Condition
    {
    public:
        virtual ~Condition();
        virtual bool holds(const QueryFacts& facts) const = 0;
    };

    /// The query that `text` writes down. Nothing when it is none; `error` then says what is wrong with it.
    static std::optional<SceneQuery> parse(const QString& text, QString& error);

    bool matches(const QueryFacts& facts) const { return m_condition->holds(facts); }
    /// Whether some test asks for the id, which is dear to tell.
    bool asksForId() const { return m_asksForId; }

private:
    SceneQuery(std::shared_ptr<const Condition> condition, bool asksForId)
        : m_condition(std::move(condition)), m_asksForId(asksForId)
    {
    }

    std::shared_ptr<const Condition> m_condition;
    bool m_asksForId;
};

} // namespace importer::inventory
