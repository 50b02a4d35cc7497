#include "ptx/readers/step/damage/CrashingEntities.h"

#include "ptx/core/TrialRun.h"
#include "ptx/readers/step/damage/ShapeItems.h"

#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_Face.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace ptx::step::damage
{

namespace
{

using Entities = std::vector<Handle(Standard_Transient)>;

class CrashSearch
{
public:
    CrashSearch(STEPCAFControl_Reader& reader, core::Progress& progress)
        : m_transfer(reader.Reader().WS()->TransferReader()),
          m_model(Handle(StepData_StepModel)::DownCast(reader.Reader().WS()->Model())), m_progress(progress)
    {
    }

    std::vector<Fault> find(Blame blame)
    {
        if (m_model.IsNull() || !m_transfer->BeginTransfer())
            return {};
        for (const Handle(Standard_Transient) & item : crashing(items())) {
            const Entities faces = blame == Blame::Faces ? crashing(facesOf(item)) : Entities();
            add(faces.empty() ? Entities{item} : faces);
        }
        return std::move(m_faults);
    }

private:
    Entities items() const
    {
        Entities items;
        for (int i = 1; i <= m_model->NbEntities(); ++i)
            if (const Handle(Standard_Transient)& entity = m_model->Value(i); isItem(entity))
                items.push_back(entity);
        return items;
    }

    static Entities facesOf(const Handle(Standard_Transient) & item)
    {
        Entities faces;
        for (const Handle(StepShape_ConnectedFaceSet) & shell : shellsOf(item))
            for (const Handle(StepShape_Face) & face : shell->CfsFaces()->Array1())
                if (!face.IsNull())
                    faces.push_back(face);
        return faces;
    }

    Entities crashing(const Entities& entities) const
    {
        Entities result;
        const auto translate = [&](std::size_t i) { m_transfer->TransferOne(entities[i]); };
        for (const std::size_t i : core::crashesOf(entities.size(), translate, m_progress))
            result.push_back(entities[i]);
        return result;
    }

    void add(const Entities& entities)
    {
        for (const Handle(Standard_Transient) & entity : entities) {
            Fault& fault = m_faults.emplace_back();
            fault.ident = m_model->IdentLabel(entity);
            fault.reason = "the CAD kernel crashes on it";
        }
    }

    Handle(XSControl_TransferReader) m_transfer;
    Handle(StepData_StepModel) m_model;
    core::Progress& m_progress;
    std::vector<Fault> m_faults;
};

} // namespace

std::vector<Fault> findCrashingEntities(STEPCAFControl_Reader& reader, Blame blame, core::Progress& progress)
{
    return CrashSearch(reader, progress).find(blame);
}

} // namespace ptx::step::damage
