#include "ptx/readers/step/damage/EmptyAssignments.h"

#include <StepAP203_CcDesignApproval.hxx>
#include <StepAP203_CcDesignCertification.hxx>
#include <StepAP203_CcDesignContract.hxx>
#include <StepAP203_CcDesignDateAndTimeAssignment.hxx>
#include <StepAP203_CcDesignPersonAndOrganizationAssignment.hxx>
#include <StepAP203_CcDesignSecurityClassification.hxx>
#include <StepAP203_CcDesignSpecificationReference.hxx>
#include <StepAP203_Change.hxx>
#include <StepAP203_ChangeRequest.hxx>
#include <StepAP203_StartRequest.hxx>
#include <StepAP203_StartWork.hxx>
#include <StepAP214_AppliedApprovalAssignment.hxx>
#include <StepAP214_AppliedDateAndTimeAssignment.hxx>
#include <StepAP214_AppliedDateAssignment.hxx>
#include <StepAP214_AppliedDocumentReference.hxx>
#include <StepAP214_AppliedExternalIdentificationAssignment.hxx>
#include <StepAP214_AppliedGroupAssignment.hxx>
#include <StepAP214_AppliedOrganizationAssignment.hxx>
#include <StepAP214_AppliedPersonAndOrganizationAssignment.hxx>
#include <StepAP214_AppliedPresentedItem.hxx>
#include <StepAP214_AppliedSecurityClassificationAssignment.hxx>
#include <StepAP214_AutoDesignActualDateAndTimeAssignment.hxx>
#include <StepAP214_AutoDesignActualDateAssignment.hxx>
#include <StepAP214_AutoDesignApprovalAssignment.hxx>
#include <StepAP214_AutoDesignDateAndPersonAssignment.hxx>
#include <StepAP214_AutoDesignDocumentReference.hxx>
#include <StepAP214_AutoDesignGroupAssignment.hxx>
#include <StepAP214_AutoDesignNominalDateAndTimeAssignment.hxx>
#include <StepAP214_AutoDesignNominalDateAssignment.hxx>
#include <StepAP214_AutoDesignOrganizationAssignment.hxx>
#include <StepAP214_AutoDesignPersonAndOrganizationAssignment.hxx>
#include <StepAP214_AutoDesignPresentedItem.hxx>
#include <StepAP214_AutoDesignSecurityClassificationAssignment.hxx>

#include <string_view>

namespace ptx::step::damage
{

namespace
{

template <class Assignment>
bool isEmpty(const Handle(Standard_Transient) & entity)
{
    return entity->IsKind(STANDARD_TYPE(Assignment)) && static_cast<const Assignment&>(*entity).Items().IsNull();
}

template <class... Assignments>
bool isAnyEmpty(const Handle(Standard_Transient) & entity)
{
    return (isEmpty<Assignments>(entity) || ...);
}

} // namespace

bool isEmptyAssignment(const Handle(Standard_Transient) & entity)
{
    const std::string_view name = entity->DynamicType()->Name();
    if (!name.starts_with("StepAP"))
        return false;
    return isAnyEmpty<StepAP203_CcDesignApproval, StepAP203_CcDesignCertification, StepAP203_CcDesignContract,
                      StepAP203_CcDesignDateAndTimeAssignment, StepAP203_CcDesignPersonAndOrganizationAssignment,
                      StepAP203_CcDesignSecurityClassification, StepAP203_CcDesignSpecificationReference,
                      StepAP203_Change, StepAP203_ChangeRequest, StepAP203_StartRequest, StepAP203_StartWork,
                      StepAP214_AppliedApprovalAssignment, StepAP214_AppliedDateAndTimeAssignment,
                      StepAP214_AppliedDateAssignment, StepAP214_AppliedDocumentReference,
                      StepAP214_AppliedExternalIdentificationAssignment, StepAP214_AppliedGroupAssignment,
                      StepAP214_AppliedOrganizationAssignment, StepAP214_AppliedPersonAndOrganizationAssignment,
                      StepAP214_AppliedPresentedItem, StepAP214_AppliedSecurityClassificationAssignment,
                      StepAP214_AutoDesignActualDateAndTimeAssignment, StepAP214_AutoDesignActualDateAssignment,
                      StepAP214_AutoDesignApprovalAssignment, StepAP214_AutoDesignDateAndPersonAssignment,
                      StepAP214_AutoDesignDocumentReference, StepAP214_AutoDesignGroupAssignment,
                      StepAP214_AutoDesignNominalDateAndTimeAssignment, StepAP214_AutoDesignNominalDateAssignment,
                      StepAP214_AutoDesignOrganizationAssignment, StepAP214_AutoDesignPersonAndOrganizationAssignment,
                      StepAP214_AutoDesignPresentedItem, StepAP214_AutoDesignSecurityClassificationAssignment>(entity);
}

} // namespace ptx::step::damage
