#include "scope/fourier.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>

namespace servo::scope {

namespace {

using Complex = std::complex<double>;

// The product without the rules for infinities, which cost a call for each.
Complex product(const Complex& a, const Complex& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// exp(-pi j * part / whole). Each point of the circle is computed on its own: powers of one would
// gather its error.
Complex on_circle(std::size_t part, std::size_t whole) {
    return std::polar(1.0,
                      -std::numbers::pi * static_cast<double>(part) / static_cast<double>(whole));
}

void reverse_bits(std::vector<Complex>& values) {
    const std::size_t length = values.size();
    for (std::size_t i = 1, reversed = 0; i < length; ++i) {
        std::size_t bit = length >> 1;
        for (; reversed & bit; bit >>= 1)
            reversed ^= bit;
        reversed |= bit;
        if (i < reversed) std::swap(values[i], values[reversed]);
    }
}

// In place, for lengths that are a power of two.
class PowerOfTwo {
  public:
    explicit PowerOfTwo(std::size_t length) : length_(length), turns_(length / 2) {
        for (std::size_t i = 0; i < turns_.size(); ++i)
            turns_[i] = on_circle(i, turns_.size());
    }

    void transform(std::vector<Complex>& values) const {
        reverse_bits(values);
        for (std::size_t half = 1; half < length_; half *= 2) {
            const std::size_t stride = length_ / (2 * half);
            for (std::size_t block = 0; block < length_; block += 2 * half) {
                for (std::size_t i = 0; i < half; ++i) {
                    Complex& low = values[block + i];
                    Complex& high = values[block + i + half];
                    const Complex turned = product(high, turns_[i * stride]);
                    high = low - turned;
                    low += turned;
                }
            }
        }
    }

    // Times the length.
    void transform_back(std::vector<Complex>& values) const {
        for (Complex& value : values)
            value = std::conj(value);
        transform(values);
        for (Complex& value : values)
            value = std::conj(value);
    }

  private:
    std::size_t length_;
    std::vector<Complex> turns_;
};

// Any other length as a convolution with a chirp (Bluestein), which lengths of a power of two do.
std::vector<Complex> by_chirp(std::span<const double> values) {
    const std::size_t count = values.size();
    const std::size_t length = std::bit_ceil(2 * count - 1);
    std::vector<Complex> chirp(count);
    for (std::size_t i = 0; i < count; ++i) {
        // The angle repeats every 2n; taken off as a whole number, so that large squares lose
        // nothing.
        const auto square = std::uint64_t{i} * i % (2 * std::uint64_t{count});
        chirp[i] = on_circle(static_cast<std::size_t>(square), count);
    }
    std::vector<Complex> turned(length);
    std::vector<Complex> filter(length);
    for (std::size_t i = 0; i < count; ++i) {
        turned[i] = values[i] * chirp[i];
        filter[i] = std::conj(chirp[i]);
        if (i > 0) filter[length - i] = filter[i];
    }
    const PowerOfTwo plan(length);
    plan.transform(turned);
    plan.transform(filter);
    for (std::size_t i = 0; i < length; ++i)
        turned[i] = product(turned[i], filter[i]);
    plan.transform_back(turned);
    std::vector<Complex> lines(count);
    const double back = 1.0 / static_cast<double>(length);
    for (std::size_t i = 0; i < count; ++i)
        lines[i] = product(turned[i], chirp[i]) * back;
    return lines;
}

}  // namespace

std::vector<std::complex<double>> fourier_transform(std::span<const double> values) {
    if (values.empty()) return {};
    if (!std::has_single_bit(values.size())) return by_chirp(values);
    std::vector<Complex> lines(values.begin(), values.end());
    PowerOfTwo(lines.size()).transform(lines);
    return lines;
}

}  // namespace servo::scope
