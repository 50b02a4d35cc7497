#include "ptx/readers/jt/codec/Predictors.h"

#include <gtest/gtest.h>

using namespace ptx::jt::codec;

TEST(JtPredictors, FirstFourValuesStandAndLaterOnesAreGuessed)
{
    Values steps{1, 2, 4, 7, 1, -1};
    predict(steps, Predictor::Stride1);
    EXPECT_EQ(steps, (Values{1, 2, 4, 7, 11, 14}));
    Values last{5, 6, 7, 8, 3, -1};
    predict(last, Predictor::Lag1);
    EXPECT_EQ(last, (Values{5, 6, 7, 8, 11, 10}));
    Values strip{0, 1, 100, 3, 1, 1};
    predict(strip, Predictor::StripIndex);
    EXPECT_EQ(strip, (Values{0, 1, 100, 3, 103, 6}));
}
