#include "importer/StepRecorder.h"

void StepRecorder::operator()(const char* step)
{
    const Clock::time_point end = Clock::now();
    const znSceneCounts counts = countScene(m_root);
    if (!m_steps->empty()) {
        m_steps->back().seconds = std::chrono::duration<double>(end - m_begin).count();
        m_steps->back().after = counts;
    }
    if (step)
        m_steps->push_back({QString::fromLatin1(step), 0, counts, counts});
    m_begin = Clock::now();
}
