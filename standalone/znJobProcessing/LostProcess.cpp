#include "standalone/znJobProcessing/LostProcess.h"

#include <utility>

namespace znJobs
{

namespace
{

LossJudge& judge()
{
    static LossJudge current;
    return current;
}

} // namespace

LossJudge setLossJudge(LossJudge newJudge)
{
    return std::exchange(judge(), std::move(newJudge));
}

LossVerdict judgeLoss(znProcessJob& job, const QString& command, const QByteArray& output)
{
    return judge() ? judge()(job, command, output) : LossVerdict();
}

} // namespace znJobs
