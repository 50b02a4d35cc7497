#include "ptx/readers/step/CalloutOwners.h"

#include "ptx/core/Log.h"
#include "ptx/readers/step/CalloutMeshes.h"
#include "ptx/readers/step/NumberedFacts.h"

#include <iterator>
#include <utility>

namespace ptx::step
{

namespace
{

using annotations::Drawing;

std::string counted(std::size_t count, const char* what)
{
    return std::to_string(count) + " " + what;
}

void tell(const Drawing& drawing, core::Log& log)
{
    const annotations::Counts& counts = drawing.counts;
    if (counts.occurrences > 0)
        log.info(counted(counts.occurrences, "annotations in ") + counted(drawing.callouts.size(), "callouts: ") +
                 counted(counts.polylines, "polylines of ") + counted(counts.points, "points, ") +
                 counted(counts.triangles, "triangles"));
    if (counts.placeholders > 0)
        log.info(counted(counts.placeholders, "placeholders of annotations draw nothing"));
    for (const auto& [type, count] : drawing.unread)
        log.warning(counted(count, "contents of annotations are not drawn: ") + type);
    for (const auto& [type, count] : drawing.notUnderstood)
        log.info(counted(count, "meanings of annotations are not understood: ") + type);
    if (counts.outOfRange > 0)
        log.warning(counted(counts.outOfRange, "points of annotations are left out: they are not in the file"));
    if (counts.guessedAngles > 0)
        log.warning(counted(counts.guessedAngles,
                            "curves of annotations end at angles without a unit: taken as radians, "
                            "and as degrees beyond a full turn"));
    if (counts.isCut)
        log.warning("the annotations refer to more points than can be meant; the rest is left out");
    if (counts.areModelsCut)
        log.warning("so many drawings list annotations that saved views do not show all of them");
}

} // namespace

CalloutOwners::CalloutOwners(const STEPCAFControl_Reader& reader, const Drawing& drawing, const ViewedCallouts& viewed,
                             core::Log& log)
{
    tell(drawing, log);
    if (!drawing.callouts.empty())
        place(reader, drawing, viewed);
}

void CalloutOwners::place(const STEPCAFControl_Reader& reader, const Drawing& drawing, const ViewedCallouts& viewed)
{
    const NumberedFacts facts(reader);
    for (const annotations::Callout& drawn : drawing.callouts) {
        model::Callout callout = calloutWithMeshes(drawn, facts.millimetresOf(drawn.context), m_appearances);
        callout.views = viewed.viewsOf(drawn);
        const TDF_Label label = facts.labelOf(drawn.product);
        if (label.IsNull()) {
            m_others.push_back(std::move(callout));
            continue;
        }
        if (!m_owned.IsBound(label))
            m_owned.Bind(label, {});
        m_owned.ChangeFind(label).push_back(std::move(callout));
    }
}

void CalloutOwners::addTo(model::Product& product, const TDF_Label& label)
{
    if (Callouts* own = m_owned.ChangeSeek(label))
        product.callouts = std::exchange(*own, {});
}

void CalloutOwners::finish(model::Model& model, const std::string& name)
{
    if (model.roots.empty() && !m_others.empty()) {
        model.roots.emplace_back().product = model.products.size();
        model.products.emplace_back().name = name;
    }
    if (!model.roots.empty()) {
        Callouts& callouts = model.products[model.roots[0].product].callouts;
        std::move(m_others.begin(), m_others.end(), std::back_inserter(callouts));
    }
    for (model::Product& product : model.products)
        restate(product, model.appearances);
}

void CalloutOwners::restate(model::Product& product, model::AppearanceTable& appearances) const
{
    for (model::Callout& callout : product.callouts)
        for (model::Piece& piece : callout.pieces)
            piece.appearance = appearances.indexOf(m_appearances[piece.appearance]);
}

} // namespace ptx::step
