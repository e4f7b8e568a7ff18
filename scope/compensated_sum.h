// A sum that keeps what a plain one loses when a small number joins a large one.
#pragma once

#include <cmath>

namespace servo::scope {

class CompensatedSum {
  public:
    void add(double value) {
        const double sum = sum_ + value;
        // What the rounding of this addition lost; exact as long as the larger one is taken first.
        lost_ += std::fabs(sum_) >= std::fabs(value) ? (sum_ - sum) + value : (value - sum) + sum_;
        sum_ = sum;
    }
    double value() const { return sum_ + lost_; }

  private:
    double sum_ = 0.0;
    double lost_ = 0.0;
};

}  // namespace servo::scope
