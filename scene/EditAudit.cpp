#include "scene/EditAudit.h"

#include "host/OSGSystem/Edit.h"

#include <algorithm>

namespace osg
{

namespace
{

EditAudit* activeAudit = nullptr;

EditAudit::Record recordOf(const FieldContainer& container, FieldMask mask)
{
    return {container.getContainerId(), container.getType().getName(), mask};
}

} // namespace

EditAudit::EditAudit()
{
    activeAudit = this;
}

EditAudit::~EditAudit()
{
    activeAudit = nullptr;
}

EditAudit* EditAudit::active()
{
    return activeAudit;
}

std::size_t EditAudit::openBrackets() const
{
    std::size_t count = 0;
    for (const auto& [id, brackets] : m_open)
        count += brackets.size();
    return count;
}

void EditAudit::begin(const FieldContainer& container, FieldMask mask)
{
    m_open[container.getContainerId()].push_back({mask, 0});
}

void EditAudit::end(const FieldContainer& container, FieldMask mask)
{
    std::vector<Bracket>& brackets = m_open[container.getContainerId()];
    const auto match =
        std::find_if(brackets.rbegin(), brackets.rend(), [&](const Bracket& b) { return b.mask == mask; });
    if (match == brackets.rend()) {
        m_unmatched.push_back(recordOf(container, mask));
        return;
    }
    m_brackets.push_back(recordOf(container, mask));
    if ((match->changed & mask) == 0)
        m_idle.push_back(recordOf(container, mask));
    brackets.erase(std::next(match).base());
}

void EditAudit::fieldChanged(const FieldContainer& container, FieldMask mask)
{
    bool named = false;
    for (Bracket& bracket : m_open[container.getContainerId()]) {
        bracket.changed |= mask;
        named = named || (bracket.mask & mask) == mask;
    }
    if (!named)
        m_unbracketed.push_back(recordOf(container, mask));
}

void beginEditCP(const FieldContainerPtr& container, FieldMask mask, unsigned)
{
    if (activeAudit && container)
        activeAudit->begin(*container, mask);
}

void endEditCP(const FieldContainerPtr& container, FieldMask mask, unsigned)
{
    if (activeAudit && container)
        activeAudit->end(*container, mask);
}

} // namespace osg
