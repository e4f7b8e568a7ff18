// The discrete Fourier transform of any length.
#pragma once

#include <complex>
#include <span>
#include <vector>

namespace servo::scope {

// X[k] = sum of x[i] * exp(-2 pi j i k / n), for all k below n. The time grows with n log n, for
// prime lengths too. Empty in, empty out.
std::vector<std::complex<double>> fourier_transform(std::span<const double> values);

}  // namespace servo::scope
