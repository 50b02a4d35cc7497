#include "ptx/readers/step/StepReader.h"

#include "ptx/occt/OcctMatrix.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/occt/PartMesher.h"
#include "ptx/readers/Reader.h"
#include "ptx/readers/step/PartReferences.h"
#include "ptx/readers/step/StepFile.h"
#include "ptx/readers/step/ViewFraming.h"
#include "scene/MatrixMath.h"

#include <algorithm>
#include <filesystem>

namespace ptx::step
{

namespace
{

// What OCCT's reader needs goes before the meshing starts.
core::Outcome<StepContent> readWithParts(const model::Job& job, occt::HealingAhead& ahead)
{
    core::Outcome<StepContent> content = readStepFile(job, false, ahead);
    if (!content)
        return content;
    if (!job.externalParts)
        inlineParts(content.value(), job, ahead);
    else
        keepReferences(content.value(), job);
    return content;
}

/// What the views of the file are views of.
std::string groupName(const model::Model& model, const std::string& path)
{
    std::string name;
    if (model.roots.size() == 1)
        name = model.products[model.roots[0].product].name;
    if (name.empty())
        name = std::filesystem::path(path).stem().string();
    return withoutBrackets(std::move(name));
}

bool isAtOpening(const model::View& view)
{
    return view.isAtOpening;
}

void addViews(model::Model& model, const std::vector<SavedView>& views, const std::string& path)
{
    if (views.empty())
        return;
    using osg::operator*;
    const model::ModelBounds bounds = model::boundsOf(model);
    const std::string group = groupName(model, path);
    for (const SavedView& saved : views) {
        model::View& view = model.views.emplace_back();
        view.name = saved.name;
        view.group = group;
        view.isAtOpening = saved.isDefault && std::none_of(model.views.begin(), model.views.end(), isAtOpening);
        frame(view, saved.camera, saved.part ? bounds.products[*saved.part] : bounds.whole);
        view.facts.areAnnotationsInFront = saved.showsHidden;
        view.placement = occt::toMatrix(saved.scope.place) * view.placement;
    }
}

} // namespace

core::Outcome<model::Model> read(const model::Job& job)
{
    occt::setUpOcct();
    occt::HealingAhead ahead(job);
    core::Outcome<StepContent> content = readWithParts(job, ahead);
    if (!content)
        return content.failure();
    model::Model& model = content.value().model;
    if (core::Trouble trouble = readers::requireExternalParts(job.externalParts, !model.references.empty()))
        return *trouble;
    if (isEmpty(content.value()) && model.references.empty())
        return nothingToImport("it holds no solids, surfaces, curves or annotations");
    core::Outcome<std::vector<model::Body>> bodies =
        occt::meshParts(std::move(content.value().shapes), job, occt::Loose::Keep, &ahead);
    if (!bodies)
        return bodies.failure();
    model.bodies = std::move(bodies.value());
    addBodies(model, std::move(content.value().facets));
    addViews(model, content.value().views, job.input);
    return std::move(model);
}

} // namespace ptx::step
