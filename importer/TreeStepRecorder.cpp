#include "importer/TreeStepRecorder.h"

namespace importer
{

void TreeStepRecorder::operator()(const char* step)
{
    const Clock::time_point end = Clock::now();
    const zn::SceneCounts counts = zn::countScene(m_root);
    if (!m_steps->empty()) {
        m_steps->back().seconds = std::chrono::duration<double>(end - m_begin).count();
        m_steps->back().after = counts;
    }
    if (step)
        m_steps->push_back({QString::fromLatin1(step), 0, counts, counts});
    m_begin = Clock::now();
}

} // namespace importer
