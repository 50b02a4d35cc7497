#include "ptx/readers/step/damage/Damage.h"

#include "ptx/readers/step/damage/FaultFinder.h"
#include "ptx/readers/step/damage/LabelFinder.h"
#include "ptx/readers/step/damage/Rings.h"
#include "ptx/readers/step/damage/UnplacedOccurrences.h"

#include <StepData_StepModel.hxx>

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>

namespace ptx::step::damage
{

namespace
{

/// "#12 CIRCLE in line 34"
std::string placeOf(const Fault& fault, const TextIndex& text)
{
    std::string place = "#";
    place += std::to_string(fault.ident);
    const std::string_view type = text.typeOf(fault.ident);
    if (!type.empty() && type != "(")
        place.append(1, ' ').append(type);
    return place + " in line " + std::to_string(text.lineOf(fault.ident));
}

/// Losses of one label by one cause.
struct Group {
    TDF_Label label;
    const Fault* first = nullptr;
    std::size_t count = 0;
};

std::string reasonOf(const Group& group, const TextIndex& text)
{
    std::string reason = placeOf(*group.first, text);
    if (group.count > 1)
        reason += " and " + std::to_string(group.count - 1) + " more like it";
    reason += ": " + group.first->reason;
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    return reason;
}

} // namespace

void Damage::cutOut(const Handle(StepData_StepModel) & model)
{
    std::vector<Fault> faults = findFaults(*model);
    const std::vector<Fault> rings = findRings(*model);
    faults.insert(faults.end(), rings.begin(), rings.end());
    faults.insert(faults.end(), m_known.begin(), m_known.end());
    if (faults.empty())
        return;
    m_text.emplace(m_path);
    ModelView view(model, *m_text);
    m_losses = Excision(view).run(faults);
}

void Damage::addUnplaced(const STEPCAFControl_Reader& reader)
{
    std::vector<Loss> unplaced = findUnplaced(reader);
    if (!unplaced.empty() && !m_text)
        m_text.emplace(m_path);
    m_losses.insert(m_losses.end(), std::make_move_iterator(unplaced.begin()), std::make_move_iterator(unplaced.end()));
}

std::string Damage::firstLoss() const
{
    return placeOf(m_losses.front().fault, *m_text) + ": " + m_losses.front().fault.reason;
}

std::vector<Damage::Mark> Damage::marks(const STEPCAFControl_Reader& reader) const
{
    if (isEmpty())
        return {};
    const LabelFinder labels(reader);
    std::vector<Group> groups;
    std::map<std::tuple<int, std::string_view, std::string>, std::size_t> known; // by label, type and reason
    for (const Loss& loss : m_losses)
        for (const auto& [number, label] : labels.of(loss.owners)) {
            const auto [entry, isNew] =
                known.try_emplace({number, m_text->typeOf(loss.fault.ident), loss.fault.reason}, groups.size());
            if (isNew)
                groups.push_back({label, &loss.fault, 0});
            ++groups[entry->second].count;
        }
    std::vector<Mark> marks;
    marks.reserve(groups.size());
    for (const Group& group : groups)
        marks.push_back({group.label, reasonOf(group, *m_text)});
    return marks;
}

} // namespace ptx::step::damage
