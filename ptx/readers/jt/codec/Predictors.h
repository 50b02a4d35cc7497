#pragma once

#include "ptx/readers/jt/codec/CodeText.h"

namespace ptx::jt::codec
{

/// How an array's values are guessed from those before; the packet holds what is left. The first four are never
/// guessed.
enum class Predictor {
    None,
    Lag1,      ///< as the last one
    Stride1,   ///< the last step again
    StripIndex ///< the last but one and its step, 2 where that is wild
};

/// Turns residuals into values, modulo 2^32.
inline void predict(Values& values, Predictor predictor)
{
    const auto at = [&](std::size_t i) { return static_cast<std::uint32_t>(values[i]); };
    for (std::size_t i = 4; predictor != Predictor::None && i < values.size(); ++i) {
        std::uint32_t guess = at(i - 1);
        if (predictor == Predictor::Stride1)
            guess = 2 * at(i - 1) - at(i - 2);
        if (predictor == Predictor::StripIndex) {
            const auto step = static_cast<std::int32_t>(at(i - 2) - at(i - 4));
            guess = at(i - 2) + static_cast<std::uint32_t>(step > -8 && step < 8 ? step : 2);
        }
        values[i] = static_cast<std::int32_t>(at(i) + guess);
    }
}

} // namespace ptx::jt::codec
