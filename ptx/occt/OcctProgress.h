#pragma once

#include "ptx/core/Progress.h"

#include <Message_ProgressIndicator.hxx>

namespace ptx::occt
{

/// Hands OCCT's own progress on. OCCT may call from any of its threads.
class OcctProgress : public Message_ProgressIndicator
{
public:
    explicit OcctProgress(core::Progress& progress) : m_progress(progress) {}

    void Show(const Message_ProgressScope&, const Standard_Boolean) override { m_progress.report(GetPosition()); }

private:
    core::Progress& m_progress;
};

} // namespace ptx::occt
